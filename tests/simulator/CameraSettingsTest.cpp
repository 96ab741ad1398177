// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/CameraFixture.h"

namespace {

using namespace simulator_tests;
using CameraSettings = CameraFixture;

TEST_F(CameraSettings, KeepsTheUpperBitsOfItsIpConfigurationAndLinkLocalAddressing)
{
    answer(TakeControl);
    answer("42 01 0082 0008 0001 00000014 80000001");
    EXPECT_EQ(answer("42 01 0080 0004 0002 00000014"), hex("0000 0081 0004 0002 80000005"));
    answer("42 01 0082 0008 0003 00000014 40000000");
    EXPECT_EQ(answer("42 01 0080 0004 0004 00000014"), hex("0000 0081 0004 0004 40000004"));
}

TEST_F(CameraSettings, KeepsItsStoredSettingsAndNothingElseOverARestart)
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

TEST_F(CameraSettings, AsksForItsStoredConfigurationToBeRunWhenForcedToNoAddress)
{
    handle(ForceTo10_0_0_9);
    std::string restart = ForceTo10_0_0_9;
    restart.replace(restart.find("0A000009"), 8, "00000000");
    const Camera::Reaction reaction = react(restart);
    ASSERT_TRUE(reaction.answer);
    EXPECT_EQ(reaction.answer->from.address, "10.0.0.9"_ip);
    EXPECT_EQ(reaction.effect, Camera::Effect::IpRestart);
}

TEST_F(CameraSettings, ResetsOnAWriteToItsResetRegisterByTheControllerOnly)
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

TEST_F(CameraSettings, LetsItsControllerSwitchPendingAckOnAndOffUntilTheNextReset)
{
    const std::string read = "42 01 0080 0004 0001 00000954";
    const std::string switchOn = "42 01 0082 0008 0002 00000954 00000002";
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000000"));
    EXPECT_EQ(answer(switchOn), hex("8006 0083 0004 0002 0000 0000")) << "without control";
    answer(TakeControl);
    EXPECT_EQ(answer(switchOn), hex("0000 0083 0004 0002 0000 0001"));
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000002"));
    answer("42 01 0082 0008 0003 00000954 FFFFFFFD");
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000001"))
        << "of the others it has the heartbeat's only";
    answer(switchOn);
    camera.restart();
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000000"));

    CameraConfig asking = config();
    asking.pendingAckOn = true;
    become(asking);
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000002"));
    answer(TakeControl);
    answer("42 01 0082 0008 0003 00000954 00000000");
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000000"));
    camera.restart();
    EXPECT_EQ(answer(read), hex("0000 0081 0004 0001 00000002"));
}

TEST_F(CameraSettings, LacksWhatItsQuirksTakeAway)
{
    CameraConfig poor = config();
    poor.writesMemory = false;
    poor.hasPendingAck = false;
    poor.tellsHolder = false;
    poor.hasHeartbeatOff = false;
    poor.linkSpeed.reset();
    poor.readMemoryOmitsAddress = true;
    poor.hasPersistentIp = false;
    poor.userNameAccess = CameraConfig::UserNameAccess::None;
    become(poor);
    answer(TakeControl);
    const Exchange exchanges[] = {
        {"capabilities", "42 01 0080 0004 0001 00000934", "0000 0081 0004 0001 40000001"},
        {"switch PENDING_ACK on", "42 01 0082 0008 000A 00000954 00000002", "0000 0083 0004 000A 0000 0001"},
        {"it stays off too", "42 01 0080 0004 000B 00000954", "0000 0081 0004 000B 00000000"},
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
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000934"), hex("0000 0081 0004 0001 F8000023"));
    EXPECT_EQ(answer("42 01 0082 0008 0002 000000E8 41424344"), hex("8004 0083 0004 0002 0000 0000"));
}

TEST_F(CameraSettings, ServesItsDescriptionAndSaysWhereItIs)
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

} // namespace
