// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Addresses.h"

#include <gtest/gtest.h>

using namespace gvcp;

TEST(Ipv4Text, IsFourDecimalOctetsFirstOctetFirst)
{
    EXPECT_EQ(toText(Ipv4{0xC0A8010A}), "192.168.1.10");
    EXPECT_EQ(toText(Ipv4{0}), "0.0.0.0");
    EXPECT_EQ(toText(LimitedBroadcast), "255.255.255.255");
}

TEST(Ipv4Text, IsReadBack)
{
    EXPECT_EQ(parseIpv4("192.168.1.10"), 0xC0A8010Au);
    EXPECT_EQ(parseIpv4("0.0.0.0"), 0u);
    EXPECT_EQ(parseIpv4("255.255.255.255"), LimitedBroadcast);
    EXPECT_EQ(parseIpv4("010.001.000.009"), 0x0A010009u) << "leading zeros are decimal";
}

TEST(Ipv4Text, TakesNoOtherSpelling)
{
    for (const char* text : {"", "1", "1.2.3", "1.2.3.", "1.2.3.4.", "1.2.3.4.5", ".1.2.3", "1..2.3",
                             "1.2.3.256", "1.2.3.-4", "1.2.3.+4", " 1.2.3.4", "1.2.3.4 ", "1.2.3.4/24",
                             "1.2.3.0004", "0x1.2.3.4", "a.b.c.d", "1,2,3,4", "1.2.3.99999999999"})
        EXPECT_EQ(parseIpv4(text), std::nullopt) << text;
}

TEST(Ipv4Mask, IsContiguousWhenOnesAreFollowedByZeros)
{
    for (const Ipv4 mask : {0xFFFFFF00u, 0xFFFFFE00u, 0xFF000000u, 0x80000000u, 0xFFFFFFFCu, 0xFFFFFFFFu, 0u})
        EXPECT_TRUE(isContiguousMask(mask)) << toText(mask);
    for (const Ipv4 mask : {0xFF00FF00u, 0x00FFFFFFu, 0xFFFFFF01u, 0x7F000000u, 1u})
        EXPECT_FALSE(isContiguousMask(mask)) << toText(mask);
}

TEST(Subnet, IsWhatTheMaskLeavesEqual)
{
    EXPECT_TRUE(sameSubnet(0xC0A80105, 0xC0A80214, 0xFFFF0000));
    EXPECT_FALSE(sameSubnet(0xC0A80105, 0xC0A80214, 0xFFFFFF00));
    EXPECT_TRUE(sameSubnet(0x01020304, 0xC0A80214, 0));
}

TEST(MacText, IsUpperCaseWithColons)
{
    EXPECT_EQ(toText(MacAddress{{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}}), "00:1A:2B:3C:4D:5E");
}

TEST(MacText, IsTakenInAnyCaseWithColonsDashesOrNothing)
{
    const MacAddress mac{{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
    for (const char* text :
         {"00:1A:2B:3C:4D:5E", "00:1a:2b:3c:4d:5e", "00-1A-2b-3C-4d-5E", "001A2B3C4D5E", "001a2b3c4d5e"})
        EXPECT_EQ(parseMac(text), mac) << text;
}

TEST(MacText, TakesNoOtherSpelling)
{
    for (const char* text :
         {"", "00:1A:2B:3C:4D", "00:1A:2B:3C:4D:5E:6F", "00:1A:2B:3C:4D:5", "0:1A:2B:3C:4D:5E",
          "00:1A-2B:3C-4D:5E", "00.1A.2B.3C.4D.5E", "001A2B3C4D5", "001A2B3C4D5G", "00:1A:2B:3C:4D:5G",
          "+0:1A:2B:3C:4D:5E", "00:1A:2B:3C:4D: 5", "001A:2B3C:4D5E", " 00:1A:2B:3C:4D:5E"})
        EXPECT_EQ(parseMac(text), std::nullopt) << text;
}
