// SPDX-License-Identifier: Apache-2.0
#include "simulator/Farm.h"
#include "simulator/config/ReadFarm.h"
#include "tests/simulator/Hex.h"

#include <gtest/gtest.h>

// Machines beside the cameras that are none, as bytes on the wire.
namespace {

using namespace simulator;
using namespace base::literals;
using namespace std::chrono_literals;
using base::Bytes;

constexpr base::MacAddress HostMac{{0x02, 0, 0, 0, 0, 0x05}};
constexpr base::MacAddress NeighbourMac{{0x02, 0xA0, 0, 0, 0, 0x01}};
constexpr base::MacAddress CameraMac{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};

class NeighbourTest : public testing::Test
{
protected:
    void build(const std::string& neighbour, const std::string& cameras = {})
    {
        farm.emplace(readFarm(R"({"cameras": [)" + cameras +
                              R"(], "neighbours": [{"mac": "02:A0:00:00:00:01", )" + neighbour + "}]}"),
                     timers, [this](const Frame& frame) { keep(frame); });
    }

    void keep(const Frame& frame)
    {
        constexpr std::size_t ArpSize = 14 + 28; // What follows may be Ethernet's padding.
        sent.push_back(bytesOf(frame));
        if (std::holds_alternative<ArpMessage>(frame))
            sent.back().resize(ArpSize);
    }

    void pass(std::chrono::milliseconds time)
    {
        for (; time > 0ms; time -= 1ms)
            timers.advance(timers.now() + 1ms);
    }

    void askByArp(base::Ipv4 target, const base::MacAddress& to = BroadcastMac)
    {
        farm->receive(ArpMessage{HostMac, to, true, "192.168.1.5"_ip, target, {}});
    }

    TimerQueue timers{TimerQueue::Clock::time_point{}};
    std::vector<Bytes> sent;
    std::optional<Farm> farm;
};

const std::string SilentAt30 = R"("address": "192.168.1.30")";
const std::string ReplyOf30 = "020000000005 02A000000001 0806 0001 0800 06 04 0002"
                              "02A000000001 C0A8011E 020000000005 C0A80105";

TEST_F(NeighbourTest, TellsWhoAsksByArpThatItHasItsAddress)
{
    build(SilentAt30);
    pass(10000ms);
    EXPECT_TRUE(sent.empty()) << "until it is asked";
    askByArp("192.168.1.31"_ip);
    EXPECT_TRUE(sent.empty()) << "for another's address";
    askByArp("192.168.1.30"_ip);
    askByArp("192.168.1.30"_ip, NeighbourMac);
    EXPECT_EQ(sent, (std::vector<Bytes>{hex(ReplyOf30), hex(ReplyOf30)}));
    sent.clear();
    farm->receive(
        ArpMessage{HostMac, NeighbourMac, false, "192.168.1.5"_ip, "192.168.1.30"_ip, NeighbourMac});
    askByArp("192.168.1.30"_ip, HostMac);
    EXPECT_TRUE(sent.empty()) << "a reply, and what is meant for another";
}

TEST_F(NeighbourTest, AnswersNoCommandAndNoPing)
{
    build(SilentAt30);
    const base::Ipv4 host = "192.168.1.5"_ip;
    const base::Ipv4 own = "192.168.1.30"_ip;
    for (const base::MacAddress& mac : {BroadcastMac, NeighbourMac})
        for (const base::Ipv4 to : {own, base::LimitedBroadcast})
            farm->receive(UdpDatagram{HostMac, mac, host, to, 5000, 3956, hex("42 11 0002 0000 0001")});
    farm->receive(
        UdpDatagram{HostMac, NeighbourMac, host, own, 5000, 3956, hex("42 01 0080 0004 0001 00000A00")});
    farm->receive(Echo{HostMac, NeighbourMac, host, own, true, 1, 1, {}});
    pass(3000ms);
    EXPECT_TRUE(sent.empty());
}

TEST_F(NeighbourTest, LooksForADhcpServerAgainAndAgainAndTakesNoOffer)
{
    build(R"("asks": "dhcp", "every": 500)");
    EXPECT_TRUE(sent.empty()) << "not before the wire is there";
    pass(1ms);
    ASSERT_EQ(sent.size(), 1u);
    const Bytes& first = sent[0];
    ASSERT_GE(first.size(), 14u + 20 + 8 + 240 + 4);
    const auto part = [&first](std::size_t from, std::size_t count) {
        const auto begin = first.begin() + static_cast<long>(from);
        return Bytes(begin, begin + static_cast<long>(count));
    };
    EXPECT_EQ(part(0, 14), hex("FFFFFFFFFFFF 02A000000001 0800"));
    EXPECT_EQ(part(26, 12), hex("00000000 FFFFFFFF 0044 0043")) << "from no address, port 68 to port 67";
    EXPECT_EQ(part(42, 3), hex("01 01 06")) << "a client's message, of Ethernet";
    EXPECT_EQ(part(70, 6), hex("02A000000001"));
    EXPECT_EQ(part(278, 7), hex("63825363 35 01 01")) << "DISCOVER";

    Bytes offer = part(42, 240);
    offer[0] = 2;
    for (std::size_t i = 0; i < 4; ++i)
        offer[16 + i] = hex("C0A80164")[i];
    const Bytes options = hex("35 01 02 36 04 C0A80101 FF");
    offer.insert(offer.end(), options.begin(), options.end());
    farm->receive(UdpDatagram{HostMac, NeighbourMac, "192.168.1.1"_ip, "192.168.1.100"_ip, 67, 68, offer});
    EXPECT_EQ(sent.size(), 1u);
    askByArp("192.168.1.100"_ip);
    EXPECT_EQ(sent.size(), 1u);
    pass(1999ms);
    ASSERT_EQ(sent.size(), 4u) << "500, 1000 and 1500 ms later";
    pass(1ms);
    ASSERT_EQ(sent.size(), 5u);
    const auto transactionOf = [](const Bytes& frame) { return base::readU32(frame, 46); };
    EXPECT_NE(transactionOf(sent[1]), transactionOf(sent[0]));
}

TEST_F(NeighbourTest, ProbesForAnAddressAgainAndAgainAndDoesNotTakeIt)
{
    build(R"("asks": "arp", "address": "192.168.1.30", "every": 500)");
    pass(501ms);
    const Bytes probe = hex("FFFFFFFFFFFF 02A000000001 0806 0001 0800 06 04 0001"
                            "02A000000001 00000000 000000000000 C0A8011E");
    EXPECT_EQ(sent, (std::vector<Bytes>{probe, probe}));
    askByArp("192.168.1.30"_ip);
    EXPECT_EQ(sent.size(), 2u);
}

TEST_F(NeighbourTest, AnnouncesItsAddressAgainAndAgain)
{
    build(R"("asks": "announce", "address": "192.168.1.30", "every": 500)");
    pass(501ms);
    const Bytes announcement = hex("FFFFFFFFFFFF 02A000000001 0806 0001 0800 06 04 0001"
                                   "02A000000001 C0A8011E 000000000000 C0A8011E");
    EXPECT_EQ(sent, (std::vector<Bytes>{announcement, announcement}));
    askByArp("192.168.1.30"_ip);
    ASSERT_EQ(sent.size(), 3u);
    EXPECT_EQ(sent[2], hex(ReplyOf30));
}

TEST_F(NeighbourTest, MayHaveACamerasAddress)
{
    build(SilentAt30, R"({"mac": "00:1A:2B:00:00:01", "address": "192.168.1.30"})");
    askByArp("192.168.1.30"_ip);
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0], hex(ReplyOf30));
    EXPECT_EQ(sent[1], hex("020000000005 001A2B000001 0806 0001 0800 06 04 0002"
                           "001A2B000001 C0A8011E 020000000005 C0A80105"));
    farm->receive(Echo{HostMac, CameraMac, "192.168.1.5"_ip, "192.168.1.30"_ip, true, 1, 1, {}});
    EXPECT_EQ(sent.size(), 3u) << "the camera answers, whose MAC it is";
}

TEST_F(NeighbourTest, KeepsACameraFromClaimingItsLinkLocalAddress)
{
    build(R"("address": "169.254.33.7")",
          R"({"mac": "00:1A:2B:00:00:01", "ipConfiguration": "lla", "address": "169.254.33.7",
              "mask": "255.255.0.0", "rebootTime": 10})");
    farm->stations()[0]->reset();
    pass(2000ms);
    const base::Ipv4 address = farm->stations()[0]->camera().ip().address;
    EXPECT_TRUE(address.isLinkLocal());
    EXPECT_NE(address, "169.254.33.7"_ip);
}

} // namespace
