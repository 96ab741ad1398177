// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/CameraFixture.h"

#include <random>

namespace {

using namespace simulator_tests;
using CameraTest = CameraFixture;

TEST_F(CameraTest, AnswersDiscoveryWithTheFieldsWhereTheStandardHasThem)
{
    const Bytes packet = answer("42 11 0002 0000 1234");
    ASSERT_EQ(packet.size(), 8u + 248u);
    const auto part = [&packet](std::size_t at, std::size_t size) {
        return Bytes(packet.begin() + 8 + static_cast<long>(at),
                     packet.begin() + 8 + static_cast<long>(at + size));
    };
    EXPECT_EQ(Bytes(packet.begin(), packet.begin() + 8), hex("0000 0003 00F8 1234"));
    EXPECT_EQ(part(0, 8), hex("0001 0002 80000001"));
    EXPECT_EQ(part(8, 8), hex("0000 001A2B000001"));
    EXPECT_EQ(part(16, 8), hex("00000007 00000006"));
    EXPECT_EQ(part(36, 4), hex("C0A80114"));
    EXPECT_EQ(part(52, 4), hex("FFFFFF00"));
    EXPECT_EQ(part(68, 4), hex("00000000"));
    EXPECT_EQ(part(72, 13), hex("46 61 72 6D 20 43 61 6D 65 72 61 73 00")); // Farm Cameras
    EXPECT_EQ(part(104, 9), hex("46 43 2D 31 32 30 30 4D 00"));             // FC-1200M
    EXPECT_EQ(part(136, 6), hex("31 2E 30 2E 30 00"));                      // 1.0.0
    EXPECT_EQ(part(168, 10), hex("53 69 6D 75 6C 61 74 65 64 20"));         // Simulated
    EXPECT_EQ(part(216, 4), hex("53 4E 31 00"));                            // SN1
    EXPECT_EQ(part(232, 16), Bytes(16));
}

TEST_F(CameraTest, AnswersAFreeCamerasReadersAndRefusesWriters)
{
    const Exchange table[] = {
        {"one register", "42 01 0080 0004 0001 00000024", "0000 0081 0004 0001 C0A80114"},
        {"several", "42 01 0080 0008 0002 00000024 00000034", "0000 0081 0008 0002 C0A80114 FFFFFF00"},
        {"unknown address", "42 01 0080 0004 0003 00000100", "8003 0081 0000 0003"},
        {"second of two unknown", "42 01 0080 0008 0003 00000024 00F00000", "8003 0081 0000 0003"},
        {"misaligned", "42 01 0080 0004 0004 00000026", "8005 0081 0000 0004"},
        {"no whole address", "42 01 0080 0003 0005 000000", "8002 0081 0000 0005"},
        {"no address", "42 01 0080 0000 0005", "8002 0081 0000 0005"},
        {"capabilities", "42 01 0080 0004 0006 00000934", "0000 0081 0004 0006 F8000023"},
        {"heartbeat", "42 01 0080 0004 0007 00000938", "0000 0081 0004 0007 00000BB8"},
        {"memory", "42 01 0084 0008 0008 00000008 0000 0008",
         "0000 0085 000C 0008 00000008 0000001A2B000001"},
        {"memory misaligned", "42 01 0084 0008 0009 0000000A 0000 0004", "8005 0085 0000 0009"},
        {"odd count", "42 01 0084 0008 000A 00000008 0000 0003", "8005 0085 0000 000A"},
        {"count 0", "42 01 0084 0008 000B 00000008 0000 0000", "8002 0085 0000 000B"},
        {"more than fits", "42 01 0084 0008 000C 00000200 0000 021C", "8002 0085 0000 000C"},
        {"past the end", "42 01 0084 0008 000D 000005F8 0000 0010", "8003 0085 0000 000D"},
        {"past the address space", "42 01 0084 0008 000D FFFFFFFC 0000 0008", "8003 0085 0000 000D"},
        {"short READMEM", "42 01 0084 0004 000E 00000008", "8002 0085 0000 000E"},
        {"write without control", "42 01 0082 0008 000F 00000938 00001388", "8006 0083 0004 000F 0000 0000"},
        {"memory without control", "42 01 0086 0008 0010 000000E8 41424344", "8006 0087 0004 0010 0000 0000"},
        {"WRITEREG without value", "42 01 0082 0004 0011 00000938", "8002 0083 0000 0011"},
        {"WRITEMEM without data", "42 01 0086 0004 0012 000000E8", "8002 0087 0000 0012"},
        {"unknown command", "42 01 0040 0000 0013", "8001 0041 0000 0013"},
    };
    for (const Exchange& each : table)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
}

TEST_F(CameraTest, StaysSilentToWhatIsNoCommandOrAsksForNoAnswer)
{
    const char* const table[] = {
        "",
        "42",
        "42 01 0002 0000 00",
        "43 01 0002 0000 0001",          // another key
        "42 01 0080 0008 0001 00000024", // announces more than there is
        "42 01 0002 0000 0000",          // request id 0
        "42 00 0002 0000 0001",          // no acknowledge wanted
        "42 00 0080 0004 0001 00000024",
        "42 01 0004 0008 0001 0000001A2B000001", // FORCEIP cut short
    };
    for (const char* const each : table)
        EXPECT_EQ(answer(each), Bytes()) << each;
}

TEST_F(CameraTest, WritesWithoutAnAcknowledgeToo)
{
    EXPECT_EQ(answer("42 00 0082 0008 0010 00000A00 00000001"), Bytes());
    EXPECT_TRUE(isHeld());
}

TEST_F(CameraTest, TakesAForcedAddressAndAcknowledgesFromTheOldOne)
{
    const IpSettings before = camera.ip();
    const auto acknowledge = handle(ForceTo10_0_0_9);
    ASSERT_TRUE(acknowledge);
    EXPECT_EQ(acknowledge->packet, hex("0000 0005 0000 0007"));
    EXPECT_EQ(acknowledge->from, before);
    EXPECT_FALSE(acknowledge->onlyByBroadcast);
    EXPECT_EQ(camera.ip(), (IpSettings{"10.0.0.9"_ip, "255.0.0.0"_ip, "10.0.0.1"_ip}));
    EXPECT_EQ(answer("42 01 0080 000C 0001 00000024 00000034 00000044"),
              hex("0000 0081 000C 0001 0A000009 FF000000 0A000001"));
}

TEST_F(CameraTest, AcknowledgesAForcedAddressAsItsQuirkHasIt)
{
    CameraConfig quirk = config();
    quirk.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::FromNewAddress;
    become(quirk);
    const auto acknowledge = handle(ForceTo10_0_0_9);
    ASSERT_TRUE(acknowledge);
    EXPECT_EQ(acknowledge->from.address, "10.0.0.9"_ip);

    quirk.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::Broadcast;
    become(quirk);
    EXPECT_TRUE(handle(ForceTo10_0_0_9)->onlyByBroadcast);

    quirk.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::Never;
    become(quirk);
    EXPECT_FALSE(handle(ForceTo10_0_0_9));
    EXPECT_EQ(camera.ip().address, "10.0.0.9"_ip) << "silent, but obedient";
}

TEST_F(CameraTest, IgnoresAForcedAddressForAnotherCamera)
{
    std::string forAnother = ForceTo10_0_0_9;
    forAnother.replace(forAnother.find("001A2B000001"), 12, "001A2B000002");
    EXPECT_FALSE(handle(forAnother));
    EXPECT_EQ(camera.ip(), config().ip);
}

TEST_F(CameraTest, RefusesAForcedAddressInSilenceWhileAnApplicationIsInControl)
{
    answer(TakeControl, OtherApplication);
    EXPECT_FALSE(handle(ForceTo10_0_0_9));
    EXPECT_EQ(camera.ip(), config().ip);
}

TEST_F(CameraTest, AnnouncesADelayWithTheTimeItTakes)
{
    const Bytes bytes = hex("42 01 0082 0008 0042 00000938 00001388");
    EXPECT_FALSE(camera.announceDelay(*gvcp::parseCommand(bytes), 1500ms)) << "not switched on";
    answer(TakeControl);
    answer("42 01 0082 0008 0001 00000954 00000002");
    const auto answered = camera.announceDelay(*gvcp::parseCommand(bytes), 1500ms);
    ASSERT_TRUE(answered);
    EXPECT_EQ(answered->packet, hex("0000 0089 0004 0042 0000 05DC"));
}

TEST_F(CameraTest, AddsToEveryAcknowledgeButThatOfDiscoveryWhatItsQuirkHas)
{
    const Bytes discovery = answer("42 11 0002 0000 1234");
    CameraConfig quirk = config();
    quirk.acknowledgeExtra = 3;
    quirk.pendingAckOn = true;
    become(quirk);
    EXPECT_EQ(answer("42 11 0002 0000 1234"), discovery);
    const Exchange table[] = {
        {"READREG", "42 01 0080 0004 0001 00000024", "0000 0081 0007 0001 C0A80114 EEEEEE"},
        {"refused", "42 01 0080 0004 0002 00000100", "8003 0081 0003 0002 EEEEEE"},
        {"WRITEREG", "42 01 0082 0008 0003 00000A00 00000002", "0000 0083 0007 0003 0000 0001 EEEEEE"},
        {"READMEM", "42 01 0084 0008 0004 00000008 0000 0004",
         "0000 0085 000B 0004 00000008 0000001A EEEEEE"},
        {"WRITEMEM", "42 01 0086 0008 0005 000000E8 41424344", "0000 0087 0007 0005 0000 0004 EEEEEE"},
        {"control given back", "42 01 0082 0008 0006 00000A00 00000000",
         "0000 0083 0007 0006 0000 0001 EEEEEE"},
        {"FORCEIP", ForceTo10_0_0_9.c_str(), "0000 0005 0003 0007 EEEEEE"},
    };
    for (const Exchange& each : table)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
    const Bytes slow = hex("42 01 0082 0008 0042 00000938 00001388");
    EXPECT_EQ(camera.announceDelay(*gvcp::parseCommand(slow), 1500ms)->packet,
              hex("0000 0089 0007 0042 0000 05DC EEEEEE"));
}

TEST_F(CameraTest, TakesOnlyDiscoveryAndForceIpFromABroadcast)
{
    const auto concernedByBroadcast = [this](const std::string& datagram) {
        const Bytes bytes = hex(datagram);
        return camera.concerns(*gvcp::parseCommand(bytes), true);
    };
    EXPECT_TRUE(concernedByBroadcast("42 11 0002 0000 0001"));
    EXPECT_TRUE(concernedByBroadcast(ForceTo10_0_0_9));
    EXPECT_FALSE(concernedByBroadcast("42 01 0080 0004 0001 00000024"));
    EXPECT_FALSE(concernedByBroadcast(TakeControl));
}

TEST_F(CameraTest, SurvivesMangledCommandsAndAnswersWithinTheStandardsBounds)
{
    const std::string seeds[] = {TakeControl,
                                 ForceTo10_0_0_9,
                                 "42 11 0002 0000 1234",
                                 "42 01 0080 0008 0002 00000024 00000034",
                                 "42 01 0084 0008 0008 00000008 0000 0008",
                                 "42 01 0086 000C 0006 000000E8 4C656674 00000000"};
    std::mt19937 random(1);
    int answers = 0;
    for (int i = 0; i < 50000; ++i) {
        Bytes bytes = hex(seeds[random() % std::size(seeds)]);
        for (auto changes = 1 + random() % 3; changes > 0; --changes)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        bytes.resize(random() % 4 == 0 ? random() % 600 : bytes.size());
        const auto command = gvcp::parseCommand(bytes);
        if (!command || !camera.concerns(*command, false))
            continue;
        if (const auto answered = camera.handle(*command, Application, now).answer) {
            ++answers;
            ASSERT_LE(answered->packet.size(), 8u + 540u);
            ASSERT_EQ(base::readU16(answered->packet, 4), answered->packet.size() - 8);
        }
    }
    EXPECT_GT(answers, 1000) << "too few got through to say anything";
}

} // namespace
