// SPDX-License-Identifier: Apache-2.0
#include "gvcp/PendingAck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace base;
using namespace gvcp;
using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(PendingAck, CarriesTheTimeInItsSecondHalf)
{
    const Bytes bytes{0x00, 0x00, 0x00, 0x89, 0x00, 0x04, 0x12, 0x34, 0x00, 0x00, 0x03, 0xE8};
    EXPECT_EQ(encodeAcknowledge(PendingCommand, Status::Success, 0x1234, encodePendingAck(1000ms)), bytes);
    const auto packet = parseAcknowledge(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->command, PendingCommand);
    EXPECT_EQ(parsePendingAck(packet->payload), 1000ms);
}

TEST(PendingAck, OfTheLongestTimeIsUnsigned)
{
    EXPECT_EQ(parsePendingAck(Bytes{0xFF, 0xFF, 0xFF, 0xFF}), 65535ms);
    EXPECT_THAT(encodePendingAck(65535ms), ElementsAre(0x00, 0x00, 0xFF, 0xFF));
}

TEST(PendingAck, CutShortIsNone)
{
    for (const Bytes& bytes : {Bytes{}, Bytes{0, 0}, Bytes{0, 0, 3}})
        EXPECT_FALSE(parsePendingAck(bytes)) << testing::PrintToString(bytes);
}
