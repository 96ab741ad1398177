// SPDX-License-Identifier: Apache-2.0
// Which byte of a register is which, on literal bytes.
#include "tests/genapi/Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi;

namespace {

using Bytes = std::vector<uint8_t>;

struct Row
{
    const char* name;
    const char* endianess; ///< Empty for a register that does not say.
    Bytes two;             ///< What 0x0102 is in a register of two bytes.
    Bytes four;            ///< 0x01020304.
    Bytes eight;           ///< 0x0102030405060708.
};

const Row rows[] = {
    {"BigEndian", "BigEndian", {1, 2}, {1, 2, 3, 4}, {1, 2, 3, 4, 5, 6, 7, 8}},
    {"LittleEndian", "LittleEndian", {2, 1}, {4, 3, 2, 1}, {8, 7, 6, 5, 4, 3, 2, 1}},
    {"Unsaid", "", {2, 1}, {4, 3, 2, 1}, {8, 7, 6, 5, 4, 3, 2, 1}},
};

/// The version of the schema ("1" is 1.1) and the register's own word.
class ByteOrder : public testing::TestWithParam<std::tuple<const char*, Row>>
{
protected:
    static std::string endianess()
    {
        const std::string own = std::get<1>(GetParam()).endianess;
        return own.empty() ? own : element("Endianess", own);
    }

    static Camera cameraOf(const std::string& nodes) { return Camera(nodes, std::get<0>(GetParam())); }

    /// Writes the number and reads it back by way of a register at 0x20 of as many bytes as are expected
    /// there.
    static void judge(const std::string& kind, const std::string& properties, int64_t number,
                      const Bytes& bytes)
    {
        Camera camera =
            cameraOf(registerNode(kind, "R", "0x20", std::to_string(bytes.size()), properties + endianess()));
        camera.port.put(0x1C, Bytes(16, 0xEE));
        camera.node<IInteger>("R").SetValue(number, true);
        const auto size = static_cast<int64_t>(bytes.size());
        EXPECT_EQ(camera.port.bytes(0x20, size), bytes);
        EXPECT_EQ(camera.port.bytes(0x1C, 4), Bytes(4, 0xEE));
        EXPECT_EQ(camera.port.bytes(0x20 + size, 4), Bytes(4, 0xEE));
        EXPECT_EQ(camera.node<IInteger>("R").GetValue(), number);
    }
};

} // namespace

TEST_P(ByteOrder, IsTheRegistersOwn)
{
    const Row& row = std::get<1>(GetParam());
    judge("IntReg", {}, 0x0102, row.two);
    judge("IntReg", {}, 0x01020304, row.four);
    judge("IntReg", {}, 0x0102030405060708, row.eight);
}

TEST_P(ByteOrder, IsTheSameForARegisterOfWhichAllBitsAreNamed)
{
    const Row& row = std::get<1>(GetParam());
    const bool isBig = std::string(row.endianess) == "BigEndian";
    const auto bits = [isBig](const char* highest) {
        return isBig ? element("LSB", highest) + element("MSB", "0")
                     : element("LSB", "0") + element("MSB", highest);
    };
    judge("MaskedIntReg", bits("15"), 0x0102, row.two);
    judge("MaskedIntReg", bits("31"), 0x01020304, row.four);
    judge("MaskedIntReg", bits("63"), 0x0102030405060708, row.eight);
}

TEST_P(ByteOrder, DoesNotConcernAText)
{
    for (const int64_t size : {4, 16}) {
        Camera camera = cameraOf(registerNode("StringReg", "T", "0x20", std::to_string(size), endianess()));
        const std::string text = std::string("ABCDEFGHIJKLMNOP").substr(0, static_cast<std::size_t>(size));
        const Bytes bytes(text.begin(), text.end());
        camera.node<IRegister>("T").Set(bytes.data(), size, true);
        EXPECT_EQ(camera.port.bytes(0x20, size), bytes);
        Bytes read(bytes.size());
        camera.node<IRegister>("T").Get(read.data(), size);
        EXPECT_EQ(read, bytes);
    }
}

INSTANTIATE_TEST_SUITE_P(Schemas, ByteOrder,
                         testing::Combine(testing::Values("0", "1"), testing::ValuesIn(rows)),
                         [](const auto& param) {
                             return std::string("1_") + std::get<0>(param.param) + "_" +
                                    std::get<1>(param.param).name;
                         });
