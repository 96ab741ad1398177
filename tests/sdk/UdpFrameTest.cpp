// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/UdpFrame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;

using namespace base::literals;

namespace {

/// 10.0.0.9:3956 -> 192.168.1.5:40000, "ab", with its right checksums.
const base::Bytes Literal{
    0x45, 0x00, 0x00, 0x1E, 0x00, 0x00, 0x40, 0x00, 0x40, 0x11, 0x6F, 0x19, 0x0A, 0x00, 0x00,
    0x09, 0xC0, 0xA8, 0x01, 0x05, 0x0F, 0x74, 0x9C, 0x40, 0x00, 0x0A, 0x27, 0x0D, 'a',  'b',
};

base::Bytes changed(std::size_t offset, std::uint8_t value)
{
    base::Bytes packet = Literal;
    packet[offset] = value;
    return packet;
}

} // namespace

TEST(UdpFrame, IsReadFromItsBytes)
{
    const auto frame = parseUdpFrame(Literal, UdpChecksum::Verify);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->source, "10.0.0.9"_ip);
    EXPECT_EQ(frame->sourcePort, 3956);
    EXPECT_EQ(frame->destinationPort, 40000);
    EXPECT_THAT(frame->payload, testing::ElementsAre('a', 'b'));
}

TEST(UdpFrame, IgnoresEthernetsPadding)
{
    base::Bytes packet = Literal;
    packet.resize(46, 0xEE);
    EXPECT_EQ(parseUdpFrame(packet, UdpChecksum::Verify)->payload.size(), 2u);
}

TEST(UdpFrame, SkipsIpOptions)
{
    base::Bytes packet = Literal;
    packet.insert(packet.begin() + 20, {1, 1, 1, 0});
    packet[0] = 0x46;
    packet[3] = 0x22;
    const auto frame = parseUdpFrame(packet, UdpChecksum::Verify);
    ASSERT_TRUE(frame);
    EXPECT_THAT(frame->payload, testing::ElementsAre('a', 'b'));
}

TEST(UdpFrame, WithAWrongChecksumIsNone)
{
    EXPECT_FALSE(parseUdpFrame(changed(29, 'c'), UdpChecksum::Verify));
    EXPECT_TRUE(parseUdpFrame(changed(29, 'c'), UdpChecksum::Ignore)) << "not computed yet";
}

TEST(UdpFrame, WithoutAChecksumIsTaken)
{
    base::Bytes packet = Literal;
    packet[26] = packet[27] = 0;
    EXPECT_TRUE(parseUdpFrame(packet, UdpChecksum::Verify));
}

TEST(UdpFrame, WithAnOddLengthHasItsChecksumTooVerified)
{
    base::Bytes packet = Literal;
    packet[3] = 0x1D;
    packet[25] = 0x09;
    packet[26] = 0x27;
    packet[27] = 0x71;
    const auto frame = parseUdpFrame(packet, UdpChecksum::Verify);
    ASSERT_TRUE(frame);
    EXPECT_THAT(frame->payload, testing::ElementsAre('a'));
    packet[28] = 'b';
    EXPECT_FALSE(parseUdpFrame(packet, UdpChecksum::Verify));
}

TEST(UdpFrame, IsNoneOutOfAnythingElse)
{
    EXPECT_FALSE(parseUdpFrame(changed(0, 0x65), UdpChecksum::Ignore)) << "IPv6";
    EXPECT_FALSE(parseUdpFrame(changed(0, 0x44), UdpChecksum::Ignore)) << "a header of 16 bytes";
    EXPECT_FALSE(parseUdpFrame(changed(0, 0x4F), UdpChecksum::Ignore)) << "a header longer than the packet";
    EXPECT_FALSE(parseUdpFrame(changed(9, 6), UdpChecksum::Ignore)) << "TCP";
    EXPECT_FALSE(parseUdpFrame(changed(6, 0x20), UdpChecksum::Ignore)) << "a first fragment";
    EXPECT_FALSE(parseUdpFrame(changed(7, 0x01), UdpChecksum::Ignore)) << "a later fragment";
    EXPECT_FALSE(parseUdpFrame(changed(3, 0x1F), UdpChecksum::Ignore)) << "longer than what is there";
    EXPECT_FALSE(parseUdpFrame(changed(3, 0x1B), UdpChecksum::Ignore)) << "no room for UDP";
    EXPECT_FALSE(parseUdpFrame(changed(25, 0x0B), UdpChecksum::Ignore))
        << "a datagram longer than its packet";
    EXPECT_FALSE(parseUdpFrame(changed(25, 0x07), UdpChecksum::Ignore))
        << "a datagram shorter than its header";
    for (std::size_t size = 0; size < Literal.size(); ++size)
        EXPECT_FALSE(parseUdpFrame(base::ByteView(Literal).first(size), UdpChecksum::Ignore)) << size;
}
