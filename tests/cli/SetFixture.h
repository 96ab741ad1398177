// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/cli/CameraFixture.h"
#include "tests/save/NodeMapDouble.h"
#include "tests/support/ScriptedProgram.h"

#include <QCoreApplication>

/// What is written goes no further.
struct IgnorantPort : GenApi::IPort
{
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void*, int64_t, int64_t) override {}
    void Write(const void*, int64_t, int64_t) override {}
};

/// The camera obeys what is written to its features. Nobody answers the worker's ping.
class SetFixture : public CameraFixture
{
protected:
    SetFixture() : CameraFixture({.ip = "192.0.2.21", .ipConfig = 2})
    {
        ping.set("exit 1");
        sdk.description = "<xml/>";
        sdk.port = &port;
        nodes.addBoolean("GevCurrentIPConfigurationPersistentIP");
        nodes.addBoolean("GevCurrentIPConfigurationDHCP");
        nodes.addRegister("DeviceUserID", 16, [this] { setName("New"); });
        nodes.addCommand("DeviceReset", [this] { restart(); });
    }

    cli::ExitStatus set(const std::vector<std::string>& options) { return run({"set", Mac}, options); }

    void write(const std::string& event)
    {
        written.push_back(event);
        if (event == "GevCurrentIPConfigurationPersistentIP = 1")
            camera().nIpConfigCurrent |= 1;
        else if (event == "GevCurrentIPConfigurationPersistentIP = 0")
            camera().nIpConfigCurrent &= ~1u;
        else if (event == "GevCurrentIPConfigurationDHCP = 1")
            camera().nIpConfigCurrent |= 2;
        else if (event == "GevCurrentIPConfigurationDHCP = 0")
            camera().nIpConfigCurrent &= ~2u;
    }

    void setName(const std::string& name)
    {
        std::copy_n(name.c_str(), name.size() + 1, camera().szUserDefinedName);
    }

    /// From now on that is the address that the camera tells to have stored.
    void store(const std::string& address)
    {
        sdk.getPersistentIp = [address](RZ_CC_DEVICE_INFO*, unsigned& ip, unsigned& mask, unsigned& gateway) {
            ip = SdkDouble::address(address);
            mask = SdkDouble::address("255.255.255.0");
            gateway = 0;
            return RZ_OK;
        };
    }

    const std::vector<std::string> fixed{"--static", "--ip", "192.0.2.30", "--mask", "255.255.255.0"};
    std::vector<std::string> written; ///< Through the node map, and what became of the node map.
    std::function<void()> restart = [] {};
    ScriptedProgram ping{"ping"};
    NodeMapDouble nodes{[this](const std::string& event) { write(event); }};
    IgnorantPort port;

private:
    int m_argumentCount = 1;
    char m_programName[6] = "tests";
    char* m_arguments[2] = {m_programName, nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments};
};
