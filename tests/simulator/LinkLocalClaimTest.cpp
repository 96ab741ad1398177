// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/LinkLocalClaim.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;
using namespace base::literals;
using namespace std::chrono_literals;
using base::IpSettings;
using base::Ipv4;
using base::MacAddress;

constexpr MacAddress CameraMac{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
constexpr MacAddress OtherMac{{0x02, 0, 0, 0, 0, 0x05}};
constexpr Ipv4 Preferred = "169.254.33.7"_ip;

class LinkLocalClaimTest : public testing::Test
{
protected:
    void start(std::optional<Ipv4> preferred = Preferred)
    {
        claim.start(100ms, preferred, [this](const IpSettings& ip) {
            ++finished;
            won = ip;
        });
    }

    void pass(std::chrono::milliseconds time)
    {
        for (; time > 0ms; time -= 1ms)
            timers.advance(timers.now() + 1ms);
    }

    /// The address that was last asked for.
    Ipv4 asked() const { return std::get<ArpMessage>(sent.back()).target; }

    TimerQueue timers{TimerQueue::Clock::time_point{}};
    std::vector<Frame> sent;
    std::mt19937 random{1};
    LinkLocalClaim claim{CameraMac, timers, [this](const Frame& frame) { sent.push_back(frame); }, random};
    int finished = 0;
    IpSettings won;
};

TEST_F(LinkLocalClaimTest, AsksThreeTimesForAnAddressAndTakesItWhenNobodyObjects)
{
    start();
    pass(399ms);
    ASSERT_EQ(sent.size(), 3u);
    for (const Frame& frame : sent) {
        const auto& probe = std::get<ArpMessage>(frame);
        EXPECT_TRUE(probe.isRequest);
        EXPECT_EQ(probe.sourceMac, CameraMac);
        EXPECT_EQ(probe.destinationMac, BroadcastMac);
        EXPECT_EQ(probe.sender, Ipv4()) << "others must not learn an address that is not the camera's yet";
        EXPECT_EQ(probe.target, Preferred);
        EXPECT_EQ(probe.targetMac, MacAddress{});
    }
    pass(2ms); // the random wait at the beginning was at most an interval
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(won, (IpSettings{Preferred, "255.255.0.0"_ip, {}}));
    pass(1000ms);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(sent.size(), 3u);
}

TEST_F(LinkLocalClaimTest, TakesAnotherAddressWhenSomebodyHasIt)
{
    start();
    pass(250ms);
    claim.heard({OtherMac, CameraMac, false, Preferred, {}, CameraMac});
    pass(150ms);
    EXPECT_EQ(finished, 0) << "it begins anew";
    EXPECT_NE(asked(), Preferred);
    pass(300ms);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(won.address, asked());
    EXPECT_TRUE(won.address.isLinkLocal());
}

TEST_F(LinkLocalClaimTest, TakesAnotherAddressWhenSomebodyUsesOrClaimsIt)
{
    const ArpMessage conflicts[] = {
        {OtherMac, BroadcastMac, true, Preferred, Preferred, {}},        // an announcement
        {OtherMac, BroadcastMac, true, Preferred, "169.254.1.1"_ip, {}}, // a question to a third
        {OtherMac, BroadcastMac, true, {}, Preferred, {}},               // a probe
    };
    for (const ArpMessage& conflict : conflicts) {
        start();
        pass(250ms);
        claim.heard(conflict);
        pass(150ms);
        EXPECT_NE(asked(), Preferred);
    }
}

TEST_F(LinkLocalClaimTest, IsNotConfusedByItsOwnProbesOrByOthersTalk)
{
    start();
    pass(250ms);
    claim.heard({CameraMac, BroadcastMac, true, {}, Preferred, {}});
    claim.heard({OtherMac, BroadcastMac, true, "169.254.1.1"_ip, Preferred, {}}); // only asks for it
    claim.heard({OtherMac, BroadcastMac, true, {}, "169.254.1.1"_ip, {}});
    pass(151ms);
    EXPECT_EQ(won.address, Preferred);
}

TEST_F(LinkLocalClaimTest, ChoosesAnAddressOfItsOwnOutsideTheReservedOnes)
{
    for (int i = 0; i < 1000; ++i) {
        start(std::nullopt);
        pass(401ms);
        ASSERT_EQ(finished, i + 1);
        ASSERT_GE(won.address, "169.254.1.0"_ip);
        ASSERT_LE(won.address, "169.254.254.255"_ip);
    }
}

TEST_F(LinkLocalClaimTest, SaysNothingMoreWhenItIsStopped)
{
    start();
    pass(150ms);
    const std::size_t before = sent.size();
    claim.stop();
    pass(1000ms);
    EXPECT_EQ(sent.size(), before);
    EXPECT_EQ(finished, 0);
}

} // namespace
