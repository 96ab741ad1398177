// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/StationFixture.h"

#include <gmock/gmock.h>

// How a camera finds out where its answers have to go.
namespace {

using namespace simulator_tests;
using testing::ElementsAre;

constexpr MacAddress OtherMac{{0x02, 0, 0, 0, 0, 0x06}};
constexpr Ipv4 OtherHost = "192.168.1.6"_ip;

class StationArp : public StationFixture
{
protected:
    StationArp() { becomeStranger({}); }

    void tell(bool isRequest, const MacAddress& mac, Ipv4 sender, Ipv4 target)
    {
        station->receive(ArpMessage{mac, BroadcastMac, isRequest, sender, target, {}});
    }

    static std::string readWithId(int id) { return "42 01 0080 0004 000" + std::to_string(id) + " 00000024"; }

    /// Where a register read of this host is answered to; nothing when it is not answered at once.
    std::optional<MacAddress> answeredTo(Ipv4 host)
    {
        sent.clear();
        ask(ReadAddress, host, station->camera().ip().address);
        const auto answers = sentOf<UdpDatagram>();
        return answers.empty() ? std::nullopt : std::optional(answers[0].destinationMac);
    }

    std::size_t requests() const { return sentOf<ArpMessage>().size(); }
};

TEST_F(StationArp, AsksForTheMacOfWhoeverItAnswersAndRemembersIt)
{
    ask(ReadAddress, NearHost, CameraAddress);
    ASSERT_EQ(sent.size(), 1u);
    const auto request = sentOf<ArpMessage>().at(0);
    EXPECT_TRUE(request.isRequest);
    EXPECT_EQ(request.sourceMac, CameraMac);
    EXPECT_EQ(request.destinationMac, BroadcastMac);
    EXPECT_EQ(request.sender, CameraAddress);
    EXPECT_EQ(request.target, NearHost);
    EXPECT_EQ(request.targetMac, MacAddress{});

    answerArp(NearHost, OtherMac);
    expectOneAnswer(OtherMac, NearHost);
    pass(59999ms);
    EXPECT_EQ(answeredTo(NearHost), OtherMac) << "whatever the request's frame says";
    EXPECT_EQ(requests(), 0u);
    pass(1ms);
    EXPECT_EQ(answeredTo(NearHost), std::nullopt);
    EXPECT_EQ(requests(), 1u);
}

TEST_F(StationArp, AsksThreeTimesASecondApartAndThenDropsItsAnswers)
{
    ask(DiscoveryWithBroadcast, NearHost);
    for (const std::size_t asked : {1u, 2u, 3u}) {
        EXPECT_EQ(requests(), asked);
        pass(999ms);
        EXPECT_EQ(sent.size(), asked);
        pass(1ms);
    }
    answerArp(NearHost, HostMac);
    pass(10s);
    EXPECT_EQ(sent.size(), 3u);

    becomeStranger({});
    ask(DiscoveryWithBroadcast, NearHost);
    pass(1000ms);
    pass(1000ms);
    pass(999ms);
    answerArp(NearHost, HostMac);
    expectOneAnswer(HostMac, NearHost);
}

TEST_F(StationArp, KeepsTheLatestThreeAnswersWhileItAsks)
{
    for (int id = 1; id <= 5; ++id)
        ask(readWithId(id), NearHost, CameraAddress);
    ask(ReadAddress, OtherHost, CameraAddress);
    EXPECT_EQ(requests(), 2u) << "one for each host";
    answerArp(NearHost, HostMac);
    std::vector<Bytes> ids;
    for (const UdpDatagram& each : sentOf<UdpDatagram>())
        ids.emplace_back(each.payload.begin() + 6, each.payload.begin() + 8);
    EXPECT_THAT(ids, ElementsAre(hex("0003"), hex("0004"), hex("0005")));
    sent.clear();
    answerArp(OtherHost, OtherMac);
    expectOneAnswer(OtherMac, OtherHost);
}

TEST_F(StationArp, LearnsFromWhatIsSaidToIt)
{
    tell(true, HostMac, NearHost, CameraAddress);
    EXPECT_EQ(answeredTo(NearHost), HostMac) << "a request for its own MAC";
    tell(false, OtherMac, OtherHost, CameraAddress);
    EXPECT_EQ(answeredTo(OtherHost), OtherMac) << "a reply that it has not asked for";
}

TEST_F(StationArp, TakesTheLatestWordOnWhomItKnows)
{
    answerArp(NearHost, HostMac);
    tell(true, OtherMac, NearHost, NearHost);
    EXPECT_EQ(answeredTo(NearHost), OtherMac) << "an announcement";
    tell(true, HostMac, NearHost, OtherHost);
    EXPECT_EQ(answeredTo(NearHost), HostMac) << "a request for another one";
    tell(false, OtherMac, NearHost, OtherHost);
    EXPECT_EQ(answeredTo(NearHost), OtherMac) << "a reply to another one";
    pass(59999ms);
    EXPECT_EQ(answeredTo(NearHost), OtherMac) << "remembered from then on";
}

TEST_F(StationArp, LearnsNothingOfStrangersFromWhatIsNotSaidToIt)
{
    tell(true, HostMac, NearHost, NearHost);
    tell(true, HostMac, NearHost, OtherHost);
    tell(false, HostMac, NearHost, NearHost);
    EXPECT_EQ(answeredTo(NearHost), std::nullopt);
    sent.clear();
    tell(true, HostMac, NearHost, NearHost);
    expectOneAnswer(HostMac, NearHost); // It is asking for that one by now.
}

TEST_F(StationArp, LearnsNothingFromAnotherOwnerOfItsAddress)
{
    tell(true, OtherMac, CameraAddress, CameraAddress);
    EXPECT_EQ(answeredTo(CameraAddress), std::nullopt);
}

TEST_F(StationArp, AsksEachTimeWhenItRemembersNothing)
{
    CameraConfig forgetful;
    forgetful.arpLifetime = 0ms;
    becomeStranger(forgetful);
    for (int i = 0; i < 2; ++i) {
        tell(true, HostMac, NearHost, CameraAddress);
        EXPECT_EQ(answeredTo(NearHost), std::nullopt);
        EXPECT_EQ(requests(), 1u);
        answerArp(NearHost, HostMac);
        expectOneAnswer(HostMac, NearHost);
    }
}

TEST_F(StationArp, IsDeafToRequestsThatAFaultMeets)
{
    station->addFault(faultOf(Request::Arp, FaultAction::Drop, 1));
    tell(true, HostMac, NearHost, CameraAddress);
    EXPECT_EQ(answeredTo(NearHost), std::nullopt);
}

TEST_F(StationArp, AnswersAPingWhenItKnowsWhereTo)
{
    const auto ping = [this] {
        station->receive(Echo{HostMac, CameraMac, NearHost, CameraAddress, true, 7, 9, {}});
    };
    ping();
    EXPECT_TRUE(sentOf<Echo>().empty());
    answerArp(NearHost, OtherMac);
    ASSERT_EQ(sentOf<Echo>().size(), 1u);
    EXPECT_EQ(sentOf<Echo>()[0].destinationMac, OtherMac);
    EXPECT_EQ(sentOf<Echo>()[0].destination, NearHost);
}

TEST_F(StationArp, KnowsNobodyAfterAResetAndAfterAForcedAddressThatIsAnother)
{
    answerArp(NearHost, HostMac);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(answeredTo(NearHost), std::nullopt);
    answerArp(NearHost, HostMac);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(answeredTo(NearHost), HostMac) << "the address that it has";
    station->reset();
    pass(1000ms);
    EXPECT_EQ(answeredTo(NearHost), std::nullopt);
}

TEST_F(StationArp, AcknowledgesAForcedAddressFromTheOldOneAlsoWhenItHasToAskWhereTo)
{
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->camera().ip().address, "192.168.1.99"_ip);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sentOf<ArpMessage>()[0].sender, CameraAddress);
    sent.clear();
    station->receive(ArpMessage{HostMac, CameraMac, false, NearHost, CameraAddress, CameraMac});
    expectOneAnswer(HostMac, NearHost);
    EXPECT_EQ(sentOf<ArpMessage>().at(0).sender, "192.168.1.99"_ip) << "its announcement";
}

TEST_F(StationArp, AsksForAHostAnewToAcknowledgeFromItsForcedAddress)
{
    CameraConfig quirks;
    quirks.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::FromNewAddress;
    become(quirks);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_TRUE(sentOf<UdpDatagram>().empty());
    EXPECT_EQ(sentOf<ArpMessage>().at(0).sender, "192.168.1.99"_ip);
    answerArp(NearHost, HostMac);
    EXPECT_EQ(sentOf<UdpDatagram>().at(0).source, "192.168.1.99"_ip);
}

TEST_F(StationArp, RebootsWhenTheAcknowledgeHasLeftOrHasFoundNoWay)
{
    const std::string reset = "42 01 0082 0008 0006 00010000 00000001";
    for (const bool isHostThere : {true, false}) {
        CameraConfig forgetful;
        forgetful.arpLifetime = 0ms;
        becomeStranger(forgetful);
        ask(TakeControl, NearHost, CameraAddress);
        answerArp(NearHost, HostMac);
        sent.clear();
        ask(reset, NearHost, CameraAddress);
        EXPECT_EQ(station->resets(), 0u);
        if (isHostThere) {
            answerArp(NearHost, HostMac);
            expectOneAnswer(HostMac, NearHost);
        } else {
            for (int i = 0; i < 3; ++i)
                pass(1000ms);
        }
        EXPECT_EQ(station->resets(), 1u);
    }
}

} // namespace
