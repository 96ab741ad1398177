// SPDX-License-Identifier: Apache-2.0
#include "simulator/Commands.h"

#include "simulator/Farm.h"
#include "simulator/config/ReadFarm.h"
#include "tests/simulator/Hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace simulator;
using namespace base::literals;
using testing::HasSubstr;

class CommandsTest : public testing::Test
{
protected:
    std::string refusal(const std::string& line)
    {
        try {
            return "accepted: " + runCommand(farm, line);
        } catch (const CommandError& error) {
            return error.what();
        }
    }

    Station& camera() { return *farm.stations()[0]; }

    /// The camera learns from it where to send its answers to this host.
    void askByArp()
    {
        farm.receive(ArpMessage{{}, BroadcastMac, true, "192.168.1.5"_ip, "192.168.1.20"_ip, {}});
    }

    int sent = 0;
    TimerQueue timers{TimerQueue::Clock::time_point{}};
    Farm farm{readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
                                               "userName": "left", "rebootTime": 10}]})"),
              timers, [this](const Frame&) { ++sent; }};
};

TEST_F(CommandsTest, ChangeTheCameraTheyName)
{
    runCommand(farm, "unplug 00:1A:2B:00:00:01");
    EXPECT_FALSE(camera().isPlugged());
    runCommand(farm, "  plug   001a2b000001 ");
    EXPECT_TRUE(camera().isPlugged());
    runCommand(farm, "hold 00:1A:2B:00:00:01");
    EXPECT_EQ(camera().camera().registers().word(0xA00), 1u);
    runCommand(farm, "hold 00:1A:2B:00:00:01 192.168.1.77 control");
    EXPECT_EQ(camera().camera().registers().word(0xA00), 2u);
    EXPECT_EQ(camera().camera().registers().word(0xA14), "192.168.1.77"_ip.number());
    runCommand(farm, "release 00:1A:2B:00:00:01");
    EXPECT_FALSE(camera().camera().control().application());
}

TEST_F(CommandsTest, ShowWhatACameraHoldsAndHasHeard)
{
    askByArp();
    runCommand(farm, "hold 00:1A:2B:00:00:01");
    EXPECT_EQ(runCommand(farm, "show 00:1A:2B:00:00:01"), R"({
    "mac": "00:1A:2B:00:00:01",
    "address": "192.168.1.20",
    "mask": "255.255.255.0",
    "gateway": "0.0.0.0",
    "ipConfiguration": "dhcp",
    "ipConfigurationBits": 6,
    "persistent": {
        "address": "0.0.0.0",
        "mask": "0.0.0.0",
        "gateway": "0.0.0.0"
    },
    "interfaces": [
        {
            "address": "0.0.0.0",
            "mask": "0.0.0.0",
            "gateway": "0.0.0.0",
            "ipConfigurationBits": 6
        }
    ],
    "userName": "left",
    "userNameBytes": "6C 65 66 74",
    "held": true,
    "controller": "192.0.2.1",
    "controllerPort": 0,
    "privilege": 1,
    "heartbeatOff": false,
    "pendingAckOn": false,
    "stream": "none",
    "plugged": true,
    "state": "running",
    "resets": 0,
    "registers": {
        "0x00010000": "0x00000000"
    },
    "received": {
        "DISCOVERY": 0,
        "FORCEIP": 0,
        "READREG": 0,
        "WRITEREG": 0,
        "READMEM": 0,
        "WRITEMEM": 0,
        "ARP": 1,
        "PING": 0
    }
}
)");
}

TEST_F(CommandsTest, ShowWhatIsStoredForEachOfACamerasInterfaces)
{
    Farm other{readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
                                                "ipConfiguration": "persistent", "interface": 1,
                                                "interfaceMacs": ["00:1A:2B:00:00:0A", "00:1A:2B:00:00:01"]}]})"),
               timers, [](const Frame&) {}};
    EXPECT_THAT(runCommand(other, "show 00:1A:2B:00:00:01"), HasSubstr(R"(
    "ipConfigurationBits": 5,
    "persistent": {
        "address": "192.168.1.20",
        "mask": "255.255.255.0",
        "gateway": "0.0.0.0"
    },
    "interfaces": [
        {
            "address": "10.9.0.1",
            "mask": "255.255.255.0",
            "gateway": "0.0.0.0",
            "ipConfigurationBits": 5
        },
        {
            "address": "192.168.1.20",
            "mask": "255.255.255.0",
            "gateway": "0.0.0.0",
            "ipConfigurationBits": 5
        }
    ],
)"));
}

TEST_F(CommandsTest, ShowWhereACamerasImagesGo)
{
    Farm other{readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
                                                "heldBy": "192.168.1.77", "stream": "192.168.1.78:50020"}]})"),
               timers, [](const Frame&) {}};
    EXPECT_THAT(runCommand(other, "show 00:1A:2B:00:00:01"), HasSubstr(R"("stream": "192.168.1.78:50020",)"));
}

TEST_F(CommandsTest, ShowTheBytesOfANameThatIsNoUtf8)
{
    Farm other{readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "userNameBytes": "E9 74 e9"}]})"),
               timers, [](const Frame&) {}};
    EXPECT_THAT(runCommand(other, "show 00:1A:2B:00:00:01"), HasSubstr(R"("userNameBytes": "E9 74 E9",)"));
}

TEST_F(CommandsTest, PlanFaultsOnceOrUntilFurtherNotice)
{
    const auto answers = [this](int requests) {
        sent = 0;
        for (int i = 0; i < requests; ++i)
            askByArp();
        return sent;
    };
    EXPECT_EQ(answers(1), 1);
    runCommand(farm, "fault 00:1A:2B:00:00:01 ARP drop 2");
    EXPECT_EQ(answers(5), 3);
    runCommand(farm, "fault 00:1A:2B:00:00:01 ARP drop");
    EXPECT_EQ(answers(5), 0);
    runCommand(farm, "heal 00:1A:2B:00:00:01");
    EXPECT_EQ(answers(5), 5);
    runCommand(farm, "fault 00:1A:2B:00:00:01 ARP drop 1 after 2 every 2");
    EXPECT_EQ(answers(5), 4);
}

TEST_F(CommandsTest, PlanFaultsOfAnyCommandThatTakeTime)
{
    askByArp();
    const auto ask = [this](const std::string& command) {
        sent = 0;
        farm.receive(
            UdpDatagram{{}, camera().mac(), "192.168.1.5"_ip, "192.168.1.20"_ip, 5000, 3956, hex(command)});
    };
    ask("42 01 0082 0008 0001 00000A00 00000002");
    ask("42 01 0082 0008 0002 00000954 00000002");
    runCommand(farm, "fault 00:1A:2B:00:00:01 ANY pending 1 time 1500");
    ask("42 01 0080 0004 0003 00000024");
    EXPECT_EQ(sent, 1) << "PENDING_ACK";
    timers.advance(timers.now() + std::chrono::milliseconds(1499));
    EXPECT_EQ(sent, 1);
    timers.advance(timers.now() + std::chrono::milliseconds(1));
    EXPECT_EQ(sent, 2);
}

TEST_F(CommandsTest, PlanFaultsOfAChange)
{
    runCommand(farm, "fault 00:1A:2B:00:00:01 CHANGE hold after 1");
    askByArp();
    const auto write = [this](const std::string& id) {
        farm.receive(UdpDatagram{{},
                                 camera().mac(),
                                 "192.168.1.5"_ip,
                                 "192.168.1.20"_ip,
                                 5000,
                                 3956,
                                 hex("42 01 0082 0008 " + id + " 00000A00 00000002")});
    };
    write("0001");
    EXPECT_EQ(camera().camera().control().application()->address, "192.168.1.5"_ip);
    write("0002");
    EXPECT_EQ(camera().camera().control().application()->address, "192.0.2.1"_ip);
}

TEST_F(CommandsTest, PlugACameraInThatWasNotThereAtTheStart)
{
    Farm other{readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "plugged": false, "probeInterval": 10,
                                                "ipConfiguration": "lla", "rebootTime": 1000}]})"),
               timers, [this](const Frame&) { ++sent; }};
    const auto pass = [this] { timers.advance(timers.now() + std::chrono::seconds(3)); };
    Station& newcomer = *other.stations()[0];
    for (int i = 0; i < 5; ++i)
        pass();
    EXPECT_EQ(sent, 0);
    EXPECT_THAT(runCommand(other, "show 00:1A:2B:00:00:01"), HasSubstr(R"("plugged": false,
    "state": "off",)"));
    runCommand(other, "plug 00:1A:2B:00:00:01");
    for (int i = 0; i < 5; ++i)
        pass();
    EXPECT_EQ(newcomer.phase(), BootSequence::Phase::Running);
    EXPECT_TRUE(newcomer.camera().ip().address.isLinkLocal());
    sent = 0;
    runCommand(other, "unplug 00:1A:2B:00:00:01");
    runCommand(other, "plug 00:1A:2B:00:00:01");
    EXPECT_EQ(newcomer.phase(), BootSequence::Phase::Running) << "only its cable was out";
    pass();
    EXPECT_EQ(sent, 0);
}

TEST_F(CommandsTest, HoldACameraForGood)
{
    runCommand(farm, "hold 00:1A:2B:00:00:01 192.168.1.77:50010 control forever");
    const auto& registers = camera().camera().registers();
    EXPECT_EQ(registers.word(0xA00), 2u);
    EXPECT_EQ(registers.word(0xA04), 50010u);
    EXPECT_EQ(registers.word(0xA14), "192.168.1.77"_ip.number());
    EXPECT_EQ(registers.word(0x954), 1u);
    EXPECT_THAT(runCommand(farm, "show 00:1A:2B:00:00:01"), HasSubstr(R"(
    "controller": "192.168.1.77",
    "controllerPort": 50010,
    "privilege": 2,
    "heartbeatOff": true,
)"));

    Farm other{readFarm(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "hasHeartbeatOff": false}]})"), timers,
               [](const Frame&) {}};
    EXPECT_THROW(runCommand(other, "hold 00:1A:2B:00:00:01 forever"), CommandError);
    EXPECT_FALSE(other.stations()[0]->camera().control().application());
}

TEST_F(CommandsTest, AnnounceACamerasAddressWhenItIsOnTheNetwork)
{
    runCommand(farm, "announce 00:1A:2B:00:00:01");
    EXPECT_EQ(sent, 1);
    runCommand(farm, "unplug 00:1A:2B:00:00:01");
    EXPECT_EQ(refusal("announce 00:1A:2B:00:00:01"), "the camera is not on the network now");
    runCommand(farm, "plug 00:1A:2B:00:00:01");
    runCommand(farm, "reset 00:1A:2B:00:00:01");
    EXPECT_EQ(refusal("announce 00:1A:2B:00:00:01"), "the camera is not on the network now");
    EXPECT_EQ(sent, 1);
}

TEST_F(CommandsTest, TakeACameraOffTheNetworkForItsRebootTime)
{
    const auto answersPing = [this] {
        askByArp();
        sent = 0;
        farm.receive(Echo{{}, camera().mac(), "192.168.1.5"_ip, "192.168.1.20"_ip, true, 1, 1, {}});
        return sent == 1;
    };
    runCommand(farm, "reset 00:1A:2B:00:00:01");
    EXPECT_FALSE(answersPing());
    timers.advance(timers.now() + std::chrono::milliseconds(10));
    EXPECT_TRUE(answersPing());
}

TEST_F(CommandsTest, SayWhatIsAllowedWhenTheyAreRefused)
{
    EXPECT_THAT(refusal(""),
                HasSubstr("there are unplug, plug, hold, release, reset, announce, fault, heal, show"));
    EXPECT_THAT(refusal("explode 00:1A:2B:00:00:01"),
                HasSubstr("\"explode\" is no command; there are unplug"));
    EXPECT_EQ(refusal("plug"), "the command is: plug MAC");
    EXPECT_EQ(refusal("plug 00:1A:2B:00:00:01 now"), "the command is: plug MAC");
    EXPECT_THAT(refusal("plug camera"), HasSubstr("\"camera\" is no MAC address such as"));
    EXPECT_EQ(refusal("plug 00:1A:2B:00:00:02"), "the farm has no camera 00:1A:2B:00:00:02");
    EXPECT_THAT(refusal("hold 00:1A:2B:00:00:01 me"),
                HasSubstr("\"me\" is none of an IPv4 address, exclusive, control and forever"));
    for (const char* const wrong : {"192.168.1.5:", "192.168.1.5:0", "192.168.1.5:65536", "192.168.1.5:80x",
                                    "192.168.1.5:-1", ":80", "192.168.1:80"})
        EXPECT_THAT(refusal("hold 00:1A:2B:00:00:01 " + std::string(wrong)), HasSubstr("is none of"))
            << wrong;
    EXPECT_EQ(refusal("fault 00:1A:2B:00:00:01 ARP"),
              "the command is: fault MAC REQUEST ACTION [TIMES] [after N] [every N] [time MS]");
    EXPECT_EQ(refusal("fault 00:1A:2B:00:00:01 arp drop"),
              "\"arp\" is none of DISCOVERY, FORCEIP, READREG, WRITEREG, READMEM, WRITEMEM, ARP, PING, ANY, "
              "CHANGE");
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ARP burn"), HasSubstr("none of drop, mute, delay, pending"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ARP twice"), HasSubstr("only be met with drop and vanish"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ANY delay"), HasSubstr("delay and pending need a time"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ANY drop time 5"), HasSubstr("only delay and pending"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ANY delay time 65536"), HasSubstr("at most 65535 ms"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ANY drop 1 each 5"),
                HasSubstr("none of after, every, time"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ANY drop every 0"), HasSubstr("\"0\" is no every from 1"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ARP drop 0"), HasSubstr("no number of times"));
    EXPECT_THAT(refusal("fault 00:1A:2B:00:00:01 ARP drop 2x"), HasSubstr("no number of times"));
    EXPECT_FALSE(camera().camera().control().application());
}

} // namespace
