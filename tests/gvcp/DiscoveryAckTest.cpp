// SPDX-License-Identifier: Apache-2.0
#include "gvcp/DiscoveryAck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

using namespace base;
using namespace gvcp;

namespace {

void put(Bytes& bytes, std::size_t offset, std::string_view text)
{
    std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// A camera's answer, byte by byte at the standard's offsets.
Bytes literalAnswer()
{
    Bytes bytes(248);
    put(bytes, 0, {"\x00\x02\x00\x01", 4});
    put(bytes, 10, "\x02\x1A\x2B\x3C\x4D\x5E");
    put(bytes, 16, {"\x80\x00\x00\x07", 4});
    put(bytes, 20, {"\x00\x00\x00\x06", 4});
    put(bytes, 36, {"\xC0\xA8\x01\x14", 4});
    put(bytes, 52, {"\xFF\xFF\xFF\x00", 4});
    put(bytes, 68, {"\xC0\xA8\x01\xFE", 4});
    put(bytes, 72, "Maker");
    put(bytes, 104, "Model");
    put(bytes, 136, "1.2.3");
    put(bytes, 168, "Information");
    put(bytes, 216, "S123");
    put(bytes, 232, "Left");
    return bytes;
}

DiscoveryAck meaning()
{
    return {.versionMajor = 2,
            .versionMinor = 1,
            .mac = {{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}},
            .ipConfigOptions = 0x80000007,
            .ipConfigCurrent = 6,
            .ip = {"192.168.1.20"_ip, "255.255.255.0"_ip, "192.168.1.254"_ip},
            .manufacturerName = "Maker",
            .modelName = "Model",
            .deviceVersion = "1.2.3",
            .manufacturerInfo = "Information",
            .serialNumber = "S123",
            .userDefinedName = "Left"};
}

} // namespace

TEST(DiscoveryAck, IsReadFromItsBytes)
{
    EXPECT_EQ(parseDiscoveryAck(literalAnswer()), meaning());
}

TEST(DiscoveryAck, IsWrittenAsItsBytes)
{
    EXPECT_EQ(encodeDiscoveryAck(meaning()), literalAnswer());
}

TEST(DiscoveryAck, TextsEndAtTheirFirstNulWhateverFollows)
{
    Bytes bytes = literalAnswer();
    put(bytes, 104, {"Model\0garbage\xFF\xFE", 15});
    EXPECT_EQ(parseDiscoveryAck(bytes)->modelName, "Model");
}

TEST(DiscoveryAck, TextsThatFillTheirFieldEndThere)
{
    Bytes bytes = literalAnswer();
    put(bytes, 216, "0123456789ABCDEF");
    EXPECT_EQ(parseDiscoveryAck(bytes)->serialNumber, "0123456789ABCDEF");
    EXPECT_EQ(parseDiscoveryAck(bytes)->userDefinedName, "Left");
}

TEST(DiscoveryAck, LacksWhatAShortAnswerLeavesOut)
{
    Bytes bytes = literalAnswer();
    bytes.resize(106);
    const auto ack = parseDiscoveryAck(bytes);
    ASSERT_TRUE(ack);
    EXPECT_EQ(ack->ip.gateway, "192.168.1.254"_ip);
    EXPECT_EQ(ack->manufacturerName, "Maker");
    EXPECT_EQ(ack->modelName, "Mo");
    EXPECT_EQ(ack->serialNumber, "");
    EXPECT_EQ(ack->userDefinedName, "");
}

TEST(DiscoveryAck, NeedsTheAddressFields)
{
    const Bytes bytes = literalAnswer();
    for (std::size_t size = 0; size <= bytes.size(); ++size)
        EXPECT_EQ(parseDiscoveryAck(ByteView(bytes).first(size)).has_value(), size >= 72) << size;
}

TEST(DiscoveryAck, IgnoresWhatFollowsTheLastField)
{
    Bytes bytes = literalAnswer();
    bytes.resize(540, 0xAA);
    EXPECT_EQ(parseDiscoveryAck(bytes), meaning());
}

TEST(DiscoveryAck, CutsATextThatIsLongerThanItsField)
{
    DiscoveryAck ack = meaning();
    ack.userDefinedName = "0123456789ABCDEFG";
    ack.serialNumber = std::string(100, 'x');
    const Bytes bytes = encodeDiscoveryAck(ack);
    ASSERT_EQ(bytes.size(), 248u);
    EXPECT_EQ(parseDiscoveryAck(bytes)->serialNumber, std::string(16, 'x'));
    EXPECT_EQ(parseDiscoveryAck(bytes)->userDefinedName, "0123456789ABCDEF");
}
