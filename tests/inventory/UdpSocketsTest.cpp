// SPDX-License-Identifier: Apache-2.0
#include "inventory/UdpSockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using inventory::readUdpSockets;
using inventory::UdpSocket;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace base::literals;

namespace {

std::vector<UdpSocket> read(const std::string& table)
{
    std::istringstream lines(table);
    return readUdpSockets(lines);
}

constexpr const char* Header = "   sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt "
                               "  uid  timeout inode ref pointer drops             \n";

} // namespace

// The tables are a little-endian computer's.

TEST(UdpSockets, AreReadWithAddressPortUserAndInode)
{
    const auto sockets =
        read(std::string(Header) +
             "  733: 0501A8C0:9C40 1401A8C0:0F74 01 00000000:00000000 00:00000000 00000000  1000        0 "
             "48291 2 0000000000000000 0         \n"
             " 2108: 00000000:0044 00000000:0000 07 00000000:00000000 00:00000000 00000000     0        0 "
             "1209 2 0000000000000000 12         \n");
    EXPECT_THAT(sockets,
                ElementsAre(UdpSocket{{"192.168.1.5"_ip, 40000}, {"192.168.1.20"_ip, 3956}, 1000, 48291},
                            UdpSocket{{{}, 68}, {}, 0, 1209}));
    EXPECT_TRUE(sockets[0].isConnected());
    EXPECT_FALSE(sockets[1].isConnected());
}

TEST(UdpSockets, OfTheOtherFamilyCountWhereTheySpeakIpv4)
{
    const std::string rest = " 07 00000000:00000000 00:00000000 00000000     7        0 99 2 0 0\n";
    const std::string nobody = " 00000000000000000000000000000000:0000";
    EXPECT_THAT(read("  1: 00000000000000000000000000000000:9C40" + nobody + rest),
                ElementsAre(UdpSocket{{{}, 40000}, {}, 7, 99}));
    EXPECT_THAT(
        read("  1: 0000000000000000FFFF00000501A8C0:9C40 0000000000000000FFFF00001401A8C0:0F74" + rest),
        ElementsAre(UdpSocket{{"192.168.1.5"_ip, 40000}, {"192.168.1.20"_ip, 3956}, 7, 99}));
    EXPECT_THAT(read("  1: 00000000000000000000000001000000:9C40" + nobody + rest), IsEmpty()) << "::1";
    EXPECT_THAT(read("  1: 000080FE00000000FFFF00000501A8C0:9C40" + nobody + rest), IsEmpty()) << "fe80::";
}

TEST(UdpSockets, ArePassedOverWhereALineIsNone)
{
    const std::string good =
        "  1: 0501A8C0:9C40 00000000:0000 07 00000000:00000000 00:00000000 00000000 1000 0 5 2 0 0";
    EXPECT_EQ(read(good).size(), 1u);
    for (const char* line :
         {"", "\n\n", Header, "  1: 0501A8C0:9C40", "  1: 0501A8C:9C40 00000000:0000 07 0 0 0 1 0 5",
          "  1: 0501A8C0:19C40 00000000:0000 07 0 0 0 1 0 5", "  1: 0501A8C0 00000000:0000 07 0 0 0 1 0 5",
          "  1: 0501A8C0:9C40 00000000:0000 07 0 0 0 -1 0 5",
          "  1: 0501A8C0:9C40 00000000:0000 07 0 0 0 1 0 x",
          "  1: 0501A8C0:9C40 0501A8C0501A8C:0000 07 0 0 0 1 0 5"})
        EXPECT_THAT(read(line), IsEmpty()) << line;
    EXPECT_EQ(read("nonsense\n" + good + "\nnonsense").size(), 1u);
}
