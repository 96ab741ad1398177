// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/network/Site.h"
#include "tests/save/NetworkSave.h"
#include "tests/simulator/Shown.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <deque>

/// Saves on simulated cameras, which are judged by what the cameras hold afterwards.
class FarmSaves : public testing::Test
{
protected:
    static constexpr char Rebooting[] = "Information: Modified. The device will reboot automatically.";
    static constexpr char Used[] = "Information: The IP address has been used by other devices.";
    static constexpr char Failed[] =
        "Error: Failed to modify the IP address.The camera may be in use at present.";
    static constexpr std::size_t MaxCameras = 256;
    static constexpr char FailedUnchanged[] = "Error: Failed to modify.";

    /// By DHCP, the first one at 192.168.1.20.
    static constexpr char ByDhcp[] = R"("address": "192.168.1.20", "mask": "255.255.0.0")";

    /// Cameras 02:...:00 and so on with these members of a farm's file, and a save of each as it is found.
    void build(const std::string& members = ByDhcp, int cameras = 1);
    /// The same, each camera with members of its own, by DHCP at its old address.
    void buildEach(const std::vector<std::string>& members);
    /// Looks for the cameras anew, and makes the save of each from what is found now.
    void findAgain();

    static std::string oldAddress(int camera) { return "192.168.1." + std::to_string(20 + camera); }
    static std::string newAddress(int camera) { return "192.168.2." + std::to_string(20 + camera); }

    /// What the farm shows of it once it has booted.
    nlohmann::json camera(int number) { return simulator_tests::runningCamera(*farm, macOf(number)); }
    /// The same after it was off and on again.
    nlohmann::json afterPowerCycle(int number);
    /// How many of the control protocol's commands have reached it.
    int commands(int number) const;
    /// Waits until nobody controls the camera; its heartbeat time bounds that.
    bool becomesFree(int number) const;
    /// Starts all saves and waits for their ends; so many at once.
    void saveAll(std::size_t atOnce = MaxCameras);

    /// What this process has open.
    struct Resources
    {
        std::size_t threads;
        std::size_t files;
        bool operator==(const Resources&) const = default;
    };
    static Resources resources();
    /// The same as soon as it is as wanted, or after a while: what has said its last is still there for a
    /// moment.
    static Resources whenDownTo(const Resources& wanted);

    int argumentCount = 1;
    char programName[6] = "tests";
    char* arguments[2] = {programName, nullptr};
    QCoreApplication application{argumentCount, arguments};
    Site site;
    lab::Switch& network = site.addAdapter("eth0", "192.168.0.5/16");
    lab::Farm* farm = nullptr;
    std::deque<NetworkSave> saves;

private:
    void makeSaves(int cameras);
    /// The records of the cameras as they are now.
    std::vector<const RZ_CC_DEVICE_INFO*> find(int cameras) const;
};
