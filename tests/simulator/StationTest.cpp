// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/StationFixture.h"

namespace {

using namespace simulator_tests;
using StationTest = StationFixture;

TEST_F(StationTest, AnswersAnAskerInItsSubnetByUnicast)
{
    ask(DiscoveryWithBroadcast, NearHost);
    expectOneAnswer(HostMac, NearHost);
}

TEST_F(StationTest, AnswersAnAskerOutsideItsSubnetStraightBackWhenItHasNoGateway)
{
    ask(DiscoveryWithBroadcast, FarHost);
    expectOneAnswer(HostMac, FarHost);
}

TEST_F(StationTest, HearsItsOwnSubnetsBroadcastOnly)
{
    ask(DiscoveryWithBroadcast, NearHost, "192.168.1.255"_ip);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    ask(DiscoveryWithBroadcast, FarHost, "10.255.255.255"_ip);
    EXPECT_TRUE(sent.empty());
}

TEST_F(StationTest, TakesCommandsForItsAddressAndPortOnly)
{
    ask(ReadAddress, NearHost, CameraAddress);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    ask(ReadAddress, NearHost, base::LimitedBroadcast);
    station->receive(
        UdpDatagram{HostMac, CameraMac, NearHost, CameraAddress.plus(1), 5000, 3956, hex(ReadAddress)});
    station->receive(UdpDatagram{HostMac, CameraMac, NearHost, CameraAddress, 5000, 3957, hex(ReadAddress)});
    EXPECT_TRUE(sent.empty());
}

TEST_F(StationTest, AnswersThroughItsGatewayAndRemembersItsMac)
{
    become(withGateway());
    ask(DiscoveryWithBroadcast, FarHost);
    ASSERT_EQ(sent.size(), 1u);
    const auto request = sentOf<ArpMessage>().at(0);
    EXPECT_EQ(request.destinationMac, BroadcastMac);
    EXPECT_EQ(request.sourceMac, CameraMac);
    EXPECT_TRUE(request.isRequest);
    EXPECT_EQ(request.sender, CameraAddress);
    EXPECT_EQ(request.target, Router);

    answerArp(Router, RouterMac);
    expectOneAnswer(RouterMac, FarHost);
    pass(100ms);
    EXPECT_EQ(sent.size(), 2u) << "and not again when the time for an answer is over";

    sent.clear();
    ask(DiscoveryWithBroadcast, FarHost);
    expectOneAnswer(RouterMac, FarHost);
    EXPECT_EQ(sent.size(), 1u);
}

TEST_F(StationTest, AnswersByBroadcastOrNotAtAllWhenItsGatewayIsSilent)
{
    become(withGateway());
    ask(DiscoveryWithBroadcast, FarHost);
    pass(99ms);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty());
    pass(1ms);
    expectOneAnswer(BroadcastMac, base::LimitedBroadcast);

    sent.clear();
    ask(DiscoveryWithoutBroadcast, FarHost);
    ask(ReadAddress, FarHost, CameraAddress);
    pass(3000ms);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty());
}

TEST_F(StationTest, AsksByArpForAnAskerOutsideItsSubnetWhenThatIsItsWay)
{
    become(answering(CameraConfig::AnswerBy::Arp));
    ask(DiscoveryWithoutBroadcast, FarHost);
    EXPECT_EQ(sentOf<ArpMessage>().at(0).target, FarHost);
    answerArp(FarHost, HostMac);
    expectOneAnswer(HostMac, FarHost);

    become(answering(CameraConfig::AnswerBy::Arp));
    ask(DiscoveryWithBroadcast, FarHost);
    pass(100ms);
    expectOneAnswer(BroadcastMac, base::LimitedBroadcast);

    become(answering(CameraConfig::AnswerBy::Arp));
    ask(DiscoveryWithoutBroadcast, FarHost);
    pass(3000ms);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty());
}

TEST_F(StationTest, AnswersDiscoveryAndForceIpByBroadcastWhenThatIsItsWay)
{
    become(answering(CameraConfig::AnswerBy::Broadcast));
    ask(DiscoveryWithBroadcast, NearHost);
    expectOneAnswer(BroadcastMac, base::LimitedBroadcast);
    sent.clear();
    ask(DiscoveryWithoutBroadcast, NearHost);
    EXPECT_TRUE(sent.empty());
    ask(ReadAddress, NearHost, CameraAddress);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).destination, base::LimitedBroadcast);
}

TEST_F(StationTest, AnswersAnAskerThatHasItsAddressByBroadcastOrNotAtAll)
{
    ask(DiscoveryWithBroadcast, CameraAddress);
    expectOneAnswer(BroadcastMac, base::LimitedBroadcast);
    sent.clear();
    ask(DiscoveryWithoutBroadcast, CameraAddress);
    pass(3000ms);
    EXPECT_TRUE(sent.empty());
}

TEST_F(StationTest, IsAtItsForcedAddressAtOnce)
{
    ask(ForceTo192_168_1_99, NearHost);
    expectOneAnswer(HostMac, NearHost);
    const auto announcement = sentOf<ArpMessage>().at(0);
    EXPECT_EQ(announcement.sender, "192.168.1.99"_ip);
    EXPECT_EQ(announcement.target, "192.168.1.99"_ip);

    sent.clear();
    station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, CameraAddress, {}});
    EXPECT_TRUE(sent.empty()) << "the old address is nobody's";
    station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, "192.168.1.99"_ip, {}});
    ASSERT_EQ(sent.size(), 1u);
    const auto reply = sentOf<ArpMessage>().at(0);
    EXPECT_FALSE(reply.isRequest);
    EXPECT_EQ(reply.destinationMac, HostMac);
    EXPECT_EQ(reply.sender, "192.168.1.99"_ip);
    EXPECT_EQ(reply.target, NearHost);
    sent.clear();
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    ask(ReadAddress, NearHost, "192.168.1.99"_ip);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("0000 0081 0004 0001 C0A80163"));
}

TEST_F(StationTest, AnswersPingInItsSubnetAndThroughItsGatewayOnly)
{
    const auto ping = [this](Ipv4 from) {
        station->receive(Echo{HostMac, CameraMac, from, CameraAddress, true, 7, 9, hex("AABB")});
    };
    ping(NearHost);
    ASSERT_EQ(sent.size(), 1u);
    const auto reply = sentOf<Echo>().at(0);
    EXPECT_FALSE(reply.isRequest);
    EXPECT_EQ(reply.destinationMac, HostMac);
    EXPECT_EQ(reply.destination, NearHost);
    EXPECT_EQ(reply.source, CameraAddress);
    EXPECT_EQ(reply.id, 7);
    EXPECT_EQ(reply.sequence, 9);
    EXPECT_EQ(reply.payload, hex("AABB"));
    sent.clear();
    ping(FarHost);
    EXPECT_TRUE(sent.empty());

    become(withGateway());
    ping(FarHost);
    answerArp(Router, RouterMac);
    ASSERT_EQ(sentOf<Echo>().size(), 1u);
    EXPECT_EQ(sentOf<Echo>()[0].destinationMac, RouterMac);
}

TEST_F(StationTest, HoldsADiscoveryAnswerBackForItsDelay)
{
    CameraConfig slow;
    slow.answerDelay = 950ms;
    become(slow);
    ask(DiscoveryWithBroadcast, NearHost);
    ask(ReadAddress, NearHost, CameraAddress);
    ASSERT_EQ(sent.size(), 1u) << "the register read";
    sent.clear();
    pass(949ms);
    EXPECT_TRUE(sent.empty());
    pass(1ms);
    expectOneAnswer(HostMac, NearHost);
}

TEST_F(StationTest, IsSilentWhileUnplugged)
{
    station->setPlugged(false);
    ask(DiscoveryWithBroadcast, NearHost);
    EXPECT_TRUE(sent.empty());
    station->setPlugged(true);
    ask(DiscoveryWithBroadcast, NearHost);
    expectOneAnswer(HostMac, NearHost);
}

TEST_F(StationTest, IsGoneForItsRebootTimeAndComesBackAsStored)
{
    CameraConfig camera;
    camera.rebootTime = 300ms;
    camera.answerDelay = 400ms;
    camera.heldBy = CameraConfig::Holder{FarHost, 1};
    become(camera);
    station->release();
    ask(ForceTo192_168_1_99, NearHost);
    station->hold({FarHost, 1});
    ask(DiscoveryWithBroadcast, NearHost);
    sent.clear();

    station->reset();
    ask(DiscoveryWithBroadcast, NearHost);
    pass(299ms);
    EXPECT_TRUE(sent.empty());
    pass(1ms);
    ASSERT_EQ(sentOf<ArpMessage>().size(), 1u);
    EXPECT_EQ(sentOf<ArpMessage>()[0].sender, CameraAddress);
    EXPECT_FALSE(station->camera().control().application());
    pass(1000ms);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty()) << "an answer from before the reset";
}

TEST_F(StationTest, RebootsWhenItsResetRegisterIsWritten)
{
    CameraConfig camera;
    camera.rebootTime = 300ms;
    become(camera);
    ask(TakeControl, NearHost, CameraAddress);
    ask("42 01 0082 0008 0003 0000064C AC100007", NearHost, CameraAddress);
    ask("42 01 0082 0008 0004 0000065C FFFF0000", NearHost, CameraAddress);
    ask("42 01 0082 0008 0005 00000014 00000005", NearHost, CameraAddress);
    sent.clear();
    ask("42 01 0082 0008 0006 00010000 00000001", NearHost, CameraAddress);
    expectOneAnswer(HostMac, NearHost);
    EXPECT_EQ(sentOf<UdpDatagram>()[0].payload, hex("0000 0083 0004 0006 0000 0001"));
    EXPECT_EQ(station->resets(), 1u);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
    sent.clear();
    pass(300ms);
    EXPECT_EQ(sentOf<ArpMessage>().at(0).sender, "172.16.0.7"_ip);
    EXPECT_EQ(station->camera().ip(), (IpSettings{"172.16.0.7"_ip, "255.255.0.0"_ip, {}}));
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
}

TEST_F(StationTest, RebootsIntoWhatIsStoredForTheInterfaceThatIsOnTheNetwork)
{
    CameraConfig camera;
    camera.rebootTime = 300ms;
    camera.interface = 1;
    camera.interfaceMacs = {RouterMac, CameraMac};
    become(camera);
    ask(TakeControl, NearHost, CameraAddress);
    ask("42 01 0082 0008 0003 0000064C AC100008", NearHost, CameraAddress);
    ask("42 01 0082 0008 0004 000006CC AC100007", NearHost, CameraAddress);
    ask("42 01 0082 0008 0005 0000068C 00000005", NearHost, CameraAddress);
    ask("42 01 0082 0008 0006 00010000 00000001", NearHost, CameraAddress);
    pass(300ms);
    EXPECT_EQ(station->camera().ip().address, "172.16.0.7"_ip);
}

TEST_F(StationTest, RunsItsIpConfigurationAgainWhenForcedToNoAddress)
{
    ask(ForceTo192_168_1_99, NearHost);
    answerArp(NearHost, HostMac);
    sent.clear();
    std::string restart = ForceTo192_168_1_99;
    restart.replace(restart.find("C0A80163"), 8, "00000000");
    ask(restart, NearHost);
    const auto answers = sentOf<UdpDatagram>();
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].source, "192.168.1.99"_ip) << "the answer comes first";
    EXPECT_EQ(sentOf<ArpMessage>().at(0).sender, CameraAddress);
    EXPECT_EQ(station->camera().ip().address, CameraAddress);
    EXPECT_EQ(station->resets(), 0u);
}

TEST_F(StationTest, IsDeafToCommandsUntilItHasAnAddress)
{
    station = std::make_unique<Station>(withoutAddress(), 1, *timers,
                                        [this](const Frame& frame) { sent.push_back(frame); });
    EXPECT_EQ(station->phase(), BootSequence::Phase::LinkLocal);
    ask(DiscoveryWithBroadcast, NearHost);
    for (int i = 0; i < 401; ++i)
        pass(1ms);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty());
    const auto announcement = sentOf<ArpMessage>().back();
    EXPECT_EQ(announcement.sender, station->camera().ip().address);
    EXPECT_EQ(announcement.target, announcement.sender);
    ask(DiscoveryWithBroadcast, NearHost);
    EXPECT_EQ(sentOf<UdpDatagram>().size(), 1u);
}

TEST_F(StationTest, IsFreeAgainWhenItsControllersHeartbeatHasStopped)
{
    ask(TakeControl, NearHost, CameraAddress);
    pass(3000ms);
    EXPECT_TRUE(station->camera().control().application());
    pass(1ms);
    EXPECT_FALSE(station->camera().control().application());
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->camera().ip().address, "192.168.1.99"_ip);
}

} // namespace
