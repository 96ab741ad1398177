// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/StationFixture.h"

// A camera that leaves the network for a while whenever an address is forced onto it.
namespace {

using namespace simulator_tests;

constexpr Ipv4 NewAddress = "192.168.1.99"_ip;

class StationForceIp : public StationFixture
{
protected:
    StationForceIp() { become(leaving()); }

    static CameraConfig leaving()
    {
        CameraConfig quirks;
        quirks.forceIpOffTime = 500ms;
        return quirks;
    }

    /// Whether anything at all reaches it, and brings an answer.
    bool isThere()
    {
        const auto counters = station->counters();
        sent.clear();
        answerArp(NearHost, HostMac);
        ask(DiscoveryWithBroadcast, NearHost);
        ask(ReadAddress, NearHost, NewAddress);
        station->receive(ArpMessage{HostMac, BroadcastMac, true, NearHost, NewAddress, {}});
        station->receive(Echo{HostMac, CameraMac, NearHost, NewAddress, true, 7, 9, {}});
        return !sent.empty() || station->counters() != counters;
    }
};

TEST_F(StationForceIp, IsGoneForItsTimeWhenItHasAcknowledged)
{
    ask(ForceTo192_168_1_99, NearHost);
    expectOneAnswer(HostMac, NearHost);
    EXPECT_EQ(sent.size(), 1u) << "no word on the new address yet";
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
    EXPECT_FALSE(isThere());
    pass(499ms);
    EXPECT_FALSE(isThere());
    pass(1ms);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
    EXPECT_EQ(sentOf<ArpMessage>().at(0).sender, NewAddress);
    EXPECT_TRUE(isThere());
    EXPECT_EQ(station->camera().ip(), (IpSettings{NewAddress, "255.255.255.0"_ip, {}}));
    EXPECT_EQ(station->resets(), 0u);
}

TEST_F(StationForceIp, IsGoneAgainWhenForcedToTheAddressThatItHasRightAfterItsReturn)
{
    ask(ForceTo192_168_1_99, NearHost);
    pass(300ms);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->counters()[1], 1u) << "one that it cannot hear";
    pass(200ms);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
    ask(ForceTo192_168_1_99, NearHost);
    answerArp(NearHost, HostMac);
    EXPECT_FALSE(isThere());
    pass(499ms);
    EXPECT_FALSE(isThere());
    pass(1ms);
    EXPECT_TRUE(isThere());
}

TEST_F(StationForceIp, StaysUntilItKnowsWhereItsAcknowledgeHasToGo)
{
    becomeStranger(leaving());
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
    sent.clear();
    station->receive(ArpMessage{HostMac, CameraMac, false, NearHost, CameraAddress, CameraMac});
    expectOneAnswer(HostMac, NearHost);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
}

TEST_F(StationForceIp, GoesAtOnceWhenItAcknowledgesNothing)
{
    CameraConfig silent = leaving();
    silent.forceIpAcknowledge = CameraConfig::ForceIpAcknowledge::Never;
    become(silent);
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_TRUE(sent.empty());
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
}

TEST_F(StationForceIp, IsGoneBeforeItRunsItsIpConfigurationAgain)
{
    std::string restart = ForceTo192_168_1_99;
    restart.replace(restart.find("C0A80163"), 8, "00000000");
    ask(restart, NearHost);
    expectOneAnswer(HostMac, NearHost);
    pass(499ms);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
    pass(1ms);
    EXPECT_EQ(station->camera().ip().address, CameraAddress);
}

TEST_F(StationForceIp, StaysWhenItRefuses)
{
    station->hold({FarHost, 2});
    ask(ForceTo192_168_1_99, NearHost);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Running);
    EXPECT_EQ(station->camera().ip().address, CameraAddress);
}

TEST_F(StationForceIp, LosesTheForcedAddressWhenItIsResetWhileItIsGone)
{
    ask(ForceTo192_168_1_99, NearHost);
    station->reset();
    pass(500ms);
    EXPECT_EQ(station->phase(), BootSequence::Phase::Off);
    pass(500ms);
    EXPECT_EQ(station->camera().ip().address, CameraAddress);
}

} // namespace
