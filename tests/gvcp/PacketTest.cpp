// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Packet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace base;
using namespace gvcp;
using testing::ElementsAre;

TEST(CommandPacket, OfDiscoveryIsItsHeaderAlone)
{
    EXPECT_THAT(encodeCommand(Command::Discovery, FlagAcknowledge | FlagBroadcastAcknowledge, 0x1234),
                ElementsAre(0x42, 0x11, 0x00, 0x02, 0x00, 0x00, 0x12, 0x34));
}

TEST(CommandPacket, CarriesItsPayloadAfterTheHeader)
{
    const Bytes payload{0x00, 0x00, 0x0A, 0x00};
    EXPECT_THAT(encodeCommand(Command::ReadRegister, FlagAcknowledge, 0xFFFF, payload),
                ElementsAre(0x42, 0x01, 0x00, 0x80, 0x00, 0x04, 0xFF, 0xFF, 0x00, 0x00, 0x0A, 0x00));
}

TEST(CommandPacket, IsReadFromItsBytes)
{
    const Bytes bytes{0x42, 0x11, 0x00, 0x04, 0x00, 0x02, 0xAB, 0xCD, 0x01, 0x02, 0xEE};
    const auto packet = parseCommand(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->flags, 0x11);
    EXPECT_EQ(packet->command, Command::ForceIp);
    EXPECT_EQ(packet->id, 0xABCD);
    EXPECT_THAT(packet->payload, ElementsAre(0x01, 0x02)) << "the byte after the payload is not part of it";
}

TEST(CommandPacket, IsNoneWhenCutShortOrOfAnotherKey)
{
    const Bytes rows[] = {
        {},
        {0x42, 0x11, 0x00, 0x02, 0x00, 0x00, 0x12},
        {0x43, 0x11, 0x00, 0x02, 0x00, 0x00, 0x12, 0x34},
        {0x42, 0x11, 0x00, 0x02, 0x00, 0x01, 0x12, 0x34},
        {0x42, 0x11, 0x00, 0x02, 0xFF, 0xFF, 0x12, 0x34, 0x00},
    };
    for (const Bytes& bytes : rows)
        EXPECT_FALSE(parseCommand(bytes)) << testing::PrintToString(bytes);
}

TEST(AcknowledgePacket, HasNoKeyAndTheCodeAfterTheCommands)
{
    const Bytes payload{0xAA};
    EXPECT_THAT(encodeAcknowledge(Command::ReadMemory, Status::AccessDenied, 7, payload),
                ElementsAre(0x80, 0x06, 0x00, 0x85, 0x00, 0x01, 0x00, 0x07, 0xAA));
}

TEST(AcknowledgePacket, IsReadFromItsBytes)
{
    const Bytes bytes{0x00, 0x00, 0x00, 0x81, 0x00, 0x04, 0x00, 0x09, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00};
    const auto packet = parseAcknowledge(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->status, Status::Success);
    EXPECT_EQ(packet->command, Command::ReadRegister);
    EXPECT_EQ(packet->id, 9);
    EXPECT_THAT(packet->payload, ElementsAre(0, 0, 0, 2));
}

TEST(AcknowledgePacket, OfAnErrorMayBeTheBareHeader)
{
    const Bytes bytes{0x80, 0x07, 0x00, 0x05, 0x00, 0x00, 0x00, 0x09};
    const auto packet = parseAcknowledge(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->status, Status::Busy);
    EXPECT_TRUE(packet->payload.empty());
}

TEST(AcknowledgePacket, WithAnUnknownStatusIsAnErrorOfThatCamera)
{
    const Bytes bytes{0x8A, 0xBC, 0x00, 0x03, 0x00, 0x00, 0x00, 0x09};
    const auto packet = parseAcknowledge(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(static_cast<int>(packet->status), 0x8ABC);
}

TEST(AcknowledgePacket, IsNoneWhenCutShortOrNoAcknowledge)
{
    const Bytes rows[] = {
        {},
        {0x00, 0x00, 0x00, 0x03, 0x00, 0x00, 0x12},
        {0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x12, 0x34}, // the command's own code
        {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x12, 0x34},
        {0x00, 0x00, 0x00, 0x03, 0x00, 0x01, 0x12, 0x34},
        {0x00, 0x00, 0x00, 0x03, 0xFF, 0xFF, 0x12, 0x34, 0x00},
    };
    for (const Bytes& bytes : rows)
        EXPECT_FALSE(parseAcknowledge(bytes)) << testing::PrintToString(bytes);
}

TEST(RequestId, IsNeverZero)
{
    EXPECT_EQ(nextId(0), 1);
    EXPECT_EQ(nextId(1), 2);
    EXPECT_EQ(nextId(0xFFFE), 0xFFFF);
    EXPECT_EQ(nextId(0xFFFF), 1);
}
