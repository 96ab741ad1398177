// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/BootSequence.h"

#include "gvcp/Registers.h"
#include "simulator/config/CameraConfig.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;
using namespace base::literals;
using base::IpSettings;
using namespace std::chrono_literals;
using Phase = BootSequence::Phase;

constexpr IpSettings Stored{"172.16.0.7"_ip, "255.255.0.0"_ip, "172.16.0.1"_ip};
constexpr IpSettings AtStart{"192.168.1.20"_ip, "255.255.255.0"_ip, {}};
constexpr std::uint32_t Persistent = gvcp::IpConfig::Persistent | gvcp::IpConfig::LinkLocal;
constexpr std::uint32_t Dhcp = gvcp::IpConfig::Dhcp | gvcp::IpConfig::LinkLocal;
constexpr std::uint32_t LinkLocalOnly = gvcp::IpConfig::LinkLocal;

CameraConfig at(const IpSettings& ip)
{
    CameraConfig config;
    config.mac = {{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
    config.ip = ip;
    return config;
}

class BootSequenceTest : public testing::Test
{
protected:
    BootSequence& bootOf(const CameraConfig& other)
    {
        config = other;
        return boot.emplace(
            config, timers, [this](const Frame& frame) { sent.push_back(frame); }, random,
            [this](const IpSettings& ip) { addresses.push_back(ip); });
    }

    void pass(std::chrono::milliseconds time)
    {
        for (; time > 0ms; time -= 1ms)
            timers.advance(timers.now() + 1ms);
    }

    TimerQueue timers{TimerQueue::Clock::time_point{}};
    std::vector<Frame> sent;
    std::mt19937 random{1};
    CameraConfig config;
    std::optional<BootSequence> boot;
    std::vector<IpSettings> addresses;
};

TEST_F(BootSequenceTest, OfACameraThatHasAnAddressIsOverBeforeItBegins)
{
    EXPECT_TRUE(bootOf(at(AtStart)).isRunning());
    EXPECT_FALSE(bootOf(at({})).isOn());
    EXPECT_TRUE(addresses.empty());
}

TEST_F(BootSequenceTest, TakesTheStoredAddressWhenItIsToBeOff)
{
    bootOf(at({})).run(300ms, {Persistent, Stored});
    EXPECT_FALSE(boot->isOn());
    pass(299ms);
    EXPECT_TRUE(addresses.empty());
    pass(1ms);
    EXPECT_EQ(addresses, std::vector{Stored});
    EXPECT_TRUE(boot->isRunning());
    EXPECT_TRUE(sent.empty());
}

TEST_F(BootSequenceTest, PrefersTheStoredAddressToALease)
{
    bootOf(at({})).run(0ms, {Persistent | Dhcp, Stored});
    EXPECT_EQ(addresses, std::vector{Stored});
}

TEST_F(BootSequenceTest, AsksForALeaseWhenNothingIsStoredAndFallsBackToLinkLocal)
{
    bootOf(at({})).run(0ms, {Persistent | Dhcp, {}});
    EXPECT_EQ(boot->phase(), Phase::Dhcp);
    pass(3999ms);
    ASSERT_GE(sent.size(), 1u);
    EXPECT_TRUE(std::holds_alternative<UdpDatagram>(sent[0]));
    EXPECT_EQ(boot->phase(), Phase::Dhcp);
    pass(1ms);
    EXPECT_EQ(boot->phase(), Phase::LinkLocal);
    pass(401ms);
    EXPECT_TRUE(boot->isRunning());
    ASSERT_EQ(addresses.size(), 1u);
    EXPECT_TRUE(addresses[0].address.isLinkLocal());
}

TEST_F(BootSequenceTest, GoesStraightToLinkLocalWhenDhcpIsOff)
{
    bootOf(at(AtStart)).run(0ms, {LinkLocalOnly, Stored});
    EXPECT_EQ(boot->phase(), Phase::LinkLocal);
    pass(401ms);
    ASSERT_EQ(addresses.size(), 1u);
    EXPECT_TRUE(addresses[0].address.isLinkLocal());
    for (const Frame& frame : sent)
        EXPECT_TRUE(std::holds_alternative<ArpMessage>(frame));
}

TEST_F(BootSequenceTest, TakesItsConfiguredAddressForTheLease)
{
    bootOf(at(AtStart)).run(10ms, {Dhcp, Stored});
    pass(10ms);
    EXPECT_EQ(addresses, std::vector{AtStart});
    EXPECT_TRUE(sent.empty());
}

TEST_F(BootSequenceTest, AsksForALeaseWhenItsConfiguredAddressIsLinkLocalAndReturnsToThatOne)
{
    const IpSettings linkLocal{"169.254.33.7"_ip, "255.255.0.0"_ip, {}};
    bootOf(at(linkLocal)).run(0ms, {Dhcp, {}});
    EXPECT_EQ(boot->phase(), Phase::Dhcp);
    pass(4401ms);
    EXPECT_EQ(addresses, std::vector{linkLocal});
}

TEST_F(BootSequenceTest, BeginsAnewInWhateverPhaseItIs)
{
    bootOf(at({})).run(0ms, {Dhcp, {}});
    pass(100ms);
    boot->run(50ms, {LinkLocalOnly, {}});
    EXPECT_FALSE(boot->isOn());
    pass(150ms);
    EXPECT_EQ(boot->phase(), Phase::LinkLocal);
    sent.clear();
    boot->run(50ms, {Persistent, Stored});
    pass(10s);
    EXPECT_EQ(addresses, std::vector{Stored});
    EXPECT_TRUE(sent.empty()) << "nothing of the earlier ones is left";
}

} // namespace
