// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/RelayedPackets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using sdk::RelayedPackets;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

void add(RelayedPackets& packets, const base::Bytes& bytes)
{
    packets.add(bytes);
}

base::Bytes next(RelayedPackets& packets)
{
    const auto packet = packets.next();
    if (!packet) {
        ADD_FAILURE() << "no packet";
        return {};
    }
    return {packet->begin(), packet->end()};
}

} // namespace

TEST(RelayedPackets, AreTakenApartByTheirLengths)
{
    RelayedPackets packets;
    add(packets, {0, 0, 0, 2, 'a', 'b', 0, 1, 'c'});
    EXPECT_THAT(next(packets), ElementsAre());
    EXPECT_THAT(next(packets), ElementsAre('a', 'b'));
    EXPECT_THAT(next(packets), ElementsAre('c'));
    EXPECT_FALSE(packets.next());
}

TEST(RelayedPackets, MayComeByteByByte)
{
    RelayedPackets packets;
    for (const int byte : {0, 2, int{'a'}}) {
        add(packets, {static_cast<std::uint8_t>(byte)});
        EXPECT_FALSE(packets.next());
    }
    add(packets, {'b'});
    EXPECT_THAT(next(packets), ElementsAre('a', 'b'));
    EXPECT_FALSE(packets.next());
    add(packets, {0});
    add(packets, {1, 'c'});
    EXPECT_THAT(next(packets), ElementsAre('c'));
}

TEST(RelayedPackets, AreAsLongAsTwoBytesCanSay)
{
    RelayedPackets packets;
    add(packets, {0xFF, 0xFF});
    add(packets, base::Bytes(65534));
    EXPECT_FALSE(packets.next());
    add(packets, {0, 0, 0});
    EXPECT_THAT(next(packets), SizeIs(65535));
    EXPECT_THAT(next(packets), ElementsAre());
    EXPECT_FALSE(packets.next());
}

TEST(RelayedPackets, OfWhichTheLastIsCutOffEndWithTheOneBefore)
{
    RelayedPackets packets;
    add(packets, {0, 1, 'a', 0, 3, 'b', 'c'});
    EXPECT_THAT(next(packets), ElementsAre('a'));
    EXPECT_FALSE(packets.next());
    EXPECT_FALSE(packets.next());
}
