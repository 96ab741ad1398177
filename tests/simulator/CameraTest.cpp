// SPDX-License-Identifier: Apache-2.0
#include "simulator/Camera.h"

#include "tests/simulator/Hex.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using gvcp::Bytes;
using simulator::Camera;
using simulator::CameraConfig;
using simulator::IpSettings;
using namespace std::chrono_literals;

constexpr Camera::Asker Application{0xC0A80105, 5000};
constexpr Camera::Asker OtherApplication{0xC0A80105, 5001};

const std::string TakeControl = "42 01 0082 0008 0010  00000A00 00000002";
const std::string TakeExclusive = "42 01 0082 0008 0010  00000A00 00000001";
const std::string ForceTo10_0_0_9 = "42 01 0004 0038 0007  0000 001A2B000001"
                                    "000000000000000000000000 0A000009"
                                    "000000000000000000000000 FF000000"
                                    "000000000000000000000000 0A000001";

CameraConfig config()
{
    CameraConfig camera;
    camera.mac = {{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
    camera.ip = {0xC0A80114, 0xFFFFFF00, 0};
    camera.serial = "SN1";
    return camera;
}

class CameraTest : public testing::Test
{
protected:
    /// What the camera answers to this datagram, sent to it alone; empty when it stays silent.
    Bytes answer(const std::string& datagram, const Camera::Asker& asker = Application)
    {
        const auto answered = handle(datagram, asker);
        return answered ? answered->packet : Bytes();
    }

    std::optional<Camera::Answer> handle(const std::string& datagram,
                                         const Camera::Asker& asker = Application)
    {
        return react(datagram, asker).answer;
    }

    Camera::Reaction react(const std::string& datagram, const Camera::Asker& asker = Application)
    {
        const Bytes bytes = hex(datagram);
        const auto command = gvcp::parseCommand(bytes);
        if (!command || !camera.concerns(*command, false))
            return {};
        return camera.handle(*command, asker, now);
    }

    bool isHeld()
    {
        camera.passTime(now);
        return camera.control().application().has_value();
    }

    void become(const CameraConfig& other) { camera = Camera(other); }

    Camera camera{config()};
    Camera::Clock::time_point now;
};

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

struct Exchange
{
    const char* what;
    const char* command;
    const char* answer;
};

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
        {"capabilities", "42 01 0080 0004 0006 00000934", "0000 0081 0004 0006 C0000023"},
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

TEST_F(CameraTest, LetsWhoTookControlWriteAndOthersOnlyRead)
{
    EXPECT_EQ(answer(TakeControl), hex("0000 0083 0004 0010 0000 0001"));
    const Exchange controlling[] = {
        {"read back", "42 01 0080 0004 0001 00000A00", "0000 0081 0004 0001 00000002"},
        {"its port and address", "42 01 0080 0008 0001 00000A04 00000A14",
         "0000 0081 0008 0001 00001388 C0A80105"},
        {"write", "42 01 0082 0008 0002 00000938 00001388", "0000 0083 0004 0002 0000 0001"},
        {"read-only", "42 01 0082 0008 0003 00000024 01020304", "8004 0083 0004 0003 0000 0000"},
        {"good, then read-only", "42 01 0082 0010 0004 00000938 00000BB8 00000934 00000000",
         "8004 0083 0004 0004 0000 0001"},
        {"the good one is written", "42 01 0080 0004 0005 00000938", "0000 0081 0004 0005 00000BB8"},
        {"user name", "42 01 0086 000C 0006 000000E8 4C656674 00000000", "0000 0087 0004 0006 0000 0008"},
        {"it is there", "42 01 0084 0008 0007 000000E8 0000 0004", "0000 0085 0008 0007 000000E8 4C656674"},
        {"half writable", "42 01 0086 000C 0008 000000F4 41414141 42424242", "8003 0087 0004 0008 0000 0000"},
        {"memory misaligned", "42 01 0086 0008 0009 000000E9 41414141", "8005 0087 0004 0009 0000 0000"},
        {"control again", "42 01 0082 0008 000A 00000A00 00000002", "0000 0083 0004 000A 0000 0001"},
    };
    for (const Exchange& each : controlling)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
    const Exchange others[] = {
        {"may read", "42 01 0080 0004 0001 00000A00", "0000 0081 0004 0001 00000002"},
        {"may not write", "42 01 0082 0008 0002 00000938 00001388", "8006 0083 0004 0002 0000 0000"},
        {"may not take over", "42 01 0082 0008 0003 00000A00 00000002", "8006 0083 0004 0003 0000 0000"},
        {"may not end it", "42 01 0082 0008 0004 00000A00 00000000", "8006 0083 0004 0004 0000 0000"},
    };
    for (const Exchange& each : others)
        EXPECT_EQ(answer(each.command, OtherApplication), hex(each.answer)) << each.what;
}

TEST_F(CameraTest, KeepsOthersFromReadingUnderExclusiveControlUntilItIsGivenBack)
{
    EXPECT_EQ(answer(TakeExclusive), hex("0000 0083 0004 0010 0000 0001"));
    const std::string privilege = "42 01 0080 0004 0001 00000A00";
    EXPECT_EQ(answer(privilege, OtherApplication), hex("8006 0081 0000 0001"));
    EXPECT_EQ(answer("42 01 0084 0008 0001 00000048 0000 0020", OtherApplication),
              hex("8006 0085 0000 0001"));
    EXPECT_EQ(answer("42 11 0002 0000 0001", OtherApplication).size(), 256u) << "DISCOVERY is open to all";
    EXPECT_EQ(answer(privilege), hex("0000 0081 0004 0001 00000001"));

    EXPECT_EQ(answer("42 01 0082 0008 0002 00000A00 00000000"), hex("0000 0083 0004 0002 0000 0001"));
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(answer(privilege, OtherApplication), hex("0000 0081 0004 0001 00000000"));
    EXPECT_EQ(answer(TakeControl, OtherApplication), hex("0000 0083 0004 0010 0000 0001"));
}

TEST_F(CameraTest, WritesWithoutAnAcknowledgeToo)
{
    EXPECT_EQ(answer("42 00 0082 0008 0010 00000A00 00000001"), Bytes());
    EXPECT_TRUE(isHeld());
}

TEST_F(CameraTest, KeepsTheUpperBitsOfItsIpConfigurationAndLinkLocalAddressing)
{
    answer(TakeControl);
    answer("42 01 0082 0008 0001 00000014 80000001");
    EXPECT_EQ(answer("42 01 0080 0004 0002 00000014"), hex("0000 0081 0004 0002 80000005"));
    answer("42 01 0082 0008 0003 00000014 40000000");
    EXPECT_EQ(answer("42 01 0080 0004 0004 00000014"), hex("0000 0081 0004 0004 40000004"));
}

TEST_F(CameraTest, TakesAForcedAddressAndAcknowledgesFromTheOldOne)
{
    const IpSettings before = camera.ip();
    const auto acknowledge = handle(ForceTo10_0_0_9);
    ASSERT_TRUE(acknowledge);
    EXPECT_EQ(acknowledge->packet, hex("0000 0005 0000 0007"));
    EXPECT_EQ(acknowledge->from, before);
    EXPECT_FALSE(acknowledge->onlyByBroadcast);
    EXPECT_EQ(camera.ip(), (IpSettings{0x0A000009, 0xFF000000, 0x0A000001}));
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
    EXPECT_EQ(acknowledge->from.address, 0x0A000009u);

    quirk.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::Broadcast;
    become(quirk);
    EXPECT_TRUE(handle(ForceTo10_0_0_9)->onlyByBroadcast);

    quirk.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::Never;
    become(quirk);
    EXPECT_FALSE(handle(ForceTo10_0_0_9));
    EXPECT_EQ(camera.ip().address, 0x0A000009u) << "silent, but obedient";
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

TEST_F(CameraTest, KeepsItsStoredSettingsAndNothingElseOverARestart)
{
    answer(TakeControl);
    answer("42 01 0082 0018 0001 0000064C AC100007 0000065C FFFF0000 0000066C AC100001");
    answer("42 01 0082 0010 0002 00000014 80000005 00000938 00001388");
    answer("42 01 0086 000C 0003 000000E8 4C656674 00000000");
    EXPECT_EQ(camera.ip(), config().ip) << "what is stored is for the next start";
    camera.restart();
    EXPECT_EQ(camera.ip(), IpSettings{}) << "an address is for the boot sequence to find";
    EXPECT_FALSE(isHeld());
    const Exchange exchanges[] = {
        {"stored", "42 01 0080 0010 0001 00000014 0000064C 0000065C 0000066C",
         "0000 0081 0010 0001 80000005 AC100007 FFFF0000 AC100001"},
        {"user name", "42 01 0084 0008 0001 000000E8 0000 0008",
         "0000 0085 000C 0001 000000E8 4C65667400000000"},
        {"heartbeat", "42 01 0080 0004 0001 00000938", "0000 0081 0004 0001 00000BB8"},
        {"privilege", "42 01 0080 000C 0001 00000A00 00000A04 00000A14",
         "0000 0081 000C 0001 00000000 00000000 00000000"},
    };
    for (const Exchange& each : exchanges)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
}

TEST_F(CameraTest, AsksForItsStoredConfigurationToBeRunWhenForcedToNoAddress)
{
    handle(ForceTo10_0_0_9);
    std::string restart = ForceTo10_0_0_9;
    restart.replace(restart.find("0A000009"), 8, "00000000");
    const Camera::Reaction reaction = react(restart);
    ASSERT_TRUE(reaction.answer);
    EXPECT_EQ(reaction.answer->from.address, 0x0A000009u);
    EXPECT_EQ(reaction.effect, Camera::Effect::IpRestart);
}

TEST_F(CameraTest, DropsControlWhenItsHeartbeatHasStopped)
{
    const std::string control = "42 01 0080 0004 0001 00000A00";
    answer(TakeControl);
    now += 3000ms;
    EXPECT_EQ(answer(control), hex("0000 0081 0004 0001 00000002")) << "just in time, and begun anew";
    now += 3000ms;
    EXPECT_EQ(answer(control, OtherApplication), hex("0000 0081 0004 0001 00000002"));
    now += 1ms;
    EXPECT_EQ(answer(control, OtherApplication), hex("0000 0081 0004 0001 00000000"))
        << "others' commands are no heartbeat";
    EXPECT_FALSE(isHeld());
}

TEST_F(CameraTest, MeasuresTheHeartbeatByItsRegisterAndByAnyCommandOfTheController)
{
    answer(TakeControl);
    answer("42 01 0082 0008 0001 00000938 000001F4");
    for (int i = 0; i < 5; ++i) {
        now += 500ms;
        answer(i % 2 == 0 ? "42 01 0080 0004 0001 00F00000" : "42 11 0002 0000 1234");
        EXPECT_TRUE(isHeld()) << "refused commands and DISCOVERY count too";
    }
    now += 501ms;
    EXPECT_FALSE(isHeld());
}

TEST_F(CameraTest, KeepsControlForWhoWaitsForADelayedAnswer)
{
    answer(TakeControl);
    camera.excuse(Application, now + 60000ms);
    now += 62000ms;
    EXPECT_TRUE(isHeld());
    now += 1001ms;
    EXPECT_FALSE(isHeld());
}

TEST_F(CameraTest, IsHeldForGoodByAnApplicationThatIsNeverHeard)
{
    camera.hold({0xC0A8014D, 2});
    now += 24h;
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000A14"), hex("0000 0081 0004 0001 C0A8014D"));
}

TEST_F(CameraTest, ResetsOnAWriteToItsResetRegisterByTheControllerOnly)
{
    const std::string reset = "42 01 0082 0008 0001 00010000 00000001";
    EXPECT_EQ(react(reset).effect, Camera::Effect::None);
    answer(TakeControl);
    EXPECT_EQ(react("42 01 0082 0008 0001 00010000 00000000").effect, Camera::Effect::None);
    const Camera::Reaction reaction = react(reset);
    EXPECT_EQ(reaction.effect, Camera::Effect::Reset);
    ASSERT_TRUE(reaction.answer);
    EXPECT_EQ(reaction.answer->packet, hex("0000 0083 0004 0001 0000 0001"));
    EXPECT_EQ(react("42 01 0086 0008 0001 00010000 00000001").effect, Camera::Effect::Reset);
    EXPECT_EQ(answer("42 01 0080 0004 0001 00010000"), hex("0000 0081 0004 0001 00000000"));

    CameraConfig silent = config();
    silent.rebootsWithoutAcknowledge = true;
    silent.resetRegister = 0xF0000614;
    become(silent);
    answer(TakeControl);
    const Camera::Reaction silently = react("42 01 0082 0008 0001 F0000614 00000001");
    EXPECT_EQ(silently.effect, Camera::Effect::Reset);
    EXPECT_FALSE(silently.answer);
}

TEST_F(CameraTest, LacksWhatItsQuirksTakeAway)
{
    CameraConfig poor = config();
    poor.writesMemory = false;
    poor.readMemoryOmitsAddress = true;
    poor.hasPersistentIp = false;
    poor.userNameAccess = CameraConfig::UserNameAccess::None;
    become(poor);
    answer(TakeControl);
    const Exchange exchanges[] = {
        {"capabilities", "42 01 0080 0004 0001 00000934", "0000 0081 0004 0001 40000021"},
        {"WRITEMEM", "42 01 0086 0008 0002 00000938 00001388", "8001 0087 0000 0002"},
        {"READMEM", "42 01 0084 0008 0003 00000024 0000 0004", "0000 0085 0004 0003 C0A80114"},
        {"supported modes", "42 01 0080 0004 0004 00000010", "0000 0081 0004 0004 00000006"},
        {"switch persistent on", "42 01 0082 0008 0005 00000014 00000005", "0000 0083 0004 0005 0000 0001"},
        {"it stays off", "42 01 0080 0004 0006 00000014", "0000 0081 0004 0006 00000004"},
        {"persistent address", "42 01 0080 0004 0007 0000064C", "8003 0081 0000 0007"},
        {"user name", "42 01 0082 0008 0008 000000E8 41424344", "8004 0083 0004 0008 0000 0000"},
    };
    for (const Exchange& each : exchanges)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;

    CameraConfig readOnly = config();
    readOnly.userNameAccess = CameraConfig::UserNameAccess::ReadOnly;
    become(readOnly);
    answer(TakeControl);
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000934"), hex("0000 0081 0004 0001 C0000023"));
    EXPECT_EQ(answer("42 01 0082 0008 0002 000000E8 41424344"), hex("8004 0083 0004 0002 0000 0000"));
}

TEST_F(CameraTest, ServesItsDescriptionAndSaysWhereItIs)
{
    CameraConfig describing = config();
    describing.description.url = "Local:a.xml;c0a00000;6";
    describing.description.secondUrl = "http://example.com";
    describing.description.file = std::make_shared<const Bytes>(hex("3C61 2F3E 0A00 0000"));
    become(describing);
    const Exchange exchanges[] = {
        {"first URL", "42 01 0084 0008 0001 00000200 0000 0018",
         "0000 0085 001C 0001 00000200 4C6F63616C3A612E786D6C3B63306130303030303B360000"},
        {"second URL", "42 01 0084 0008 0002 00000400 0000 0004", "0000 0085 0008 0002 00000400 68747470"},
        {"file", "42 01 0084 0008 0003 C0A00000 0000 0008", "0000 0085 000C 0003 C0A00000 3C612F3E0A000000"},
        {"its second word", "42 01 0080 0004 0004 C0A00004", "0000 0081 0004 0004 0A000000"},
        {"past its end", "42 01 0084 0008 0005 C0A00004 0000 0008", "8003 0085 0000 0005"},
    };
    for (const Exchange& each : exchanges)
        EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
    answer(TakeControl);
    EXPECT_EQ(answer("42 01 0086 0008 0006 C0A00000 41414141"), hex("8004 0087 0004 0006 0000 0000"));
}

TEST_F(CameraTest, AnnouncesADelayWithTheTimeItTakes)
{
    const Bytes bytes = hex("42 01 0082 0008 0042 00000938 00001388");
    const auto answered = camera.announceDelay(*gvcp::parseCommand(bytes), 1500ms);
    ASSERT_TRUE(answered);
    EXPECT_EQ(answered->packet, hex("0000 0089 0004 0042 0000 05DC"));
}

TEST_F(CameraTest, HeldFromTheStartRefusesOthersAsTheHoldersPrivilegeSays)
{
    const std::string privilege = "42 01 0080 0004 0001 00000A00";
    CameraConfig held = config();
    held.heldBy = CameraConfig::Holder{0xC0A8014D, 1};
    become(held);
    EXPECT_EQ(answer(privilege), hex("8006 0081 0000 0001"));
    EXPECT_EQ(answer(TakeControl), hex("8006 0083 0004 0010 0000 0000"));

    held.heldBy->privilege = 2;
    become(held);
    EXPECT_EQ(answer(privilege), hex("0000 0081 0004 0001 00000002"));
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000A14"), hex("0000 0081 0004 0001 C0A8014D"));

    camera.release();
    EXPECT_EQ(answer(privilege), hex("0000 0081 0004 0001 00000000"));
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
            ASSERT_EQ(gvcp::readU16(answered->packet, 4), answered->packet.size() - 8);
        }
    }
    EXPECT_GT(answers, 1000) << "too few got through to say anything";
}

} // namespace
