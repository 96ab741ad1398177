// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Capture.h"
#include "tests/simulator/DhcpServer.h"
#include "tests/simulator/GvcpClient.h"
#include "tests/simulator/Hex.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

// How the farm's cameras come by their addresses, among a server and hosts of others.
namespace {

using base::Bytes;
using namespace base::literals;
using simulator_tests::Capture;
using simulator_tests::DhcpServer;
using simulator_tests::GvcpClient;
using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::StartsWith;

const std::string Mac = "00:1A:2B:00:00:01";

class FarmBoot : public testing::Test
{
protected:
    FarmBoot() { network.attach(host, "eth0", "192.168.1.5/16"); }

    bool canPing(const std::string& address) const
    {
        return host.execute({"ping", "-c1", "-W5", address}).status == 0;
    }

    lab::Switch network;
    lab::Namespace host;
};

TEST_F(FarmBoot, ACameraIsWhereItsLeaseSays)
{
    const DhcpServer server(host, "192.168.1.100,192.168.1.200,255.255.255.0");
    const lab::Farm farm(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "rebootTime": 20}]})");
    const auto camera = runningCamera(farm, Mac);
    const std::string address = camera.at("address");
    EXPECT_EQ(server.leases(), (std::map<std::string, std::string>{{"00:1a:2b:00:00:01", address}}));
    EXPECT_EQ(camera.at("mask"), "255.255.255.0");
    EXPECT_EQ(camera.at("gateway"), "192.168.1.5");
    EXPECT_TRUE(canPing(address));

    farm.control("reset " + Mac);
    EXPECT_EQ(runningCamera(farm, Mac).at("address"), address) << "the server knows it again";
}

TEST_F(FarmBoot, ADissectorFindsNothingWrongWithALeasesPackets)
{
    const DhcpServer server(host, "192.168.1.100,192.168.1.200,255.255.255.0");
    Capture capture(host, "udp port 67", 4);
    const lab::Farm farm(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01"}]})");
    EXPECT_THAT(
        capture.finish("udp.srcport == 68"),
        testing::ElementsAre(StartsWith(" 1 1 DHCP DHCP Discover"), StartsWith(" 1 1 DHCP DHCP Request")));
}

TEST_F(FarmBoot, AllOf256CamerasGetLeasesOfTheirOwnWhenTheyBootAtOnce)
{
    const DhcpServer server(host, "192.168.2.1,192.168.3.254,255.255.0.0");
    const lab::Farm farm(
        network, R"({"cameras": [{"mac": "00:1A:2B:00:00:00", "dhcpTimeout": 15000, "repeat": 256}]})");
    std::map<std::string, std::string> addresses;
    std::set<std::string> distinct;
    for (int i = 0; i < 256; ++i) {
        char mac[18];
        std::snprintf(mac, sizeof mac, "00:1a:2b:00:00:%02x", i);
        addresses[mac] = runningCamera(farm, mac).at("address");
        distinct.insert(addresses[mac]);
    }
    EXPECT_EQ(distinct.size(), 256u);
    EXPECT_EQ(server.leases(), addresses);
}

TEST_F(FarmBoot, ACameraWithoutAServerFallsBackToALinkLocalAddress)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "dhcpTimeout": 100, "probeInterval": 20}]})");
    const auto camera = runningCamera(farm, Mac);
    EXPECT_THAT(camera.at("address").get<std::string>(), StartsWith("169.254."));
    EXPECT_EQ(camera.at("mask"), "255.255.0.0");
    EXPECT_EQ(camera.at("ipConfiguration"), "dhcp");
    host.run("ip address add 169.254.0.1/16 brd + dev eth0");
    EXPECT_TRUE(canPing(camera.at("address")));
}

TEST_F(FarmBoot, ACameraLeavesALinkLocalAddressToTheHostThatHasIt)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "ipConfiguration": "lla", "address": "169.254.33.7", "mask": "255.255.0.0",
         "rebootTime": 10, "probeInterval": 100}]})");
    farm.control("reset " + Mac);
    EXPECT_EQ(runningCamera(farm, Mac).at("address"), "169.254.33.7") << "it is free";

    host.run("ip address add 169.254.33.7/16 brd + dev eth0");
    farm.control("reset " + Mac);
    const std::string address = runningCamera(farm, Mac).at("address");
    EXPECT_THAT(address, StartsWith("169.254."));
    EXPECT_NE(address, "169.254.33.7");
    EXPECT_TRUE(canPing(address));
}

TEST_F(FarmBoot, AStoredAddressOutlivesAResetByRegisterAndAForcedOneDoesNot)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", "userName": "before", "rebootTime": 20}]})");
    const GvcpClient client(host);
    const base::Ipv4 camera = "192.168.1.20"_ip;
    const Bytes commands[] = {
        hex("42 01 0082 0008 0001 00000A00 00000002"),
        hex("42 01 0082 0018 0002 0000064C C0A80163 0000065C FFFF0000 0000066C C0A80105"),
        hex("42 01 0082 0008 0003 00000014 80000005"),
        hex("42 01 0086 000C 0004 000000E8 61667465 72000000"),
        hex("42 01 0082 0008 0005 00010000 00000001"),
    };
    for (const Bytes& command : commands)
        EXPECT_EQ(base::readU16(client.ask(camera, command), 0), 0u);
    auto state = runningCamera(farm, Mac);
    EXPECT_EQ(state.at("address"), "192.168.1.99");
    EXPECT_EQ(state.at("mask"), "255.255.0.0");
    EXPECT_EQ(state.at("gateway"), "192.168.1.5");
    EXPECT_EQ(state.at("ipConfigurationBits"), 0x80000005u);
    EXPECT_EQ(state.at("userName"), "after");
    EXPECT_EQ(state.at("controller"), "none");
    EXPECT_EQ(state.at("resets"), 1);
    EXPECT_TRUE(canPing("192.168.1.99"));
    EXPECT_FALSE(canPing("192.168.1.20"));

    const std::string reserved = "000000000000000000000000";
    client.ask(base::LimitedBroadcast, hex("42 11 0004 0038 0006 0000 001A2B000001" + reserved + "C0A80177" +
                                           reserved + "FFFF0000" + reserved + "00000000"));
    EXPECT_EQ(shown(farm, Mac).at("address"), "192.168.1.119");
    farm.control("reset " + Mac);
    state = runningCamera(farm, Mac);
    EXPECT_EQ(state.at("address"), "192.168.1.99");
    EXPECT_EQ(state.at("userName"), "after");
}

} // namespace
