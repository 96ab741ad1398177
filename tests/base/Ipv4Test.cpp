// SPDX-License-Identifier: Apache-2.0
#include "base/IpSettings.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace base;

TEST(Ipv4, IsFourDecimalOctetsFirstOctetFirst)
{
    EXPECT_EQ(Ipv4{0xC0A8010A}.toText(), "192.168.1.10");
    EXPECT_EQ(Ipv4{}.toText(), "0.0.0.0");
    EXPECT_EQ(LimitedBroadcast.toText(), "255.255.255.255");
}

TEST(Ipv4, IsReadBackFromItsText)
{
    EXPECT_EQ(Ipv4::parse("192.168.1.10"), Ipv4{0xC0A8010A});
    EXPECT_EQ(Ipv4::parse("0.0.0.0"), Ipv4{});
    EXPECT_EQ(Ipv4::parse("255.255.255.255"), LimitedBroadcast);
    EXPECT_EQ(Ipv4::parse("010.001.000.009"), "10.1.0.9"_ip) << "leading zeros are decimal";
}

TEST(Ipv4, HasNoOtherSpelling)
{
    for (const char* text : {"", "1", "1.2.3", "1.2.3.", "1.2.3.4.", "1.2.3.4.5", ".1.2.3", "1..2.3",
                             "1.2.3.256", "1.2.3.-4", "1.2.3.+4", " 1.2.3.4", "1.2.3.4 ", "1.2.3.4/24",
                             "1.2.3.0004", "0x1.2.3.4", "a.b.c.d", "1,2,3,4", "1.2.3.99999999999"})
        EXPECT_EQ(Ipv4::parse(text), std::nullopt) << text;
}

TEST(Ipv4, IsNoIntegerAndNoneBecomesOne)
{
    EXPECT_FALSE((std::is_convertible_v<std::uint32_t, Ipv4>));
    EXPECT_FALSE((std::is_convertible_v<Ipv4, std::uint32_t>));
    EXPECT_FALSE((std::is_convertible_v<Ipv4, bool>));
}

TEST(Ipv4, IsOrderedAsANumberNotAsText)
{
    EXPECT_LT("10.0.0.9"_ip, "10.0.0.10"_ip);
    EXPECT_LT("9.255.255.255"_ip, "10.0.0.0"_ip);
    EXPECT_GT("192.168.0.1"_ip, "127.255.255.255"_ip);
}

TEST(Ipv4, IsAMaskWhenOnesAreFollowedByZeros)
{
    for (const Ipv4 mask : {"255.255.255.0"_ip, "255.255.254.0"_ip, "255.0.0.0"_ip, "128.0.0.0"_ip,
                            "255.255.255.252"_ip, "255.255.255.255"_ip, "0.0.0.0"_ip})
        EXPECT_TRUE(mask.isMask()) << mask;
    for (const Ipv4 mask :
         {"255.0.255.0"_ip, "0.255.255.255"_ip, "255.255.255.1"_ip, "127.0.0.0"_ip, "0.0.0.1"_ip})
        EXPECT_FALSE(mask.isMask()) << mask;
}

TEST(Ipv4, IsInASubnetByWhatTheMaskLeavesEqual)
{
    EXPECT_TRUE("192.168.1.5"_ip.isInSubnetOf("192.168.2.20"_ip, "255.255.0.0"_ip));
    EXPECT_FALSE("192.168.1.5"_ip.isInSubnetOf("192.168.2.20"_ip, "255.255.255.0"_ip));
    EXPECT_TRUE("1.2.3.4"_ip.isInSubnetOf("192.168.2.20"_ip, "0.0.0.0"_ip));
}

TEST(Ipv4, CanBeAHostsOutsideTheRangesThatNoSingleHostHas)
{
    for (const Ipv4 host : {"1.0.0.0"_ip, "126.255.255.255"_ip, "128.0.0.0"_ip, "223.255.255.255"_ip})
        EXPECT_TRUE(host.canBeHost()) << host;
    for (const Ipv4 other : {"0.0.0.0"_ip, "0.255.255.255"_ip, "127.0.0.0"_ip, "127.255.255.255"_ip,
                             "224.0.0.0"_ip, "240.0.0.1"_ip, LimitedBroadcast})
        EXPECT_FALSE(other.canBeHost()) << other;
}

TEST(Ipv4, IsLinkLocalInOneRangeAlone)
{
    for (const Ipv4 address : {"169.254.0.0"_ip, "169.254.255.255"_ip})
        EXPECT_TRUE(address.isLinkLocal()) << address;
    for (const Ipv4 address : {"169.253.255.255"_ip, "169.255.0.0"_ip, "168.254.0.1"_ip})
        EXPECT_FALSE(address.isLinkLocal()) << address;
}

TEST(Ipv4, KnowsTheFirstAndTheLastAddressOfItsSubnet)
{
    EXPECT_EQ("192.168.1.20"_ip.networkAddress("255.255.254.0"_ip), "192.168.0.0"_ip);
    EXPECT_EQ("192.168.1.20"_ip.broadcastAddress("255.255.254.0"_ip), "192.168.1.255"_ip);
    EXPECT_EQ("192.168.1.20"_ip.broadcastAddress("255.255.255.255"_ip), "192.168.1.20"_ip);
    EXPECT_EQ("192.168.1.255"_ip.plus(1), "192.168.2.0"_ip);
}

TEST(IpSettings, ReachWhatIsInTheirSubnet)
{
    const IpSettings settings{"192.168.1.20"_ip, "255.255.255.0"_ip, {}};
    EXPECT_TRUE(settings.reaches("192.168.1.254"_ip));
    EXPECT_FALSE(settings.reaches("192.168.2.20"_ip));
    EXPECT_EQ(settings.broadcastAddress(), "192.168.1.255"_ip);
}
