// SPDX-License-Identifier: Apache-2.0
#include "save/DottedText.h"

#include <QString>

#include <gtest/gtest.h>
#include <optional>

namespace {

struct Row
{
    const char* text;
    std::optional<long> value;
};

class DottedTextTest : public testing::TestWithParam<Row>
{};

} // namespace

TEST_P(DottedTextTest, IsANumberOf32BitsWithItsSignExtended)
{
    unsigned long value = 0xFEED;
    EXPECT_EQ(DottedToDword(GetParam().text, value), GetParam().value.has_value());
    EXPECT_EQ(static_cast<long>(value), GetParam().value.value_or(0xFEED));
}

INSTANTIATE_TEST_SUITE_P(Texts, DottedTextTest,
                         testing::Values(Row{"0.0.0.0", 0}, Row{"10.1.2.3", 0x0A010203},
                                         Row{"127.255.255.255", 0x7FFFFFFF}, Row{"128.0.0.0", -0x80000000L},
                                         Row{"192.168.1.1", -0x3F57FEFFL}, Row{"255.255.255.255", -1},
                                         Row{"...", 0}, Row{"a.1. 2 .-1", 0x000101FF},
                                         Row{"1.2.3.300", 0x0102042C}, Row{"256.0.0.1", 1},
                                         Row{"99999999999.0.0.1", 1}, Row{"", {}}, Row{"1.2.3", {}},
                                         Row{"1.2.3.4.5", {}}, Row{"1.2.3.4.", {}}, Row{"1,2,3,4", {}}));
