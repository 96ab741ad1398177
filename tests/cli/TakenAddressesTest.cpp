// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/AtOnce.h"
#include "tests/network/Site.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace {

constexpr const char* Mac = "02:00:00:00:01:01";
constexpr const char* PingingMac = "02:00:00:00:09:01";
constexpr const char* MuteMac = "02:00:00:00:09:02";
constexpr int Runs = 30;

/// A computer with two adapters in one subnet; behind the second, on a network that loses frames, a camera, a
/// device that answers ping, and one that answers ARP only. Each device has one address for each run, so that
/// no run learns from another's.
class TakenAddresses : public testing::Test
{
protected:
    TakenAddresses()
    {
        site.addAdapter("eth0", "192.168.1.5/24");
        lab::Switch& lan = site.addAdapter("eth1", "192.168.1.6/24");
        farm = &site.addCameras(lan, R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20"})");
        addDevice(lan, pinging, PingingMac, "192.168.1.1");
        addDevice(lan, mute, MuteMac, "192.168.1.2");
        mute.run("echo 1 > /proc/sys/net/ipv4/icmp_echo_ignore_all");
        lan.loseFrames(10);
    }

    static void addDevice(lab::Switch& lan, const lab::Namespace& device, const std::string& mac,
                          const std::string& addressPrefix)
    {
        lan.attach(device, "eth0");
        std::string commands = "ip link set eth0 address " + mac + "\n";
        for (int i = 0; i < Runs; ++i)
            commands += "ip address add " + addressPrefix + std::to_string(10 + i) + "/24 dev eth0\n";
        device.run(commands);
    }

    Site site;
    lab::Namespace pinging;
    lab::Namespace mute;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(TakenAddresses, AreFoundEachTimeThoughFramesGetLost)
{
    std::vector<std::vector<std::string>> commands;
    for (const char* prefix : {"192.168.1.1", "192.168.1.2"})
        for (int i = 0; i < Runs; ++i)
            commands.push_back(
                {PROGRAM, "force", Mac, "--ip", prefix + std::to_string(10 + i), "--mask", "255.255.255.0"});
    const auto outputs = runAtOnce(site.host(), commands);
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const std::string owner = i < Runs ? PingingMac : MuteMac;
        EXPECT_EQ(outputs[i].status, 1) << outputs[i].standardError;
        EXPECT_THAT(outputs[i].standardError,
                    HasSubstr(commands[i][4] + " is in use: the device " + owner + " answers "));
    }
    EXPECT_EQ(simulator_tests::shown(*farm, Mac)["received"]["FORCEIP"], 0);
}
