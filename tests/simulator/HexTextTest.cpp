// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/HexText.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;
using namespace std::string_literals;

TEST(HexText, WritesNumbersInAsManyDigitsAsTheirUseAsksFor)
{
    EXPECT_EQ(hexNumber(0xC0A00000, Digits::LowerCase), "c0a00000");
    EXPECT_EQ(hexNumber(0xABC, Digits::UpperCase), "ABC");
    EXPECT_EQ(hexNumber(0, Digits::LowerCase), "0");
    EXPECT_EQ(hexWord(0x1A), "0x0000001A");
    EXPECT_EQ(hexWord(0xFFFFFFFF), "0xFFFFFFFF");
}

TEST(HexText, ReadsAWordInAnyNumberOfDigitsItCanHave)
{
    EXPECT_EQ(parseHexWord("0xa5A50000"), 0xA5A50000);
    EXPECT_EQ(parseHexWord("0x7"), 7u);
    for (const char* const wrong : {"", "0x", "7", "x7", "0X7", "0x-7", "0x7 ", "0xG", "0x7G", "0x123456789"})
        EXPECT_EQ(parseHexWord(wrong), std::nullopt) << wrong;
}

TEST(HexText, ReadsTheBytesThatItWrites)
{
    EXPECT_EQ(hexPairs("\xE9t\x01"), "E9 74 01");
    EXPECT_EQ(hexPairs(""), "");
    EXPECT_EQ(parseHexPairs("E9 74 01"), "\xE9t\x01"s);
    EXPECT_EQ(parseHexPairs("e9"), "\xE9"s);
    for (const char* const wrong :
         {"", " ", "E", "E9 ", " E9", "E974", "E9-74", "E9 7", "E9  74", "E9 00", "0x E9", "-1"})
        EXPECT_EQ(parseHexPairs(wrong), std::nullopt) << '"' << wrong << '"';
}

} // namespace
