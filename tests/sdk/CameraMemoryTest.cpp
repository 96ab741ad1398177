// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/CameraMemory.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

namespace {

constexpr std::uint32_t Start = 0xB000;

/// A camera with memory at Start that holds a pattern in which every byte tells where it is from.
class CameraMemoryTest : public testing::Test
{
protected:
    CameraMemoryTest()
    {
        for (std::size_t i = 0; i < 1600; ++i)
            pattern += static_cast<char>(i * 7 + i / 256);
        camera.setBytes(Start, pattern);
    }

    std::string read(std::uint64_t address, std::size_t size)
    {
        base::Bytes bytes(size);
        memory.read(address, bytes);
        return {bytes.begin(), bytes.end()};
    }

    void write(std::uint64_t address, const std::string& bytes)
    {
        memory.write(address, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    }

    FakeCamera camera;
    ControlChannel channel{camera.connect(), FakeCamera::Ip};
    CameraMemory memory{channel};
    std::string pattern;
};

} // namespace

TEST_F(CameraMemoryTest, ReadsAnyLengthFromAnyAddress)
{
    for (const std::size_t size : {1u, 2u, 3u, 4u, 5u, 16u, 509u, 512u, 513u, 516u, 1024u, 1500u})
        for (std::uint32_t offset = 0; offset < 5; ++offset)
            EXPECT_EQ(read(Start + offset, size), pattern.substr(offset, size)) << size << " at " << offset;
}

TEST_F(CameraMemoryTest, WritesAnyLengthToAnyAddressAndNothingBeside)
{
    for (const bool hasWriteMemory : {true, false}) {
        camera.words[gvcp::reg::GvcpCapability] = hasWriteMemory ? gvcp::Capability::WriteMemory : 0;
        CameraMemory fresh(channel);
        for (const std::size_t size : {1u, 2u, 3u, 4u, 5u, 16u, 509u, 512u, 513u, 516u, 1024u, 1500u})
            for (std::uint32_t offset = 0; offset < 5; ++offset) {
                camera.setBytes(Start, pattern);
                const base::Bytes data(size, 0xEE);
                fresh.write(Start + offset, data);
                auto expected = pattern;
                expected.replace(offset, size, size, '\xEE');
                EXPECT_EQ(camera.bytes(Start, pattern.size()), expected) << size << " at " << offset;
            }
    }
}

TEST_F(CameraMemoryTest, AccessesARegisterAsRegister)
{
    read(Start, 4);
    write(Start, "1234");
    EXPECT_THAT(camera.log(), ElementsAre("READREG 0000B000", "WRITEREG 0000B000=31323334"));
}

TEST_F(CameraMemoryTest, AccessesAllElseInBlocksOfWholeWordsOf512BytesAtMost)
{
    read(Start + 2, 1022);
    read(Start + 1, 2);
    EXPECT_THAT(camera.log(),
                ElementsAre("READMEM 0000B000+512", "READMEM 0000B200+512", "READMEM 0000B000+4"));
}

TEST_F(CameraMemoryTest, ReadsOnlyTheWordsThatAWriteCoversInPart)
{
    write(Start + 2, std::string(9, 'x'));
    EXPECT_THAT(camera.log(), ElementsAre("READMEM 0000B000+4", "READMEM 0000B008+4", "READREG 00000934",
                                          "WRITEMEM 0000B000+12"));
}

TEST_F(CameraMemoryTest, ReadsNothingForAWriteOfWholeWords)
{
    write(Start, std::string(16, 'x'));
    EXPECT_THAT(camera.log(), ElementsAre("READREG 00000934", "WRITEMEM 0000B000+16"));
}

TEST_F(CameraMemoryTest, WritesRegistersOnACameraThatSaysItHasNoWritableMemory)
{
    camera.words[gvcp::reg::GvcpCapability] = 0;
    write(Start, "12345678");
    EXPECT_THAT(camera.log(),
                ElementsAre("READREG 00000934", "WRITEREG 0000B000=31323334", "WRITEREG 0000B004=35363738"));
}

TEST_F(CameraMemoryTest, WritesRegistersOnACameraThatTurnsOutToHaveNoWritableMemory)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        if (command.command != gvcp::Command::WriteMemory)
            return false;
        camera.answer(command, gvcp::Status::NotImplemented);
        return true;
    };
    write(Start, "12345678");
    EXPECT_EQ(camera.bytes(Start, 8), "12345678");
    const auto before = camera.log().size();
    write(Start, "abcdefgh");
    EXPECT_EQ(camera.bytes(Start, 8), "abcdefgh");
    const auto log = camera.log();
    EXPECT_THAT(std::vector(log.begin() + static_cast<std::ptrdiff_t>(before), log.end()),
                Each(StartsWith("WRITEREG")))
        << "it is not asked again";
}

TEST_F(CameraMemoryTest, WritesRegistersOnACameraThatHasNoCapabilityRegister)
{
    camera.words.erase(gvcp::reg::GvcpCapability);
    write(Start, "12345678");
    EXPECT_EQ(camera.bytes(Start, 8), "12345678");
}

TEST_F(CameraMemoryTest, PassesOnWhatTheCameraRefuses)
{
    camera.writeProtected = Start + 4;
    EXPECT_THROW(write(Start, "12345678"), CameraError);
    EXPECT_THROW(read(0xC0000000, 4), CameraError);
    EXPECT_THROW(read(0xC0000000, 40), CameraError);
}

TEST_F(CameraMemoryTest, AsksTheCameraForNoAddressesThatDoNotExist)
{
    EXPECT_THROW(read(0x1'0000'0000, 4), CameraError);
    EXPECT_THROW(read(0xFFFFFFFF, 2), CameraError);
    EXPECT_THROW(read(0xFFFF'FFFF'FFFF'FFFC, 8), CameraError);
    EXPECT_THROW(read(Start, 0), CameraError);
    EXPECT_THROW(write(0x1'0000'0000, "1234"), CameraError);
    EXPECT_THAT(camera.log(), ElementsAre());
}

TEST_F(CameraMemoryTest, ReachesTheLastByteOfTheAddressSpace)
{
    camera.setBytes(0xFFFFFFFC, "wxyz");
    EXPECT_EQ(read(0xFFFFFFFE, 2), "yz");
    write(0xFFFFFFFF, "!");
    EXPECT_EQ(camera.bytes(0xFFFFFFFC, 4), "wxy!");
}
