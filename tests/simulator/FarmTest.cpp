// SPDX-License-Identifier: Apache-2.0
#include "simulator/Farm.h"
#include "simulator/config/ReadFarm.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using namespace simulator;
using namespace base::literals;
using namespace std::chrono_literals;

class FarmTest : public testing::Test
{
protected:
    void build(const std::string& cameras)
    {
        farm.emplace(readFarm("{\"cameras\": [" + cameras + "]}"), timers,
                     [this](const Frame& frame) { sent.push_back(frame); });
    }

    void pass(std::chrono::milliseconds time)
    {
        for (; time > 0ms; time -= 1ms)
            timers.advance(timers.now() + 1ms);
    }

    base::Ipv4 addressOf(std::size_t camera) { return farm->stations()[camera]->camera().ip().address; }

    TimerQueue timers{TimerQueue::Clock::time_point{}};
    std::vector<Frame> sent;
    std::optional<Farm> farm;
};

TEST_F(FarmTest, LetsItsCamerasHearEachOthersArp)
{
    build(R"({"mac": "00:1A:2B:00:00:01", "ipConfiguration": "lla", "address": "169.254.33.7",
              "mask": "255.255.0.0", "rebootTime": 10},
             {"mac": "00:1A:2B:00:00:02", "ipConfiguration": "lla", "address": "169.254.33.7",
              "mask": "255.255.0.0"})");
    farm->stations()[0]->reset();
    pass(10ms + 1000ms);
    EXPECT_EQ(addressOf(1), "169.254.33.7"_ip);
    EXPECT_NE(addressOf(0), "169.254.33.7"_ip) << "the address that it prefers is the other one's";
    EXPECT_TRUE(farm->stations()[0]->camera().ip().reaches(addressOf(1)));
}

TEST_F(FarmTest, LetsTwoCamerasHaveOneAddress)
{
    build(R"({"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20"},
             {"mac": "00:1A:2B:00:00:02", "address": "192.168.1.20"})");
    const base::MacAddress first{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
    const base::MacAddress second{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x02}};
    farm->receive(ArpMessage{{}, BroadcastMac, true, "192.168.1.5"_ip, "192.168.1.20"_ip, {}});
    ASSERT_EQ(sent.size(), 2u);
    for (const std::size_t camera : {0u, 1u}) {
        const auto reply = std::get<ArpMessage>(sent[camera]);
        EXPECT_FALSE(reply.isRequest);
        EXPECT_EQ(reply.sourceMac, camera == 0 ? first : second);
        EXPECT_EQ(reply.sender, "192.168.1.20"_ip);
    }

    sent.clear();
    farm->find(second)->announceAddress();
    ASSERT_EQ(sent.size(), 1u);
    const auto announcement = std::get<ArpMessage>(sent[0]);
    EXPECT_TRUE(announcement.isRequest);
    EXPECT_EQ(announcement.sourceMac, second);
    EXPECT_EQ(announcement.destinationMac, BroadcastMac);
    EXPECT_EQ(announcement.sender, "192.168.1.20"_ip);
    EXPECT_EQ(announcement.target, "192.168.1.20"_ip);
    pass(10ms);
    farm->receive(Echo{{}, first, "192.168.1.5"_ip, "192.168.1.20"_ip, true, 1, 1, {}});
    farm->receive(Echo{{}, second, "192.168.1.5"_ip, "192.168.1.20"_ip, true, 1, 2, {}});
    const auto last = [this](std::size_t back) { return std::get<Echo>(sent[sent.size() - back]).sourceMac; };
    EXPECT_EQ(last(2), first) << "neither minds the other";
    EXPECT_EQ(last(1), second);
}

TEST_F(FarmTest, FindsADifferentLinkLocalAddressForEachOf256Cameras)
{
    build(R"({"mac": "00:1A:2B:00:00:01", "ipConfiguration": "lla", "repeat": 256})");
    pass(2000ms);
    std::set<base::Ipv4> addresses;
    for (const auto& station : farm->stations()) {
        ASSERT_EQ(station->phase(), BootSequence::Phase::Running);
        addresses.insert(station->camera().ip().address);
    }
    EXPECT_EQ(addresses.size(), 256u);
}

TEST_F(FarmTest, GivesAFrameToTheCameraItIsForAndABroadcastToAll)
{
    build(R"({"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", "repeat": 3})");
    const base::MacAddress second{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x02}};
    // Each learns from it where the host is.
    for (const base::Ipv4 camera : {"192.168.1.20"_ip, "192.168.1.21"_ip, "192.168.1.22"_ip})
        farm->receive(ArpMessage{{}, BroadcastMac, true, "192.168.1.5"_ip, camera, {}});
    sent.clear();
    farm->receive(Echo{{}, second, "192.168.1.5"_ip, "192.168.1.21"_ip, true, 1, 1, {}});
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(std::get<Echo>(sent[0]).sourceMac, second);
    farm->receive(Echo{{}, {{2, 0, 0, 0, 0, 9}}, "192.168.1.5"_ip, "192.168.1.21"_ip, true, 1, 1, {}});
    EXPECT_EQ(sent.size(), 1u) << "nobody's MAC";

    const base::Bytes discovery{0x42, 0x11, 0, 2, 0, 0, 0, 1};
    farm->receive(
        UdpDatagram{{}, BroadcastMac, "192.168.1.5"_ip, base::LimitedBroadcast, 5000, 3956, discovery});
    EXPECT_EQ(sent.size(), 4u);
}

} // namespace
