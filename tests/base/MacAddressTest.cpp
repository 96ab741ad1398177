// SPDX-License-Identifier: Apache-2.0
#include "base/MacAddress.h"

#include <gtest/gtest.h>

using base::MacAddress;

TEST(MacAddress, IsUpperCaseWithColons)
{
    EXPECT_EQ((MacAddress{{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}}.toText()), "00:1A:2B:3C:4D:5E");
}

TEST(MacAddress, IsTakenInAnyCaseWithColonsDashesOrNothing)
{
    const MacAddress mac{{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
    for (const char* text :
         {"00:1A:2B:3C:4D:5E", "00:1a:2b:3c:4d:5e", "00-1A-2b-3C-4d-5E", "001A2B3C4D5E", "001a2b3c4d5e"})
        EXPECT_EQ(MacAddress::parse(text), mac) << text;
}

TEST(MacAddress, HasNoOtherSpelling)
{
    for (const char* text :
         {"", "00:1A:2B:3C:4D", "00:1A:2B:3C:4D:5E:6F", "00:1A:2B:3C:4D:5", "0:1A:2B:3C:4D:5E",
          "00:1A-2B:3C-4D:5E", "00.1A.2B.3C.4D.5E", "001A2B3C4D5", "001A2B3C4D5G", "00:1A:2B:3C:4D:5G",
          "+0:1A:2B:3C:4D:5E", "00:1A:2B:3C:4D: 5", "001A:2B3C:4D5E", " 00:1A:2B:3C:4D:5E"})
        EXPECT_EQ(MacAddress::parse(text), std::nullopt) << text;
}

TEST(MacAddress, IsNobodysWhenAllZerosAndAGroupsWhenItsFirstByteIsOdd)
{
    EXPECT_TRUE(MacAddress{}.isUnspecified());
    EXPECT_FALSE(MacAddress::parse("00:00:00:00:00:01")->isUnspecified());
    EXPECT_TRUE(MacAddress::parse("01:00:5E:00:00:01")->isGroup());
    EXPECT_TRUE(MacAddress::parse("FF:FF:FF:FF:FF:FF")->isGroup());
    EXPECT_FALSE(MacAddress::parse("02:00:5E:00:00:01")->isGroup());
}
