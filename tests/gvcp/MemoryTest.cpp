// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace base;
using namespace gvcp;
using testing::ElementsAre;

TEST(RegisterWords, AreBigEndianAndReadBack)
{
    const Bytes bytes{0x00, 0x00, 0x0A, 0x00, 0x12, 0x34, 0x56, 0x78};
    EXPECT_EQ(encodeWords({0x0A00, 0x12345678}), bytes);
    EXPECT_THAT(*parseWords(bytes), ElementsAre(0x0A00u, 0x12345678u));
}

TEST(RegisterWords, AreNoneUnlessWhole)
{
    const Bytes bytes(12);
    for (const std::size_t size : {0, 1, 3, 5, 7, 11})
        EXPECT_EQ(parseWords(ByteView(bytes).first(size)), std::nullopt) << size;
}

TEST(RegisterValues, ArePairsOfAddressAndValue)
{
    const Bytes bytes{0x00, 0x00, 0x0A, 0x00, 0x00, 0x00, 0x00, 0x02,
                      0x00, 0x00, 0x09, 0x38, 0x00, 0x00, 0x0B, 0xB8};
    const std::vector<RegisterValue> values{{0x0A00, 2}, {0x0938, 3000}};
    EXPECT_EQ(encodeRegisterValues(values), bytes);
    EXPECT_EQ(parseRegisterValues(bytes), values);
}

TEST(RegisterValues, AreNoneUnlessWhole)
{
    const Bytes bytes(16);
    for (const std::size_t size : {0, 1, 4, 7, 9, 12, 15})
        EXPECT_EQ(parseRegisterValues(ByteView(bytes).first(size)), std::nullopt) << size;
}

TEST(MemoryRange, HasItsCountInTheLastTwoBytes)
{
    const Bytes bytes{0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x00};
    EXPECT_EQ(encodeMemoryRange({0x200, 512}), bytes);
    EXPECT_EQ(parseMemoryRange(bytes), (MemoryRange{0x200, 512}));
}

TEST(MemoryRange, IsNoneOfAnotherLength)
{
    const Bytes bytes(12);
    for (const std::size_t size : {0, 4, 7, 9, 12})
        EXPECT_EQ(parseMemoryRange(ByteView(bytes).first(size)), std::nullopt) << size;
}

TEST(MemoryBlock, IsAnAddressAndItsBytes)
{
    const Bytes data{'L', 'e', 'f', 't'};
    const Bytes bytes{0x00, 0x00, 0x00, 0xE8, 'L', 'e', 'f', 't'};
    EXPECT_EQ(encodeMemoryBlock({0xE8, data}), bytes);
    const auto block = parseMemoryBlock(bytes);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->address, 0xE8u);
    EXPECT_THAT(block->data, ElementsAre('L', 'e', 'f', 't'));
}

TEST(MemoryBlock, HoldsOneTo536Bytes)
{
    const Bytes bytes(541);
    for (std::size_t size = 0; size <= bytes.size(); ++size)
        EXPECT_EQ(parseMemoryBlock(ByteView(bytes).first(size)).has_value(), size >= 5 && size <= 540)
            << size;
}

TEST(WriteResult, IsTheIndexAfterTwoReservedBytes)
{
    EXPECT_THAT(encodeWriteResult(3), ElementsAre(0, 0, 0, 3));
}
