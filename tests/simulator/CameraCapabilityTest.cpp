// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/CameraFixture.h"

// What a camera may have or lack, and says so in its capability register: who holds it, its link's speed, a
// heartbeat that can be switched off.
namespace {

using namespace simulator_tests;

class CameraCapability : public CameraFixture
{
protected:
    void expectAnswers(const std::vector<Exchange>& exchanges)
    {
        for (const Exchange& each : exchanges)
            EXPECT_EQ(answer(each.command), hex(each.answer)) << each.what;
    }
};

const std::string SwitchHeartbeatOff = "42 01 0082 0008 0011 00000954 00000001";
const std::string ReadConfiguration = "42 01 0080 0004 0012 00000954";

TEST_F(CameraCapability, SaysThatItHasThemAll)
{
    expectAnswers({
        {"capabilities", "42 01 0080 0004 0001 00000934", "0000 0081 0004 0001 F8000023"},
        {"link speed", "42 01 0080 0004 0002 00000670", "0000 0081 0004 0002 000003E8"},
        {"holder", "42 01 0080 0008 0003 00000A04 00000A14", "0000 0081 0008 0003 00000000 00000000"},
        {"link speed as memory", "42 01 0084 0008 0004 0000066C 0000 0008",
         "0000 0085 000C 0004 0000066C 00000000 000003E8"},
    });
    answer(TakeControl);
    expectAnswers({
        {"link speed is read-only", "42 01 0082 0008 0005 00000670 00000064",
         "8004 0083 0004 0005 0000 0000"},
    });
}

TEST_F(CameraCapability, WithoutItsHoldersAddressLacksThoseRegistersAndIsHeldAllTheSame)
{
    CameraConfig poor = config();
    poor.tellsHolder = false;
    poor.heldBy = CameraConfig::Holder{"192.168.1.77"_ip, 2};
    become(poor);
    expectAnswers({
        {"capabilities", "42 01 0080 0004 0001 00000934", "0000 0081 0004 0001 F0000023"},
        {"port", "42 01 0080 0004 0002 00000A04", "8003 0081 0000 0002"},
        {"address", "42 01 0080 0004 0003 00000A14", "8003 0081 0000 0003"},
        {"privilege", "42 01 0080 0004 0004 00000A00", "0000 0081 0004 0004 00000002"},
        {"not to be had", TakeControl.c_str(), "8006 0083 0004 0010 0000 0000"},
    });
}

TEST_F(CameraCapability, SaysItsLinksSpeedOrThatItDoesNotKnowIt)
{
    CameraConfig slow = config();
    slow.linkSpeed = 100;
    become(slow);
    expectAnswers({
        {"100 Mbit/s", "42 01 0080 0004 0001 00000670", "0000 0081 0004 0001 00000064"},
        {"capabilities", "42 01 0080 0004 0002 00000934", "0000 0081 0004 0002 F8000023"},
        {"no second interface", "42 01 0080 0004 0003 000006F0", "8003 0081 0000 0003"},
    });
    CameraConfig mute = config();
    mute.linkSpeed.reset();
    become(mute);
    expectAnswers({
        {"no speed", "42 01 0080 0004 0001 00000670", "8003 0081 0000 0001"},
        {"no capability", "42 01 0080 0004 0002 00000934", "0000 0081 0004 0002 E8000023"},
    });
}

TEST_F(CameraCapability, HasALinkSpeedForEachOfItsInterfaces)
{
    CameraConfig second = config();
    second.interface = 1;
    second.interfaceMacs = {{{0x00, 0x1A, 0x2B, 0, 0, 0xA0}}, second.mac, {{0x00, 0x1A, 0x2B, 0, 0, 0xA2}}};
    second.linkSpeed = 100;
    become(second);
    expectAnswers({
        {"own, and the others'", "42 01 0080 000C 0001 000006F0 00000670 00000770",
         "0000 0081 000C 0001 00000064 000009C4 000009C4"},
        {"no fourth one", "42 01 0080 0004 0002 000007F0", "8003 0081 0000 0002"},
    });
}

TEST_F(CameraCapability, KeepsWhoSwitchesTheHeartbeatOffInControlForGood)
{
    answer(TakeControl);
    EXPECT_EQ(answer(SwitchHeartbeatOff, OtherApplication), hex("8006 0083 0004 0011 0000 0000"));
    EXPECT_EQ(answer(SwitchHeartbeatOff), hex("0000 0083 0004 0011 0000 0001"));
    now += 24h;
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(answer(ReadConfiguration, OtherApplication), hex("0000 0081 0004 0012 00000001"));
    EXPECT_EQ(answer(TakeControl, OtherApplication), hex("8006 0083 0004 0010 0000 0000"));

    EXPECT_EQ(answer("42 01 0082 0008 0013 00000954 00000000"), hex("0000 0083 0004 0013 0000 0001"));
    now += 3000ms;
    EXPECT_TRUE(isHeld()) << "the heartbeat begins anew";
    now += 1ms;
    EXPECT_FALSE(isHeld());
}

TEST_F(CameraCapability, HasItsHeartbeatSwitchedOnAgainByAReset)
{
    answer(TakeControl);
    answer(SwitchHeartbeatOff);
    camera.restart();
    EXPECT_EQ(answer(ReadConfiguration), hex("0000 0081 0004 0012 00000000"));
    answer(TakeControl);
    now += 3001ms;
    EXPECT_FALSE(isHeld());
}

TEST_F(CameraCapability, WithoutItCannotHaveItsHeartbeatSwitchedOff)
{
    CameraConfig strict = config();
    strict.hasHeartbeatOff = false;
    become(strict);
    answer(TakeControl);
    expectAnswers({
        {"capabilities", "42 01 0080 0004 0001 00000934", "0000 0081 0004 0001 D8000023"},
        {"switch it off", SwitchHeartbeatOff.c_str(), "0000 0083 0004 0011 0000 0001"},
        {"it stays on", ReadConfiguration.c_str(), "0000 0081 0004 0012 00000000"},
    });
    now += 3001ms;
    EXPECT_FALSE(isHeld());
}

} // namespace
