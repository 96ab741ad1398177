// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/save/NodeMapDouble.h"
#include "tests/save/SaveFixture.h"

/// A save worker and a camera that has every feature.
class SavedCamera : public SaveFixture
{
protected:
    SavedCamera()
    {
        sdk.port = &m_port;
        sdk.description = "<xml/>";
        nodes.addBoolean(StaticIp);
        nodes.addBoolean(Dhcp);
        nodes.addInteger("GevPersistentSubnetMask");
        nodes.addInteger("GevPersistentDefaultGateway");
        nodes.addRegister("DeviceUserID", 4);
        nodes.addCommand("DeviceReset");
    }

    static constexpr char StaticIp[] = "GevCurrentIPConfigurationPersistentIP";
    static constexpr char Dhcp[] = "GevCurrentIPConfigurationDHCP";
    static constexpr char Mac[] = "00:1A:2B:3C:4D:5E";

    NodeMapDouble nodes{[this](const std::string& event) { note(event); }};

private:
    struct Port : GenApi::IPort
    {
        GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
        void Read(void*, int64_t, int64_t) override {}
        void Write(const void*, int64_t, int64_t) override {}
    } m_port;
};
