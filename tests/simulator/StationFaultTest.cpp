// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/StationFixture.h"

#include <gmock/gmock.h>

namespace {

using namespace simulator_tests;
using StationFaults = StationFixture;

TEST_F(StationFaults, IgnoresRequestsAsItsFaultsSay)
{
    CameraConfig faulty;
    faulty.faults = {faultOf(Request::Discovery, FaultAction::Drop, 2), faultOf(Request::ReadRegister)};
    become(faulty);
    for (int i = 0; i < 3; ++i)
        ask(DiscoveryWithBroadcast, NearHost);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    for (int i = 0; i < 10; ++i)
        ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    station->addFault(faultOf(Request::Arp, FaultAction::Drop, 1));
    for (int i = 0; i < 2; ++i)
        station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, CameraAddress, {}});
    EXPECT_EQ(sent.size(), 1u);
    EXPECT_THAT(station->counters(), testing::ElementsAre(3, 0, 10, 0, 0, 0, 2, 0));
}

TEST_F(StationFaults, CountsTheForcedAddressesThatAreMeantForItOnly)
{
    std::string forAnother = ForceTo192_168_1_99;
    forAnother.replace(forAnother.find("001A2B000001"), 12, "001A2B000002");
    ask(forAnother, NearHost);
    EXPECT_EQ(station->counters()[1], 0u);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->counters()[1], 1u);
}

TEST_F(StationFaults, RefusesWhatABusyOrMistakenCameraRefusesAndDoesNotCarryItOut)
{
    const struct
    {
        FaultAction action;
        const char* answer;
    } table[] = {{FaultAction::Busy, "8007 0083 0000 0010"},
                 {FaultAction::BadAlignment, "8005 0083 0000 0010"}};
    for (const auto& each : table) {
        become({});
        station->addFault(faultOf(Request::WriteRegister, each.action, 1));
        ask(TakeControl, NearHost, CameraAddress);
        EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex(each.answer));
        EXPECT_FALSE(station->camera().control().application());
        ask(TakeControl, NearHost, CameraAddress);
        EXPECT_TRUE(station->camera().control().application());
    }
}

TEST_F(StationFaults, AnnouncesADelayAndCarriesOutTheCommandAfterIt)
{
    ask(TakeControl, NearHost, CameraAddress);
    ask(SwitchPendingAckOn, NearHost, CameraAddress);
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Pending, 1, 5000ms));
    sent.clear();
    ask("42 01 0082 0008 0002 0000064C AC100007", NearHost, CameraAddress);
    ASSERT_EQ(sentOf<UdpDatagram>().size(), 1u);
    EXPECT_EQ(sentOf<UdpDatagram>()[0].payload, hex("0000 0089 0004 0002 0000 1388"));
    pass(4999ms);
    EXPECT_EQ(station->camera().registers().storedIp().persistent.address, Ipv4());
    EXPECT_EQ(sent.size(), 1u);
    pass(1ms);
    EXPECT_EQ(sentOf<UdpDatagram>().at(1).payload, hex("0000 0083 0004 0002 0000 0001"))
        << "its controller was excused from the heartbeat";
    EXPECT_EQ(station->camera().registers().storedIp().persistent.address, "172.16.0.7"_ip);
}

TEST_F(StationFaults, CarriesOutOnceWhatIsSentAgainWhileItIsUnderWay)
{
    const std::string store = "42 01 0082 0008 0002 0000064C AC100007";
    ask(TakeControl, NearHost, CameraAddress);
    ask(SwitchPendingAckOn, NearHost, CameraAddress);
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Pending, {}, 5000ms));
    sent.clear();
    ask(store, NearHost, CameraAddress);
    pass(2000ms);
    ask(store, NearHost, CameraAddress);
    ASSERT_EQ(sentOf<UdpDatagram>().size(), 2u);
    EXPECT_EQ(sentOf<UdpDatagram>()[1].payload, hex("0000 0089 0004 0002 0000 0BB8")) << "3 s are left";
    pass(3000ms);
    ASSERT_EQ(sentOf<UdpDatagram>().size(), 3u);
    EXPECT_EQ(sentOf<UdpDatagram>()[2].payload, hex("0000 0083 0004 0002 0000 0001"));
    pass(3000ms);
    EXPECT_EQ(sent.size(), 3u) << "answered once";

    ask(store, NearHost, CameraAddress);
    EXPECT_EQ(sentOf<UdpDatagram>().at(3).payload, hex("0000 0089 0004 0002 0000 1388"))
        << "no longer a retransmission";
}

TEST_F(StationFaults, AnnouncesNoDelayUnlessThatIsSwitchedOn)
{
    const std::string store = "42 01 0082 0008 0002 0000064C AC100007";
    ask(TakeControl, NearHost, CameraAddress);
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Pending, {}, 5000ms));
    sent.clear();
    ask(store, NearHost, CameraAddress);
    ask(store, NearHost, CameraAddress);
    pass(4999ms);
    EXPECT_TRUE(sent.empty());
    pass(1ms);
    expectOneAnswer(HostMac, NearHost);
    EXPECT_TRUE(station->camera().control().application()) << "excused from the heartbeat all the same";

    CameraConfig asking;
    asking.pendingAckOn = true;
    become(asking);
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Pending, 1, 5000ms));
    sent.clear();
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("0000 0089 0004 0001 0000 1388"))
        << "before anybody has had control";
}

TEST_F(StationFaults, OverhearsWhatIsSentAgainBeforeItsUnannouncedDelayIsOver)
{
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Delay, 1, 700ms));
    ask(ReadAddress, NearHost, CameraAddress);
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    ask("42 01 0080 0004 0002 00000024", NearHost, CameraAddress);
    EXPECT_EQ(sent.size(), 1u) << "another command";
    ask(ReadAddress, FarHost, CameraAddress);
    EXPECT_EQ(sent.size(), 2u) << "another application";
    pass(700ms);
    EXPECT_EQ(sent.size(), 3u);
}

TEST_F(StationFaults, ForgetsAtAResetWhatWasUnderWay)
{
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Pending, 1, 60000ms));
    ask(ReadAddress, NearHost, CameraAddress);
    station->reset();
    pass(1000ms);
    answerArp(NearHost, HostMac);
    sent.clear();
    ask(ReadAddress, NearHost, CameraAddress);
    expectOneAnswer(HostMac, NearHost);
}

TEST_F(StationFaults, AnswersLateTwiceOrNotAtAllAsItsFaultsSay)
{
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Delay, 1, 700ms));
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Twice, 1));
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    ask("42 01 0080 0004 0002 00000024", NearHost, CameraAddress);
    EXPECT_EQ(sent.size(), 2u);
    pass(700ms);
    EXPECT_EQ(sent.size(), 3u);

    sent.clear();
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Mute, 1));
    ask(TakeControl, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    EXPECT_TRUE(station->camera().control().application()) << "carried out all the same";
}

TEST_F(StationFaults, VanishesAtTheCommandThatItsFaultSaysOfWhateverKindItIs)
{
    constexpr Ipv4 Forced = "192.168.1.99"_ip;
    const struct
    {
        const char* what;
        std::string command;
        Ipv4 to;
    } commands[] = {
        {"DISCOVERY to all", DiscoveryWithBroadcast, base::LimitedBroadcast},
        {"DISCOVERY to its subnet", DiscoveryWithBroadcast, "192.168.1.255"_ip},
        {"FORCEIP", ForceTo192_168_1_99, base::LimitedBroadcast},
        {"FORCEIP to it alone", ForceTo192_168_1_99, Forced},
        {"WRITEREG", TakeControl, Forced},
        {"the same again", TakeControl, Forced},
        {"WRITEMEM", "42 01 0086 0008 0012 000000E8 41424344", Forced},
        {"READREG", ReadAddress, Forced},
        {"READMEM", "42 01 0084 0008 0013 000000E8 0000 0004", Forced},
        {"refused", "42 01 0080 0004 0014 00000100", Forced},
    };
    const auto passBy = [this] {
        station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, Forced, {}});
        station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, CameraAddress, {}});
        station->receive(Echo{HostMac, CameraMac, NearHost, CameraAddress, true, 7, 9, {}});
    };
    for (unsigned after = 0; after < std::size(commands); ++after) {
        become({});
        Fault fault;
        fault.action = FaultAction::Vanish;
        fault.after = after;
        station->addFault(fault);
        for (const auto& each : commands) {
            const bool isPulled = &each - commands >= static_cast<std::ptrdiff_t>(after);
            passBy();
            sent.clear();
            ask(each.command, NearHost, each.to);
            EXPECT_EQ(sentOf<UdpDatagram>().empty(), isPulled) << each.what << " with " << after;
            EXPECT_EQ(station->isPlugged(), !isPulled) << each.what << " with " << after;
        }
        passBy();
        EXPECT_EQ(station->camera().ip().address, after > 2 ? Forced : CameraAddress) << after;
        EXPECT_EQ(station->camera().control().application().has_value(), after > 4) << after;
        EXPECT_EQ(station->camera().registers().stored().userName, after > 6 ? "ABCD" : "") << after;
    }
}

TEST_F(StationFaults, IsAsItWasWhenItsCableIsBack)
{
    ask(ForceTo192_168_1_99, NearHost);
    answerArp(NearHost, HostMac);
    ask(TakeControl, NearHost, "192.168.1.99"_ip);
    ask("42 01 0086 0008 0012 000000E8 41424344", NearHost, "192.168.1.99"_ip);
    ask("42 01 0082 0008 0013 00000938 00002710", NearHost, "192.168.1.99"_ip);
    Fault fault;
    fault.action = FaultAction::Vanish;
    station->addFault(fault);
    ask(ReadAddress, NearHost, "192.168.1.99"_ip);
    EXPECT_FALSE(station->isPlugged());
    pass(9999ms);
    station->setPlugged(true);
    for (int i = 0; i < 3; ++i) {
        sent.clear();
        ask("42 01 0080 000C 0001 00000024 00000A00 000000E8", NearHost, "192.168.1.99"_ip);
        ASSERT_EQ(sentOf<UdpDatagram>().size(), 1u) << "the cable stays where it is";
        EXPECT_EQ(sentOf<UdpDatagram>()[0].payload, hex("0000 0081 000C 0001 C0A80163 00000002 41424344"));
    }
    EXPECT_EQ(station->resets(), 0u);
}

TEST_F(StationFaults, IsHeldByAnotherApplicationRightBeforeACommand)
{
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Hold));
    ask(TakeControl, NearHost, CameraAddress);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("8006 0083 0004 0010 0000 0000"));
    EXPECT_EQ(station->camera().control().application()->address, "192.0.2.1"_ip);

    become({});
    station->addFault(faultOf(Request::ForceIp, FaultAction::Hold));
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_TRUE(sent.empty());
    EXPECT_EQ(station->camera().ip().address, CameraAddress);
}

TEST_F(StationFaults, IsSwitchedOffAndOnInsteadOfACommand)
{
    CameraConfig camera;
    camera.rebootTime = 700ms;
    become(camera);
    ask(TakeControl, NearHost, CameraAddress);
    ask("42 01 0086 0008 0012 000000E8 41424344", NearHost, CameraAddress);
    Fault fault = faultOf(Request::WriteMemory, FaultAction::Reset);
    station->addFault(fault);
    sent.clear();
    ask("42 01 0086 0008 0013 000000E8 45464748", NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
    pass(700ms);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
    EXPECT_EQ(station->camera().registers().stored().userName, "ABCD");
    EXPECT_FALSE(station->camera().control().application());
    EXPECT_EQ(station->resets(), 1u);
}

TEST_F(StationFaults, IsSeizedByAnotherApplicationRightAfterAForcedAddress)
{
    station->addFault(faultOf(Request::ForceIp, FaultAction::Seize, 1));
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("0000 0005 0000 0007"));
    EXPECT_EQ(station->camera().ip().address, "192.168.1.99"_ip);
    EXPECT_EQ(station->camera().control().privilege(), 1u);
    answerArp(NearHost, HostMac);
    sent.clear();
    ask(TakeControl, NearHost, "192.168.1.99"_ip);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("8006 0083 0004 0010 0000 0000"));
}

} // namespace
