// SPDX-License-Identifier: Apache-2.0
#include "simulator/Station.h"

#include "tests/simulator/Hex.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace {

using namespace simulator;
using namespace std::chrono_literals;
using gvcp::Bytes;
using gvcp::Ipv4;
using gvcp::MacAddress;

constexpr MacAddress CameraMac{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
constexpr MacAddress HostMac{{0x02, 0, 0, 0, 0, 0x05}};
constexpr MacAddress RouterMac{{0x02, 0, 0, 0, 0, 0x01}};
constexpr Ipv4 CameraAddress = 0xC0A80114; // 192.168.1.20
constexpr Ipv4 NearHost = 0xC0A80105;
constexpr Ipv4 FarHost = 0x0A000005;
constexpr Ipv4 Router = 0xC0A80101;

const std::string DiscoveryWithBroadcast = "42 11 0002 0000 1234";
const std::string DiscoveryWithoutBroadcast = "42 01 0002 0000 1234";
const std::string TakeControl = "42 01 0082 0008 0010 00000A00 00000002";
const std::string ReadAddress = "42 01 0080 0004 0001 00000024";
const std::string ForceTo192_168_1_99 = "42 11 0004 0038 0007  0000 001A2B000001"
                                        "000000000000000000000000 C0A80163"
                                        "000000000000000000000000 FFFFFF00"
                                        "000000000000000000000000 00000000";

Fault faultOf(Request request, FaultAction action = FaultAction::Drop, std::optional<unsigned> times = {},
              std::chrono::milliseconds time = 0ms)
{
    Fault fault;
    fault.request = request;
    fault.action = action;
    fault.times = times;
    fault.time = time;
    return fault;
}

class StationTest : public testing::Test
{
protected:
    StationTest() { become({}); }

    /// A camera at 192.168.1.20/24 with these quirks.
    void become(CameraConfig quirks)
    {
        quirks.mac = CameraMac;
        if (quirks.ip == IpSettings{})
            quirks.ip = {CameraAddress, 0xFFFFFF00, 0};
        sent.clear();
        // What an earlier camera has left in the queue goes with it.
        timers.emplace(TimerQueue::Clock::time_point{});
        station = std::make_unique<Station>(quirks, 1, *timers,
                                            [this](const Frame& frame) { sent.push_back(frame); });
    }

    static CameraConfig answering(CameraConfig::AnswerBy way)
    {
        CameraConfig quirks;
        quirks.answerBy = way;
        return quirks;
    }

    static CameraConfig withGateway()
    {
        CameraConfig quirks;
        quirks.ip = {CameraAddress, 0xFFFFFF00, Router};
        return quirks;
    }

    static CameraConfig withoutAddress()
    {
        CameraConfig camera;
        camera.mac = CameraMac;
        camera.ipMethod = CameraConfig::IpMethod::LinkLocal;
        return camera;
    }

    void ask(const std::string& datagram, Ipv4 from, Ipv4 to = gvcp::LimitedBroadcast)
    {
        const MacAddress mac = to == station->camera().ip().address ? CameraMac : BroadcastMac;
        station->receive(UdpDatagram{HostMac, mac, from, to, 5000, 3956, hex(datagram)});
    }

    void answerArp(Ipv4 address, const MacAddress& mac)
    {
        station->receive(ArpMessage{mac, CameraMac, false, address, CameraAddress, CameraMac});
    }

    void pass(std::chrono::milliseconds time) { timers->advance(timers->now() + time); }

    template <typename T>
    std::vector<T> sentOf() const
    {
        std::vector<T> all;
        for (const Frame& frame : sent)
            if (const T* const each = std::get_if<T>(&frame))
                all.push_back(*each);
        return all;
    }

    /// Whether exactly one datagram has left, for this MAC and address.
    void expectOneAnswer(const MacAddress& mac, Ipv4 address) const
    {
        const auto answers = sentOf<UdpDatagram>();
        ASSERT_EQ(answers.size(), 1u);
        EXPECT_EQ(answers[0].destinationMac, mac);
        EXPECT_EQ(answers[0].destination, address);
        EXPECT_EQ(answers[0].sourceMac, CameraMac);
        EXPECT_EQ(answers[0].source, CameraAddress);
        EXPECT_EQ(answers[0].sourcePort, 3956);
        EXPECT_EQ(answers[0].destinationPort, 5000);
    }

    std::optional<TimerQueue> timers;
    std::vector<Frame> sent;
    std::unique_ptr<Station> station;
};

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
    ask(DiscoveryWithBroadcast, NearHost, 0xC0A801FF);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    ask(DiscoveryWithBroadcast, FarHost, 0x0AFFFFFF);
    EXPECT_TRUE(sent.empty());
}

TEST_F(StationTest, TakesCommandsForItsAddressAndPortOnly)
{
    ask(ReadAddress, NearHost, CameraAddress);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    ask(ReadAddress, NearHost, gvcp::LimitedBroadcast);
    station->receive(
        UdpDatagram{HostMac, CameraMac, NearHost, CameraAddress + 1, 5000, 3956, hex(ReadAddress)});
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
    expectOneAnswer(BroadcastMac, gvcp::LimitedBroadcast);

    sent.clear();
    ask(DiscoveryWithoutBroadcast, FarHost);
    ask(ReadAddress, FarHost, CameraAddress);
    pass(100ms);
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
    expectOneAnswer(BroadcastMac, gvcp::LimitedBroadcast);

    become(answering(CameraConfig::AnswerBy::Arp));
    ask(DiscoveryWithoutBroadcast, FarHost);
    pass(100ms);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty());
}

TEST_F(StationTest, AnswersDiscoveryAndForceIpByBroadcastWhenThatIsItsWay)
{
    become(answering(CameraConfig::AnswerBy::Broadcast));
    ask(DiscoveryWithBroadcast, NearHost);
    expectOneAnswer(BroadcastMac, gvcp::LimitedBroadcast);
    sent.clear();
    ask(DiscoveryWithoutBroadcast, NearHost);
    EXPECT_TRUE(sent.empty());
    ask(ReadAddress, NearHost, CameraAddress);
    expectOneAnswer(HostMac, NearHost);
    sent.clear();
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).destination, gvcp::LimitedBroadcast);
}

TEST_F(StationTest, IsAtItsForcedAddressAtOnce)
{
    ask(ForceTo192_168_1_99, NearHost);
    expectOneAnswer(HostMac, NearHost);
    const auto announcement = sentOf<ArpMessage>().at(0);
    EXPECT_EQ(announcement.sender, 0xC0A80163u);
    EXPECT_EQ(announcement.target, 0xC0A80163u);

    sent.clear();
    station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, CameraAddress, {}});
    EXPECT_TRUE(sent.empty()) << "the old address is nobody's";
    station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, 0xC0A80163, {}});
    ASSERT_EQ(sent.size(), 1u);
    const auto reply = sentOf<ArpMessage>().at(0);
    EXPECT_FALSE(reply.isRequest);
    EXPECT_EQ(reply.destinationMac, HostMac);
    EXPECT_EQ(reply.sender, 0xC0A80163u);
    EXPECT_EQ(reply.target, NearHost);
    sent.clear();
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    ask(ReadAddress, NearHost, 0xC0A80163);
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

TEST_F(StationTest, IgnoresRequestsAsItsFaultsSay)
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

TEST_F(StationTest, CountsTheForcedAddressesThatAreMeantForItOnly)
{
    std::string forAnother = ForceTo192_168_1_99;
    forAnother.replace(forAnother.find("001A2B000001"), 12, "001A2B000002");
    ask(forAnother, NearHost);
    EXPECT_EQ(station->counters()[1], 0u);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->counters()[1], 1u);
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
    EXPECT_EQ(sentOf<ArpMessage>().at(0).sender, 0xAC100007u);
    EXPECT_EQ(station->camera().ip(), (IpSettings{0xAC100007, 0xFFFF0000, 0}));
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
}

TEST_F(StationTest, RunsItsIpConfigurationAgainWhenForcedToNoAddress)
{
    ask(ForceTo192_168_1_99, NearHost);
    sent.clear();
    std::string restart = ForceTo192_168_1_99;
    restart.replace(restart.find("C0A80163"), 8, "00000000");
    ask(restart, NearHost);
    const auto answers = sentOf<UdpDatagram>();
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].source, 0xC0A80163u) << "the answer comes first";
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

TEST_F(StationTest, RefusesWhatABusyOrMistakenCameraRefusesAndDoesNotCarryItOut)
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

TEST_F(StationTest, AnnouncesADelayAndCarriesOutTheCommandAfterIt)
{
    ask(TakeControl, NearHost, CameraAddress);
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Pending, 1, 5000ms));
    sent.clear();
    ask("42 01 0082 0008 0002 0000064C AC100007", NearHost, CameraAddress);
    ASSERT_EQ(sentOf<UdpDatagram>().size(), 1u);
    EXPECT_EQ(sentOf<UdpDatagram>()[0].payload, hex("0000 0089 0004 0002 0000 1388"));
    pass(4999ms);
    EXPECT_EQ(station->camera().registers().stored().persistent.address, 0u);
    EXPECT_EQ(sent.size(), 1u);
    pass(1ms);
    EXPECT_EQ(sentOf<UdpDatagram>().at(1).payload, hex("0000 0083 0004 0002 0000 0001"))
        << "its controller was excused from the heartbeat";
    EXPECT_EQ(station->camera().registers().stored().persistent.address, 0xAC100007u);
}

TEST_F(StationTest, AnswersLateTwiceOrNotAtAllAsItsFaultsSay)
{
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Delay, 1, 700ms));
    station->addFault(faultOf(Request::ReadRegister, FaultAction::Twice, 1));
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    ask(ReadAddress, NearHost, CameraAddress);
    EXPECT_EQ(sent.size(), 2u);
    pass(700ms);
    EXPECT_EQ(sent.size(), 3u);

    sent.clear();
    station->addFault(faultOf(Request::WriteRegister, FaultAction::Mute, 1));
    ask(TakeControl, NearHost, CameraAddress);
    EXPECT_TRUE(sent.empty());
    EXPECT_TRUE(station->camera().control().application()) << "carried out all the same";
}

TEST_F(StationTest, VanishesAfterTheNumberOfCommandsThatItsFaultSays)
{
    Fault fault;
    fault.action = FaultAction::Vanish;
    fault.after = 3;
    station->addFault(fault);
    for (int i = 0; i < 6; ++i)
        ask(i % 2 == 0 ? ReadAddress : DiscoveryWithBroadcast, NearHost, CameraAddress);
    EXPECT_EQ(sent.size(), 3u);
    EXPECT_FALSE(station->isPlugged());
    station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, CameraAddress, {}});
    EXPECT_EQ(sent.size(), 3u);
}

TEST_F(StationTest, IsSeizedByAnotherApplicationRightAfterAForcedAddress)
{
    station->addFault(faultOf(Request::ForceIp, FaultAction::Seize, 1));
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("0000 0005 0000 0007"));
    EXPECT_EQ(station->camera().ip().address, 0xC0A80163u);
    EXPECT_EQ(station->camera().control().privilege(), 1u);
    sent.clear();
    ask(TakeControl, NearHost, 0xC0A80163);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).payload, hex("8006 0083 0004 0010 0000 0000"));
}

TEST_F(StationTest, IsFreeAgainWhenItsControllersHeartbeatHasStopped)
{
    ask(TakeControl, NearHost, CameraAddress);
    pass(3000ms);
    EXPECT_TRUE(station->camera().control().application());
    pass(1ms);
    EXPECT_FALSE(station->camera().control().application());
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->camera().ip().address, 0xC0A80163u);
}

TEST_F(StationTest, LosesAboutItsShareOfFramesAndTheSameOnesEachTime)
{
    CameraConfig lossy;
    lossy.loss = 0.1;
    std::vector<bool> runs[2];
    for (std::vector<bool>& run : runs) {
        become(lossy);
        for (int i = 0; i < 2000; ++i) {
            sent.clear();
            ask(ReadAddress, NearHost, CameraAddress);
            run.push_back(!sent.empty());
        }
    }
    // Both ways have to work: 0.9 * 0.9 of 2000, give or take five standard deviations.
    EXPECT_NEAR(static_cast<double>(std::count(runs[0].begin(), runs[0].end(), true)), 1620, 90);
    EXPECT_EQ(runs[0], runs[1]);
}

/// Whether a receiver that looks at code, id and contents, and not beyond them, takes it for the answer.
bool isGenuine(const Bytes& payload, const Bytes& genuine)
{
    constexpr long LengthAt = 4;
    return payload.size() >= genuine.size() &&
           std::equal(genuine.begin(), genuine.begin() + LengthAt, payload.begin()) &&
           std::equal(genuine.begin() + LengthAt + 2, genuine.end(), payload.begin() + LengthAt + 2);
}

TEST_F(StationTest, SendsItsNoiseAlongWithTheGenuineAnswer)
{
    using Kind = CameraConfig::NoiseKind;
    ask(DiscoveryWithBroadcast, NearHost);
    const Bytes genuine = sentOf<UdpDatagram>().at(0).payload;

    for (const Kind kind :
         {Kind::Truncated, Kind::Oversized, Kind::Foreign, Kind::Duplicate, Kind::Random, Kind::WrongId}) {
        CameraConfig noisy;
        noisy.noise = {kind};
        become(noisy);
        ask(DiscoveryWithBroadcast, NearHost);
        const auto datagrams = sentOf<UdpDatagram>();
        ASSERT_GT(datagrams.size(), 2u);
        EXPECT_EQ(datagrams.back().payload, genuine);
        for (const UdpDatagram& each : datagrams) {
            EXPECT_LE(each.payload.size(), 1472u);
            EXPECT_EQ(each.sourcePort, 3956);
        }
        std::size_t same = 0;
        for (const UdpDatagram& each : datagrams)
            same += isGenuine(each.payload, genuine) ? 1 : 0;
        if (kind == Kind::Duplicate) {
            EXPECT_EQ(same, datagrams.size());
        } else if (kind != Kind::Oversized) {
            EXPECT_EQ(same, 1u) << "noise of kind " << static_cast<int>(kind) << " passes for genuine";
        }
    }
}

TEST_F(StationTest, AnAnswerWithAWrongIdBearsAnotherAddressAndOtherTexts)
{
    CameraConfig noisy;
    noisy.noise = {CameraConfig::NoiseKind::WrongId};
    become(noisy);
    ask(DiscoveryWithBroadcast, NearHost);
    const auto datagrams = sentOf<UdpDatagram>();
    std::set<unsigned> ids;
    for (std::size_t i = 0; i + 1 < datagrams.size(); ++i) {
        const Bytes& payload = datagrams[i].payload;
        ids.insert(static_cast<unsigned>(payload[6] << 8 | payload[7]));
        EXPECT_EQ(Bytes(payload.begin() + 18, payload.begin() + 24), hex("001A2B000001"));
        EXPECT_EQ(Bytes(payload.begin() + 44, payload.begin() + 48), hex("C6336401"));
        EXPECT_EQ(std::string(payload.begin() + 112, payload.begin() + 128), "Wrong request id");
    }
    EXPECT_EQ(ids, (std::set<unsigned>{0, 0x1233, 0x1235, 0x9234}));
}

TEST_F(StationTest, ForgesTheSameManyCamerasEachTimeAndStaysAliveMeanwhile)
{
    CameraConfig forger;
    forger.forgedAnswers = 1000;
    become(forger);
    std::set<Bytes> macs;
    for (int round = 0; round < 2; ++round) {
        sent.clear();
        ask(DiscoveryWithBroadcast, NearHost);
        EXPECT_LT(sent.size(), 200u) << "a batch at a time";
        for (int i = 0; i < 1000 && timers->next(); ++i)
            pass(5ms);
        const auto datagrams = sentOf<UdpDatagram>();
        ASSERT_EQ(datagrams.size(), 1001u);
        for (const UdpDatagram& each : datagrams) {
            EXPECT_EQ(each.payload.size(), 256u);
            EXPECT_EQ(Bytes(each.payload.begin(), each.payload.begin() + 8), hex("0000 0003 00F8 1234"));
            macs.insert(Bytes(each.payload.begin() + 18, each.payload.begin() + 24));
        }
        EXPECT_EQ(macs.size(), 1001u);
    }
}

} // namespace
