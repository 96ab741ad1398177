// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Capture.h"
#include "tests/simulator/GvcpClient.h"
#include "tests/simulator/Hex.h"
#include "tests/simulator/Lines.h"
#include "tests/support/NetworkLab.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

// What others make of the farm's frames: the kernel, ping, an independent client, a dissector.
namespace {

using base::Bytes;
using namespace base::literals;
using simulator_tests::Capture;
using simulator_tests::GvcpClient;
using simulator_tests::linesOf;
using testing::HasSubstr;

constexpr base::Ipv4 CameraAddress = "192.168.1.20"_ip;

const std::string ThreeCameras = R"({"cameras": [
    {"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", "serial": "SN0001", "rebootTime": 50, "repeat": 3}]})";
const std::string FullFarm = R"({"cameras": [
    {"mac": "00:1A:2B:00:00:01", "address": "192.168.2.1", "mask": "255.255.0.0", "repeat": 256}]})";

Bytes forceFirstCameraTo(const std::string& address, const std::string& mask)
{
    const std::string reserved = "000000000000000000000000";
    return hex("42 11 0004 0038 0007 0000 001A2B000001" + reserved + address + reserved + mask + reserved +
               "00000000");
}

class FarmOnTheWire : public testing::Test
{
protected:
    FarmOnTheWire() { network.attach(host, "eth0", "192.168.1.5/16"); }

    bool canPing(const std::string& address) const
    {
        return host.execute({"ping", "-c1", "-W5", address}).status == 0;
    }

    lab::Switch network;
    lab::Namespace host;
};

TEST_F(FarmOnTheWire, AnIndependentClientListsEveryOneOf256Cameras)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the client does not wait for a farm that is many times slower";
#endif
    const lab::Farm farm(network, FullFarm);
    const std::vector<std::string> lines = linesOf(host.run("arv-tool-0.8"));
    EXPECT_EQ(lines.size(), 256u);
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()).size(), 256u);
    EXPECT_THAT(lines, testing::Contains("Farm Cameras-FC-1200M-FC000100 (192.168.3.0)"));
}

TEST_F(FarmOnTheWire, EveryOneOf256CamerasAnswersEachBroadcastOfABurst)
{
    constexpr std::size_t Broadcasts = 20;
    const lab::Farm farm(network, FullFarm);
    const GvcpClient client(host);
    // Each camera asks for the host's MAC now, and has no need to in the burst.
    client.send(base::LimitedBroadcast, hex("42 11 0002 0000 00FF"));
    for (int i = 0; i < 256; ++i)
        ASSERT_EQ(client.receive().payload.size(), 256u) << "after " << i << " cameras";
    for (std::size_t id = 1; id <= Broadcasts; ++id) {
        Bytes discovery = hex("42 11 0002 0000 0000");
        discovery[7] = static_cast<std::uint8_t>(id);
        client.send(base::LimitedBroadcast, discovery);
    }
    std::map<int, std::set<base::Ipv4>> answers;
    for (std::size_t i = 0; i < Broadcasts * 256; ++i) {
        const auto answer = client.receive();
        ASSERT_EQ(answer.payload.size(), 256u) << "after " << i << " answers";
        answers[answer.payload[7]].insert(answer.source);
    }
    EXPECT_EQ(answers.size(), Broadcasts);
    for (const auto& [id, cameras] : answers)
        EXPECT_EQ(cameras.size(), 256u) << "request " << id;
}

TEST_F(FarmOnTheWire, TheKernelReachesACameraAndAfterForceIpItsNewAddressOnly)
{
    const lab::Farm farm(network, ThreeCameras);
    EXPECT_TRUE(canPing("192.168.1.20"));
    EXPECT_THAT(host.run("ip neigh show 192.168.1.20"), HasSubstr("lladdr 00:1a:2b:00:00:01"));

    const GvcpClient client(host);
    EXPECT_EQ(client.ask(base::LimitedBroadcast, forceFirstCameraTo("C0A80263", "FFFF0000")),
              hex("0000 0005 0000 0007"));
    EXPECT_TRUE(canPing("192.168.2.99"));
    EXPECT_THAT(host.run("ip neigh show 192.168.2.99"), HasSubstr("lladdr 00:1a:2b:00:00:01"));
    EXPECT_FALSE(canPing("192.168.1.20"));
    EXPECT_THAT(farm.control("show 00:1A:2B:00:00:01"), HasSubstr("\"address\": \"192.168.2.99\""));
}

TEST_F(FarmOnTheWire, ACameraOutsideTheHostsSubnetHearsAndAnswersTheLimitedBroadcastOnly)
{
    const lab::Farm farm(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "10.0.0.7"}]})");
    const GvcpClient client(host);
    client.send("192.168.255.255"_ip, hex("42 11 0002 0000 0001"));
    client.send(base::LimitedBroadcast, hex("42 11 0002 0000 0002"));
    const auto answer = client.receive();
    ASSERT_EQ(answer.payload.size(), 256u);
    EXPECT_EQ(answer.payload[7], 2) << "the directed broadcast was answered";
    EXPECT_EQ(answer.source, "10.0.0.7"_ip);
    EXPECT_THAT(farm.control("show 00:1A:2B:00:00:01"), HasSubstr("\"DISCOVERY\": 1,"));
}

TEST_F(FarmOnTheWire, ABroadcastAnswerReachesASocketThatIsNotBoundToAnAddress)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "address": "10.0.0.7", "answer": "broadcast"}]})");
    const GvcpClient client(host);
    EXPECT_EQ(client.ask(base::LimitedBroadcast, hex("42 11 0002 0000 0002")).size(), 256u);
}

TEST_F(FarmOnTheWire, ADissectorKnowsEveryAnswerAndFindsNoneMalformed)
{
    const Bytes commands[] = {
        hex("42 11 0002 0000 0001"),
        hex("42 01 0080 0008 0002 00000024 00000034"),
        hex("42 01 0080 0004 0003 00FFFF00"),
        hex("42 01 0082 0008 0004 00000A00 00000002"),
        hex("42 01 0082 0010 0005 00000938 00001388 00000024 00000000"),
        hex("42 01 0084 0008 0006 00000048 0000 0020"),
        hex("42 01 0084 0008 0007 00000048 0000 0021"),
        hex("42 01 0086 000C 0008 000000E8 4C656674 00000000"),
        hex("42 01 0086 0008 0009 00000024 00000000"),
        hex("42 01 0082 0008 000A 00000A00 00000000"),
        forceFirstCameraTo("C0A80114", "FFFF0000"),
    };
    const lab::Farm farm(network, ThreeCameras);
    // The dissector needs the commands too, to know what is answered.
    Capture capture(host, "host 192.168.1.20 and udp port 3956", 2 * std::size(commands));
    const GvcpClient client(host);
    for (const Bytes& command : commands)
        EXPECT_FALSE(client.ask(CameraAddress, command).empty());
    // First nothing where "malformed" would stand, then the two checksums, 1 for good.
    using testing::StartsWith;
    EXPECT_THAT(
        capture.finish("udp.srcport == 3956"),
        testing::ElementsAre(
            StartsWith(" 1 1 GVCP < DISCOVERY_ACK (Farm Cameras, SN0001)"),
            StartsWith(" 1 1 GVCP < READREG_ACK [Multiple ReadReg Ack]"),
            StartsWith(" 1 1 GVCP < READREG_ACK (Invalid Address) [Addr:0x00FFFF00]"),
            StartsWith(" 1 1 GVCP < WRITEREG_ACK (Success)"),
            StartsWith(" 1 1 GVCP < WRITEREG_ACK (Write Protect) [Multiple WriteReg Ack] (1/2) (Failed)"),
            StartsWith(" 1 1 GVCP < READMEM_ACK [Manufacturer Name]"),
            StartsWith(" 1 1 GVCP < READMEM_ACK (Bad Alignment)"),
            StartsWith(" 1 1 GVCP < WRITEMEM_ACK [User-defined Name]"),
            StartsWith(" 1 1 GVCP < WRITEMEM_ACK (Write Protect) [Current IP Address (Net #0)]"),
            StartsWith(" 1 1 GVCP < WRITEREG_ACK (Success)"), StartsWith(" 1 1 GVCP < FORCEIP_ACK")));
}

TEST_F(FarmOnTheWire, ADissectorKnowsTheAnswersOfACameraThatIsSlowBusyOrDescribesItself)
{
    const lab::Farm farm(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
        "faults": [
            {"command": "WRITEREG", "action": "pending", "time": 50, "times": 1, "after": 2},
            {"command": "READREG", "action": "busy", "times": 1},
            {"command": "READMEM", "action": "twice", "times": 1}]}]})");
    Capture capture(host, "host 192.168.1.20 and udp port 3956", 12);
    const GvcpClient client(host);
    client.ask(CameraAddress, hex("42 01 0082 0008 0001 00000A00 00000002"));
    client.ask(CameraAddress, hex("42 01 0082 0008 0002 00000954 00000002"));
    EXPECT_EQ(client.ask(CameraAddress, hex("42 01 0082 0008 0003 00000938 00001388")),
              hex("0000 0089 0004 0003 0000 0032"));
    EXPECT_EQ(client.receive().payload, hex("0000 0083 0004 0003 0000 0001"));
    client.ask(CameraAddress, hex("42 01 0080 0004 0004 00000A00"));
    const Bytes block = client.ask(CameraAddress, hex("42 01 0084 0008 0005 C0A00000 0000 0218"));
    EXPECT_EQ(block.size(), 8u + 4u + 536u);
    EXPECT_EQ(client.receive().payload, block);
    using testing::StartsWith;
    EXPECT_THAT(capture.finish("udp.srcport == 3956"),
                testing::ElementsAre(
                    StartsWith(" 1 1 GVCP < WRITEREG_ACK"), StartsWith(" 1 1 GVCP < WRITEREG_ACK"),
                    StartsWith(" 1 1 GVCP < PENDING_ACK"), StartsWith(" 1 1 GVCP < WRITEREG_ACK (Success)"),
                    StartsWith(" 1 1 GVCP < READREG_ACK (Busy)"), StartsWith(" 1 1 GVCP < READMEM_ACK"),
                    StartsWith(" 1 1 GVCP < READMEM_ACK")));
}

TEST_F(FarmOnTheWire, ADissectorKnowsTheRegistersOfASecondInterface)
{
    const lab::Farm farm(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
        "ipConfiguration": "persistent", "interface": 1, "interfaceMacs": ["00:1A:2B:00:00:0A", "00:1A:2B:00:00:01"]}]})");
    const std::string registers[] = {"00000684", "0000068C", "0000069C", "000006CC"};
    Capture capture(host, "host 192.168.1.20 and udp port 3956", 2 * std::size(registers));
    const GvcpClient client(host);
    for (const std::string& each : registers)
        EXPECT_FALSE(client.ask(CameraAddress, hex("42 01 0080 0004 0001" + each)).empty());
    EXPECT_THAT(
        capture.finish("udp.srcport == 3956"),
        testing::ElementsAre(" 1 1 GVCP < READREG_ACK [Device MAC address Low (Net #1)] Value=0x2B000001",
                             " 1 1 GVCP < READREG_ACK [Current IP Configuration (Net #1)] Value=0x00000005",
                             " 1 1 GVCP < READREG_ACK [Current IP Address (Net #1)] Value=0xC0A80114",
                             " 1 1 GVCP < READREG_ACK [Persistent IP address (Net #1)] Value=0xC0A80114"));
}

TEST_F(FarmOnTheWire, ADissectorKnowsTheRegistersOfAHolderAndItsStream)
{
    const lab::Farm farm(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
        "linkSpeed": 100, "heldBy": "192.168.1.77", "heldPort": 50010, "heldPrivilege": "control",
        "stream": "192.168.1.78:50020"}]})");
    const std::string registers[] = {"00000670", "00000A04", "00000A14", "00000D00", "00000D04", "00000D18"};
    Capture capture(host, "host 192.168.1.20 and udp port 3956", 2 * std::size(registers));
    const GvcpClient client(host);
    for (const std::string& each : registers)
        EXPECT_FALSE(client.ask(CameraAddress, hex("42 01 0080 0004 0001" + each)).empty());
    EXPECT_THAT(
        capture.finish("udp.srcport == 3956"),
        testing::ElementsAre(
            " 1 1 GVCP < READREG_ACK [Link Speed (Net #0)] Value=0x00000064",
            " 1 1 GVCP < READREG_ACK [Primary Application Port] Value=0x0000C35A",
            " 1 1 GVCP < READREG_ACK [Primary Application IP address] Value=0xC0A8014D",
            " 1 1 GVCP < READREG_ACK [SCP0 (Stream Channel #0 Port)] Value=0x0000C364",
            " 1 1 GVCP < READREG_ACK [SCPS0 (Stream Channel #0 Packet Size)] Value=0x000005DC",
            " 1 1 GVCP < READREG_ACK [SCDA0 (Stream Channel #0 Destination Address)] Value=0xC0A8014E"));
}

TEST_F(FarmOnTheWire, CommandsOfTheControlSocketActOnTheRunningFarm)
{
    const lab::Farm farm(network, ThreeCameras);
    EXPECT_EQ(farm.control("unplug 00:1A:2B:00:00:01"), "");
    EXPECT_FALSE(canPing("192.168.1.20"));
    EXPECT_TRUE(canPing("192.168.1.21"));
    farm.control("plug 00:1A:2B:00:00:01");
    host.run("ip neigh flush all"); // The kernel may still be waiting for the ARP answer of before.
    EXPECT_TRUE(canPing("192.168.1.20"));
    try {
        farm.control("plug 00:1A:2B:00:00:09");
        FAIL() << "not refused";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("the farm has no camera 00:1A:2B:00:00:09"));
    }
}

TEST_F(FarmOnTheWire, TheKernelTalksToThatOneOfTwoCamerasWithOneAddressThatAnnouncesIt)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", "serial": "SN0001"},
        {"mac": "00:1A:2B:00:00:02", "address": "192.168.1.20", "serial": "SN0002"}]})");
    EXPECT_TRUE(canPing("192.168.1.20"));
    const GvcpClient client(host);
    for (const std::string camera : {"2", "1", "2"}) {
        farm.control("announce 00:1A:2B:00:00:0" + camera);
        host.run("for try in $(seq 1000); do ip neigh show 192.168.1.20 | grep -q 00:1a:2b:00:00:0" + camera +
                 " && exit 0; done; exit 1");
        EXPECT_EQ(client.ask(CameraAddress, hex("42 01 0084 0008 0001 000000D8 0000 0008")),
                  hex("0000 0085 000C 0001 000000D8 534E303030" + ("3" + camera) + "0000"))
            << camera;
    }
}

TEST_F(FarmOnTheWire, AResetBringsTheCameraBackToItsFirstAddress)
{
    const lab::Farm farm(network, ThreeCameras);
    const GvcpClient client(host);
    client.ask(base::LimitedBroadcast, forceFirstCameraTo("C0A80263", "FFFF0000"));
    farm.control("reset 00:1A:2B:00:00:01");
    host.run("for try in $(seq 100); do ping -c1 -W1 192.168.1.20 && exit 0; done; exit 1");
    EXPECT_FALSE(canPing("192.168.2.99"));
}

TEST_F(FarmOnTheWire, StaysAliveThroughThousandsOfForgedAnswersAndNoise)
{
    const lab::Farm farm(network, R"({"cameras": [
        {"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", "forgedAnswers": 5000,
         "noise": ["truncated", "oversized", "foreign", "duplicate", "random", "wrongId"]},
        {"mac": "00:1A:2B:00:00:02", "address": "192.168.1.21"}]})");
    // The camera knows the host from now on: so many answers would not wait until it does.
    EXPECT_TRUE(canPing("192.168.1.20"));
    const GvcpClient client(host);
    client.send(base::LimitedBroadcast, hex("42 11 0002 0000 0001"));
    EXPECT_TRUE(canPing("192.168.1.21"));
    std::set<Bytes> macs;
    while (macs.size() < 5002) {
        const auto [source, payload] = client.receive();
        ASSERT_NE(source, base::Ipv4()) << "after " << macs.size() << " cameras";
        const Bytes wanted = hex("0000 0003 00F8 0001");
        if (payload.size() == 256 && std::equal(wanted.begin(), wanted.end(), payload.begin()))
            macs.insert(Bytes(payload.begin() + 18, payload.begin() + 24));
    }
    EXPECT_TRUE(macs.contains(hex("001A2B000001")));
    EXPECT_TRUE(macs.contains(hex("001A2B000002")));
}

} // namespace
