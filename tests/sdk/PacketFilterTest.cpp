// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/PacketFilter.h"

#include "base/Bytes.h"
#include "base/FileDescriptor.h"

#include <gtest/gtest.h>

#include <sys/socket.h>

namespace {

constexpr std::uint16_t LocalPort = 40000;

/// 10.0.0.9:3956 -> 192.168.1.5:40000, "ab".
const base::Bytes Literal{
    0x45, 0x00, 0x00, 0x1E, 0x00, 0x00, 0x40, 0x00, 0x40, 0x11, 0x6F, 0x19, 0x0A, 0x00, 0x00,
    0x09, 0xC0, 0xA8, 0x01, 0x05, 0x0F, 0x74, 0x9C, 0x40, 0x00, 0x0A, 0x27, 0x0D, 'a',  'b',
};

base::Bytes changed(std::size_t offset, std::uint8_t value)
{
    base::Bytes bytes = Literal;
    bytes.at(offset) = value;
    return bytes;
}

/// The kernel filters what comes through a pair of local sockets, too; the packet is then the whole message.
bool passes(const base::Bytes& packet)
{
    int pair[2]{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0, pair), 0);
    const base::FileDescriptor sender(pair[0]);
    const base::FileDescriptor receiver(pair[1]);
    auto code = sdk::filterFor(LocalPort);
    const sock_fprog filter{static_cast<unsigned short>(code.size()), code.data()};
    EXPECT_EQ(setsockopt(receiver.get(), SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter), 0);
    send(sender.get(), packet.data(), packet.size(), 0);
    base::Bytes received(100);
    const ssize_t size = recv(receiver.get(), received.data(), received.size(), 0);
    EXPECT_TRUE(size < 0 || static_cast<std::size_t>(size) == packet.size()) << "it passes in whole";
    return size >= 0;
}

} // namespace

TEST(PacketFilter, PassesWhatACameraSendsToThePort)
{
    EXPECT_TRUE(passes(Literal));
}

TEST(PacketFilter, FindsThePortsBehindALongerHeader)
{
    base::Bytes packet = changed(0, 0x46);
    packet.insert(packet.begin() + 20, {0x0F, 0x74, 0x9C, 0x40});
    EXPECT_TRUE(passes(packet));
    packet[24] = 0;
    EXPECT_FALSE(passes(packet)) << "the option looked like the ports";
}

TEST(PacketFilter, PassesNothingElse)
{
    EXPECT_FALSE(passes(changed(9, 6))) << "TCP";
    EXPECT_FALSE(passes(changed(6, 0x20))) << "a first fragment";
    EXPECT_FALSE(passes(changed(7, 0x01))) << "a later fragment";
    EXPECT_FALSE(passes(changed(21, 0x75))) << "from another port";
    EXPECT_FALSE(passes(changed(23, 0x41))) << "to another port";
    EXPECT_FALSE(passes({Literal.begin(), Literal.begin() + 23})) << "cut off";
}

TEST(PacketFilter, IsNotConcernedWithTheFlagThatForbidsFragments)
{
    EXPECT_TRUE(passes(changed(6, 0x00)));
}
