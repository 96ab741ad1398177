// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/DhcpClient.h"

#include "tests/simulator/Hex.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using namespace simulator;
using base::IpSettings;
using namespace base::literals;
using namespace std::chrono_literals;
using base::Bytes;

constexpr base::MacAddress CameraMac{{0x00, 0x1A, 0x2B, 0x00, 0x00, 0x01}};
constexpr base::MacAddress ServerMac{{0x02, 0, 0, 0, 0, 0x01}};

const std::string MagicCookie = "63825363";
const std::string Offer = "35 01 02 36 04 C0A80101";
const std::string Acknowledge =
    "35 01 05 36 04 C0A80101 01 04 FFFFFF00 03 08 C0A80101 C0A80102 33 04 00000E10";
const std::string Refusal = "35 01 06 36 04 C0A80101";

class DhcpClientTest : public testing::Test
{
protected:
    void start()
    {
        client.start(4000ms, [this](const std::optional<IpSettings>& result) {
            ++finished;
            lease = result;
        });
        begin();
    }

    /// Passes the random wait at the beginning.
    void begin()
    {
        for (const std::size_t before = sent.size(); sent.size() == before && timers.next();)
            timers.advance(*timers.next());
    }

    const UdpDatagram& last() const { return std::get<UdpDatagram>(sent.back()); }
    /// The transaction id of the client's last message, as hexadecimal digits.
    Bytes transaction() const { return {last().payload.begin() + 4, last().payload.begin() + 8}; }

    /// What the message says after its fixed part: "35 01 01" at the front is DISCOVER.
    static bool hasOption(const Bytes& payload, const std::string& option)
    {
        const Bytes wanted = hex(option);
        for (std::size_t at = 240; at < payload.size() && payload[at] != 0xFF; at += 2u + payload[at + 1])
            if (payload.size() - at >= wanted.size() &&
                std::equal(wanted.begin(), wanted.end(), payload.begin() + static_cast<long>(at)))
                return true;
        return false;
    }

    UdpDatagram reply(const std::string& options, base::Ipv4 address = "192.168.1.100"_ip,
                      const base::MacAddress& mac = CameraMac) const
    {
        Bytes payload(240);
        const auto put = [&payload](std::size_t at, const Bytes& bytes) {
            std::copy(bytes.begin(), bytes.end(), payload.begin() + static_cast<long>(at));
        };
        put(0, hex("02 01 06 00"));
        put(4, transaction());
        base::writeIpv4(payload, 16, address);
        put(28, Bytes(mac.bytes.begin(), mac.bytes.end()));
        put(236, hex(MagicCookie));
        const Bytes tail = hex(options + "FF");
        payload.insert(payload.end(), tail.begin(), tail.end());
        return {ServerMac, CameraMac, "192.168.1.1"_ip, address, 67, 68, payload};
    }

    void pass(std::chrono::milliseconds time) { timers.advance(timers.now() + time); }

    TimerQueue timers{TimerQueue::Clock::time_point{}};
    std::vector<Frame> sent;
    std::mt19937 random{1};
    DhcpClient client{CameraMac, timers, [this](const Frame& frame) { sent.push_back(frame); }, random};
    int finished = 0;
    std::optional<IpSettings> lease;
};

TEST_F(DhcpClientTest, BeginsAtATimeOfItsOwn)
{
    std::set<TimerQueue::Clock::duration> waits;
    for (int i = 0; i < 100; ++i) {
        const auto started = timers.now();
        start();
        waits.insert(timers.now() - started);
    }
    EXPECT_GT(waits.size(), 50u);
}

TEST_F(DhcpClientTest, AsksFromNoAddressByBroadcast)
{
    start();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(last().sourceMac, CameraMac);
    EXPECT_EQ(last().destinationMac, BroadcastMac);
    EXPECT_EQ(last().source, base::Ipv4());
    EXPECT_EQ(last().destination, "255.255.255.255"_ip);
    EXPECT_EQ(last().sourcePort, 68);
    EXPECT_EQ(last().destinationPort, 67);
    const Bytes& payload = last().payload;
    ASSERT_GE(payload.size(), 244u);
    EXPECT_EQ(Bytes(payload.begin(), payload.begin() + 4), hex("01 01 06 00"));
    EXPECT_EQ(Bytes(payload.begin() + 28, payload.begin() + 34), hex("001A2B000001"));
    EXPECT_EQ(Bytes(payload.begin() + 236, payload.begin() + 240), hex(MagicCookie));
    EXPECT_TRUE(hasOption(payload, "35 01 01")) << "DISCOVER";
}

TEST_F(DhcpClientTest, RequestsWhatItIsOfferedAndTakesWhatIsAcknowledged)
{
    start();
    const Bytes begun = transaction();
    client.receive(reply(Offer));
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_TRUE(hasOption(last().payload, "35 01 03")) << "REQUEST";
    EXPECT_TRUE(hasOption(last().payload, "32 04 C0A80164"));
    EXPECT_TRUE(hasOption(last().payload, "36 04 C0A80101"));
    EXPECT_EQ(transaction(), begun);
    EXPECT_EQ(finished, 0);

    client.receive(reply(Acknowledge));
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(lease, (IpSettings{"192.168.1.100"_ip, "255.255.255.0"_ip, "192.168.1.1"_ip}));
    client.receive(reply(Acknowledge));
    pass(60s);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(sent.size(), 2u);
}

TEST_F(DhcpClientTest, DoesWithoutAMaskOrARouter)
{
    start();
    client.receive(reply(Offer));
    client.receive(reply("35 01 05 36 04 C0A80101"));
    EXPECT_EQ(lease, (IpSettings{"192.168.1.100"_ip, "255.255.255.0"_ip, {}}));
}

TEST_F(DhcpClientTest, TriesFourTimesAndThenGivesUp)
{
    const auto started = timers.now();
    start();
    const auto begun = timers.now();
    EXPECT_LE(begun - started, 250ms);
    std::vector<std::chrono::milliseconds> times;
    while (finished == 0) {
        const std::size_t before = sent.size();
        pass(1ms);
        if (sent.size() > before)
            times.push_back(std::chrono::duration_cast<std::chrono::milliseconds>(timers.now() - begun));
    }
    EXPECT_EQ(timers.now() - started, 4000ms);
    EXPECT_EQ(times, (std::vector{500ms, 1500ms, 3500ms})) << "after the first one";
    EXPECT_FALSE(lease);
}

TEST_F(DhcpClientTest, RepeatsALostRequest)
{
    start();
    client.receive(reply(Offer));
    pass(500ms);
    ASSERT_EQ(sent.size(), 3u);
    EXPECT_TRUE(hasOption(last().payload, "35 01 03"));
    client.receive(reply(Acknowledge));
    EXPECT_TRUE(lease);
}

TEST_F(DhcpClientTest, BeginsAgainWhenItsRequestIsRefused)
{
    start();
    client.receive(reply(Offer));
    client.receive(reply(Refusal));
    EXPECT_EQ(finished, 0);
    pass(500ms);
    EXPECT_TRUE(hasOption(last().payload, "35 01 01"));
    client.receive(reply(Offer));
    client.receive(reply(Acknowledge));
    EXPECT_TRUE(lease);
}

TEST_F(DhcpClientTest, IgnoresWhatIsNoAnswerToIt)
{
    start();
    client.receive(reply(Acknowledge)); // nothing was requested yet
    client.receive(reply(Offer, base::Ipv4()));
    client.receive(reply(Offer, "224.0.0.1"_ip)); // multicast
    client.receive(reply(Offer, "127.0.0.1"_ip));
    client.receive(reply(Offer, "192.168.1.100"_ip, ServerMac));
    client.receive(reply("35 01 02"));                               // from no server
    client.receive(reply("36 04 C0A80101"));                         // of no kind
    client.receive(reply("35 01 02 36 04 C0A80101 01 04 FF00FF00")); // no mask
    client.receive(reply("35 01 02 36 40 C0A80101"));                // an option past the end
    UdpDatagram otherTransaction = reply(Offer);
    otherTransaction.payload[4] ^= 0x80;
    client.receive(otherTransaction);
    UdpDatagram request = reply(Offer);
    request.payload[0] = 1;
    client.receive(request);
    EXPECT_EQ(sent.size(), 1u);
    EXPECT_EQ(finished, 0);

    client.receive(reply(Offer));
    client.receive(reply("35 01 05 36 04 C0A80109")); // another server's
    EXPECT_EQ(finished, 0);
    EXPECT_EQ(sent.size(), 2u);
}

TEST_F(DhcpClientTest, SurvivesMangledMessages)
{
    start();
    std::mt19937 mangler(1);
    for (int i = 0; i < 20000; ++i) {
        UdpDatagram datagram = reply(i % 2 == 0 ? Offer : Acknowledge);
        for (auto changes = 1 + mangler() % 3; changes > 0; --changes)
            datagram.payload[8 + mangler() % (datagram.payload.size() - 8)] =
                static_cast<std::uint8_t>(mangler());
        if (mangler() % 4 == 0)
            datagram.payload.resize(mangler() % datagram.payload.size());
        client.receive(datagram);
        if (finished > 0) {
            finished = 0;
            ASSERT_NE(lease->address.firstOctet() >> 4, 0xE);
            start();
        }
    }
}

TEST_F(DhcpClientTest, SaysNothingMoreWhenItIsStopped)
{
    start();
    client.stop();
    client.receive(reply(Offer));
    pass(60s);
    EXPECT_EQ(sent.size(), 1u);
    EXPECT_EQ(finished, 0);
}

} // namespace
