// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/UdpFrame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;

using namespace base::literals;

namespace {

/// Before the packet: 14 bytes.
constexpr std::size_t Ethernet = 14;

/// 10.0.0.9:3956 -> 192.168.1.5:40000, "ab", with its right checksums.
const base::Bytes Literal{
    0x02, 0x00, 0x00, 0x00, 0x00, 0x05, 0x02, 0x00, 0x00, 0x00, 0x00, 0x09, 0x08, 0x00, //
    0x45, 0x00, 0x00, 0x1E, 0x00, 0x00, 0x40, 0x00, 0x40, 0x11, 0x6F, 0x19, 0x0A, 0x00, 0x00,
    0x09, 0xC0, 0xA8, 0x01, 0x05, 0x0F, 0x74, 0x9C, 0x40, 0x00, 0x0A, 0x27, 0x0D, 'a',  'b',
};

/// One byte of the packet is another.
base::Bytes changed(std::size_t offset, std::uint8_t value)
{
    base::Bytes frame = Literal;
    frame[Ethernet + offset] = value;
    return frame;
}

/// "a" instead of "ab".
base::Bytes shortened()
{
    base::Bytes frame = Literal;
    frame[Ethernet + 3] = 0x1D;
    frame[Ethernet + 25] = 0x09;
    frame[Ethernet + 26] = 0x27;
    frame[Ethernet + 27] = 0x71;
    return frame;
}

/// Wrong lengths are to be noticed by themselves, and not by the checksum that they spoil.
base::Bytes withoutChecksum(base::Bytes frame)
{
    frame[Ethernet + 26] = frame[Ethernet + 27] = 0;
    return frame;
}

} // namespace

TEST(UdpFrame, IsReadFromItsBytes)
{
    const auto frame = parseUdpFrame(Literal);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->source, "10.0.0.9"_ip);
    EXPECT_EQ(frame->sourcePort, 3956);
    EXPECT_EQ(frame->destinationPort, 40000);
    EXPECT_THAT(frame->payload, testing::ElementsAre('a', 'b'));
}

TEST(UdpFrame, IgnoresEthernetsPadding)
{
    base::Bytes frame = Literal;
    frame.resize(60, 0xEE);
    ASSERT_TRUE(parseUdpFrame(frame));
    EXPECT_EQ(parseUdpFrame(frame)->payload.size(), 2u);
}

TEST(UdpFrame, SkipsIpOptions)
{
    base::Bytes frame = Literal;
    frame.insert(frame.begin() + Ethernet + 20, {1, 1, 1, 0});
    frame[Ethernet] = 0x46;
    frame[Ethernet + 3] = 0x22;
    const auto udp = parseUdpFrame(frame);
    ASSERT_TRUE(udp);
    EXPECT_THAT(udp->payload, testing::ElementsAre('a', 'b'));
}

TEST(UdpFrame, WithAWrongChecksumIsNone)
{
    EXPECT_FALSE(parseUdpFrame(changed(29, 'c')));
    EXPECT_FALSE(parseUdpFrame(changed(26, 0x28)));
}

TEST(UdpFrame, WithoutAChecksumIsTaken)
{
    EXPECT_TRUE(parseUdpFrame(withoutChecksum(changed(29, 'c'))));
}

TEST(UdpFrame, WhoseChecksumTheKernelLeftToTheAdapterIsTaken)
{
    // The sum of the addresses, the protocol and the length alone, as the kernel prepares it:
    // 0A00 + 0009 + C0A8 + 0105 + 0011 + 000A.
    base::Bytes frame = changed(26, 0xCB);
    frame[Ethernet + 27] = 0xD1;
    EXPECT_TRUE(parseUdpFrame(frame));
    frame[Ethernet + 27] = 0xD2;
    EXPECT_FALSE(parseUdpFrame(frame));
}

TEST(UdpFrame, WithAnOddLengthHasItsChecksumTooVerified)
{
    base::Bytes frame = shortened();
    const auto udp = parseUdpFrame(frame);
    ASSERT_TRUE(udp);
    EXPECT_THAT(udp->payload, testing::ElementsAre('a'));
    frame[Ethernet + 28] = 'b';
    EXPECT_FALSE(parseUdpFrame(frame));
}

TEST(UdpFrame, IsNoneOutOfAnythingElse)
{
    const auto isNone = [](std::size_t offset, std::uint8_t value) {
        return !parseUdpFrame(withoutChecksum(changed(offset, value)));
    };
    EXPECT_TRUE(isNone(0, 0x65)) << "IPv6";
    EXPECT_TRUE(isNone(0, 0x44)) << "a header of 16 bytes";
    EXPECT_TRUE(isNone(0, 0x4F)) << "a header longer than the packet";
    EXPECT_TRUE(isNone(9, 6)) << "TCP";
    EXPECT_TRUE(isNone(6, 0x20)) << "a first fragment";
    EXPECT_TRUE(isNone(7, 0x01)) << "a later fragment";
    EXPECT_TRUE(isNone(3, 0x1F)) << "longer than what is there";
    EXPECT_TRUE(isNone(3, 0x1B)) << "no room for UDP";
    EXPECT_TRUE(isNone(25, 0x0B)) << "a datagram longer than its packet";
    EXPECT_TRUE(isNone(25, 0x07)) << "a datagram shorter than its header";

    base::Bytes other = withoutChecksum(Literal);
    EXPECT_TRUE(parseUdpFrame(other));
    other[13] = 0x06;
    EXPECT_FALSE(parseUdpFrame(other)) << "another EtherType";
    const base::Bytes whole = withoutChecksum(Literal);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(parseUdpFrame(base::ByteView(whole).first(size))) << size;
}
