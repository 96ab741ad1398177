// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/CameraFixture.h"

namespace {

using namespace simulator_tests;
using CameraControl = CameraFixture;

TEST_F(CameraControl, LetsWhoTookControlWriteAndOthersOnlyRead)
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

TEST_F(CameraControl, KeepsOthersFromReadingUnderExclusiveControlUntilItIsGivenBack)
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

TEST_F(CameraControl, DropsControlWhenItsHeartbeatHasStopped)
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

TEST_F(CameraControl, MeasuresTheHeartbeatByItsRegisterAndByAnyCommandOfTheController)
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

TEST_F(CameraControl, KeepsControlForWhoWaitsForADelayedAnswer)
{
    answer(TakeControl);
    camera.excuse(Application, now + 60000ms);
    now += 62000ms;
    EXPECT_TRUE(isHeld());
    now += 1001ms;
    EXPECT_FALSE(isHeld());
}

TEST_F(CameraControl, IsHeldForGoodByAnApplicationThatIsNeverHeard)
{
    camera.hold({"192.168.1.77"_ip, 2});
    now += 24h;
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(answer("42 01 0080 0004 0001 00000A14"), hex("0000 0081 0004 0001 C0A8014D"));
}

TEST_F(CameraControl, HeldFromTheStartRefusesOthersAsTheHoldersPrivilegeSays)
{
    const std::string privilege = "42 01 0080 0004 0001 00000A00";
    CameraConfig held = config();
    held.heldBy = CameraConfig::Holder{"192.168.1.77"_ip, 1};
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

TEST_F(CameraControl, HeldFromTheStartSaysTheHoldersPortAndIsItsForGood)
{
    CameraConfig held = config();
    held.heldBy = CameraConfig::Holder{"192.168.1.5"_ip, 2, 5000};
    become(held);
    EXPECT_EQ(answer("42 01 0080 000C 0001 00000A04 00000A14 00000954", OtherApplication),
              hex("0000 0081 000C 0001 00001388 C0A80105 00000000"));
    EXPECT_EQ(answer("42 01 0082 0008 0002 00000938 00001388"), hex("0000 0083 0004 0002 0000 0001"))
        << "who has this address and this port is the holder";
    now += 24h;
    EXPECT_TRUE(isHeld()) << "though it was heard once";
}

TEST_F(CameraControl, HeldWithoutAHeartbeatSaysSoUntilItIsReset)
{
    const std::string configuration = "42 01 0080 0004 0001 00000954";
    CameraConfig held = config();
    held.pendingAckOn = true;
    held.heldBy = CameraConfig::Holder{"192.168.1.77"_ip, 2, 50010, true};
    become(held);
    EXPECT_EQ(answer(configuration), hex("0000 0081 0004 0001 00000003"));
    camera.restart();
    EXPECT_EQ(answer(configuration), hex("0000 0081 0004 0001 00000002"));
    EXPECT_FALSE(isHeld());
}

} // namespace
