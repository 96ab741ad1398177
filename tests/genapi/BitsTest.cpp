// SPDX-License-Identifier: Apache-2.0
// Which bits of a register are written, and whether it is read before.
#include "tests/genapi/Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Bytes = std::vector<uint8_t>;

const std::string bigEndian = element("Endianess", "BigEndian");
const std::string littleEndian = element("Endianess", "LittleEndian");

std::string bits(int lsb, int msb)
{
    return element("LSB", std::to_string(lsb)) + element("MSB", std::to_string(msb));
}

std::string bit(int number)
{
    return element("Bit", std::to_string(number));
}

std::string node(const std::string& kind, const std::string& name, const std::string& properties)
{
    return "<" + kind + " Name=\"" + name + "\">" + properties + "</" + kind + ">\n";
}

/// The field N at 0x20, in a register of its own or as entry of a structure.
std::string field(bool isEntry, const std::string& ofRegister, const std::string& ofField,
                  const std::string& length = "4")
{
    if (!isEntry)
        return registerNode("MaskedIntReg", "N", "0x20", length, ofRegister + ofField);
    return "<StructReg Comment=\"some\">" + element("Address", "0x20") + element("Length", length) +
           element("AccessMode", "RW") + element("pPort", "Device") + ofRegister +
           node("StructEntry", "Other", bit(0)) + node("StructEntry", "N", ofField) + "</StructReg>";
}

struct FieldRow
{
    int lsb;
    int msb;
    int64_t value;
    Bytes big;    ///< What the register holds then if it is big-endian; 5A in all bytes before.
    Bytes little; ///< And if little-endian.
};

// Big-endian registers count bits from the highest of the first byte, little-endian ones from the lowest.
const FieldRow fieldRows[] = {
    {31, 31, 1, {0x5A, 0x5A, 0x5A, 0x5B}, {0x5A, 0x5A, 0x5A, 0xDA}},
    {30, 30, 0, {0x5A, 0x5A, 0x5A, 0x58}, {0x5A, 0x5A, 0x5A, 0x1A}},
    {7, 7, 1, {0x5B, 0x5A, 0x5A, 0x5A}, {0xDA, 0x5A, 0x5A, 0x5A}},
    {7, 0, 0xC3, {0xC3, 0x5A, 0x5A, 0x5A}, {0xC3, 0x5A, 0x5A, 0x5A}},
    {31, 28, 0x6, {0x5A, 0x5A, 0x5A, 0x56}, {0x5A, 0x5A, 0x5A, 0x6A}},
    {23, 8, 0x0102, {0x5A, 0x01, 0x02, 0x5A}, {0x5A, 0x02, 0x01, 0x5A}},
    {11, 4, 0xFF, {0x5F, 0xFA, 0x5A, 0x5A}, {0xFA, 0x5F, 0x5A, 0x5A}},
    {30, 0, 0, {0x00, 0x00, 0x00, 0x00}, {0x00, 0x00, 0x00, 0x00}},
};

/// In what a register may be written without being read.
struct WriteOnlyRow
{
    const char* name;
    std::string nodes; ///< The command N, over the lowest bit of the first byte.
};

const std::string command = node("Command", "N", element("pValue", "R") + element("CommandValue", "1"));

const WriteOnlyRow writeOnlyRows[] = {
    {"Register", registerNode("MaskedIntReg", "R", "0x20", "4", bit(7) + bigEndian, "WO") + command},
    {"LittleEndianRegister",
     registerNode("MaskedIntReg", "R", "0x20", "4", bits(0, 0) + littleEndian, "WO") + command},
    {"ByWayOfANumber", registerNode("MaskedIntReg", "B", "0x20", "4", bit(7) + bigEndian, "WO") +
                           node("Integer", "R", element("pValue", "B")) + command},
    {"Imposed",
     registerNode("MaskedIntReg", "R", "0x20", "4", bit(7) + bigEndian + element("ImposedAccessMode", "WO")) +
         command},
    {"Structure", "<StructReg>" + element("Address", "0x20") + element("Length", "4") +
                      element("AccessMode", "WO") + element("pPort", "Device") + bigEndian +
                      node("StructEntry", "R", bit(7)) + "</StructReg>" + command},
    {"EntryOfAStructure", "<StructReg>" + element("Address", "0x20") + element("Length", "4") +
                              element("AccessMode", "RW") + element("pPort", "Device") + bigEndian +
                              node("StructEntry", "Before", bit(1)) +
                              node("StructEntry", "R", element("AccessMode", "WO") + bit(7)) +
                              node("StructEntry", "Behind", bit(2)) + "</StructReg>" + command},
    {"ImposedOnAnEntry", "<StructReg Name=\"S\">" + element("Address", "0x20") + element("Length", "4") +
                             element("AccessMode", "RW") + element("pPort", "Device") + bigEndian +
                             node("StructEntry", "R", element("ImposedAccessMode", "WO") + bit(7)) +
                             "</StructReg>" + command},
};

class Field : public testing::TestWithParam<bool>
{};

class WriteOnly : public testing::TestWithParam<WriteOnlyRow>
{};

} // namespace

TEST_P(Field, IsWrittenInWhicheverOrderItsBitsAreNamedAndNothingElseOfTheRegister)
{
    for (const FieldRow& row : fieldRows)
        for (const bool isBig : {true, false})
            for (const bool isTurned : {true, false}) {
                const auto named = isTurned ? bits(row.msb, row.lsb) : bits(row.lsb, row.msb);
                SCOPED_TRACE(named + (isBig ? " big-endian" : " little-endian"));
                Camera camera(field(GetParam(), isBig ? bigEndian : littleEndian, named));
                camera.port.put(0x1C, Bytes(12, 0x5A));
                camera.node<IInteger>("N").SetValue(row.value, true);
                EXPECT_EQ(camera.port.bytes(0x20, 4), isBig ? row.big : row.little);
                EXPECT_EQ(camera.node<IInteger>("N").GetValue(), row.value);
                EXPECT_EQ(camera.port.bytes(0x1C, 4), Bytes(4, 0x5A));
                EXPECT_EQ(camera.port.bytes(0x24, 4), Bytes(4, 0x5A));
            }
}

TEST_P(Field, OfOneBitIsThatBit)
{
    for (const auto& [endianess, byte] : {std::pair{bigEndian, 0x02}, {littleEndian, 0x40}}) {
        Camera camera(field(GetParam(), endianess, bit(30)) +
                      node("Boolean", "Mode", element("pValue", "N")));
        camera.node<IBoolean>("Mode").SetValue(true, true);
        EXPECT_THAT(camera.port.bytes(0x20, 4), ElementsAre(0, 0, 0, byte));
        camera.node<IBoolean>("Mode").SetValue(false, true);
        EXPECT_THAT(camera.port.bytes(0x20, 4), ElementsAre(0, 0, 0, 0));
    }
}

TEST_P(Field, CannotBeUsedWhenItsBitsAreNotAllInItsRegisterOrAreSaidTwice)
{
    const std::pair<std::string, const char*> rows[] = {
        {bit(32), "its bit 32 is not in its register"},
        {bit(-1), "its bit -1 is not in its register"},
        {bits(31, 64), "its bit 64 is not in its register"},
        {bits(32, 0), "its bit 32 is not in its register"},
        {bit(1) + bit(2), "it says twice which bits it has"},
        {bit(1) + bits(2, 2), "it says twice which bits it has"},
        {bits(3, 3) + bits(2, 2), "it says twice which bits it has"},
        {element("LSB", "3"), "it has no Bit|MSB"},
    };
    for (const auto& [named, fault] : rows)
        for (const auto& endianess : {bigEndian, littleEndian}) {
            Camera camera(field(GetParam(), endianess, named));
            EXPECT_THAT(
                textOf<GenICam::AccessException>([&] { camera.node<IInteger>("N").SetValue(0, false); }),
                HasSubstr(fault))
                << named;
            EXPECT_THAT(camera.port.accesses, ElementsAre());
        }
}

TEST_P(Field, TakesNoNumberThatItHasNotTheBitsForByWhateverWay)
{
    const std::string nodes =
        field(GetParam(), bigEndian, bits(31, 30)) +
        node("Integer", "I", element("pValue", "N") + element("Max", "9")) +
        node("Boolean", "B", element("pValue", "I") + element("OnValue", "4") + element("OffValue", "3")) +
        node("Command", "C", element("pValue", "N") + element("CommandValue", "5")) +
        node("Command", "P", element("pValue", "N") + element("pCommandValue", "Seven")) +
        node("Integer", "Seven", element("Value", "7"));
    Camera camera(nodes);
    const auto refusal = [](const std::function<void()>& action) {
        return textOf<GenICam::OutOfRangeException>(action);
    };
    EXPECT_EQ(refusal([&] { camera.node<IBoolean>("B").SetValue(true); }),
              "B cannot be set to 4: its register has too few bits.");
    EXPECT_THAT(refusal([&] { camera.node<ICommand>("C").Execute(); }), HasSubstr("C cannot be set to 5"));
    EXPECT_THAT(refusal([&] { camera.node<ICommand>("P").Execute(); }), HasSubstr("P cannot be set to 7"));
    EXPECT_THAT(refusal([&] { camera.node<IInteger>("I").SetValue(8); }), HasSubstr("I cannot be set to 8"));
    EXPECT_THAT(refusal([&] { camera.node<IInteger>("I").SetValue(-1); }),
                HasSubstr("I cannot be set to -1"));
    EXPECT_THAT(camera.port.accesses, ElementsAre());
    camera.node<IBoolean>("B").SetValue(false);
    EXPECT_THAT(camera.port.bytes(0x20, 4), ElementsAre(0, 0, 0, 3));
}

TEST_P(Field, ThatCountsAsSignedTakesAnyNumberOfItsBits)
{
    Camera camera(field(GetParam(), bigEndian, bit(31) + element("Sign", "Signed")) +
                  node("Boolean", "Mode", element("pValue", "N")));
    camera.node<IBoolean>("Mode").SetValue(true, true);
    EXPECT_THAT(camera.port.bytes(0x20, 4), ElementsAre(0, 0, 0, 1));
}

INSTANTIATE_TEST_SUITE_P(Of, Field, testing::Bool(),
                         [](const auto& row) { return row.param ? "AStructure" : "AMaskedRegister"; });

TEST_P(WriteOnly, IsWrittenWithZerosElsewhereAndNeverRead)
{
    Camera camera(GetParam().nodes);
    camera.port.put(0x20, Bytes(4, 0xFF));
    camera.node<ICommand>("N").Execute(true);
    EXPECT_THAT(camera.port.accesses, ElementsAre("W 20+4"));
    EXPECT_THAT(camera.port.bytes(0x20, 4), ElementsAre(0x01, 0, 0, 0));
}

INSTANTIATE_TEST_SUITE_P(By, WriteOnly, testing::ValuesIn(writeOnlyRows),
                         [](const auto& row) { return row.param.name; });

TEST(AReadableRegister, IsReadAndWrittenBackWithOneBitChanged)
{
    const std::string rows[] = {
        registerNode("MaskedIntReg", "R", "0x20", "4", bit(7) + bigEndian),
        registerNode("MaskedIntReg", "R", "0x20", "4",
                     bit(7) + bigEndian + element("ImposedAccessMode", "RW")),
        "<StructReg>" + element("Address", "0x20") + element("Length", "4") + element("AccessMode", "RW") +
            element("pPort", "Device") + bigEndian + node("StructEntry", "R", bit(7)) +
            node("StructEntry", "Other", element("AccessMode", "WO") + bit(1)) + "</StructReg>",
        "<StructReg>" + element("Address", "0x20") + element("Length", "4") + element("AccessMode", "WO") +
            element("pPort", "Device") + bigEndian +
            node("StructEntry", "R", element("AccessMode", "RW") + bit(7)) + "</StructReg>",
    };
    for (const auto& nodes : rows) {
        // A mode that is imposed on the command alone leaves the register readable.
        Camera camera(nodes + node("Command", "N",
                                   element("ImposedAccessMode", "WO") + element("pValue", "R") +
                                       element("CommandValue", "1")));
        camera.port.put(0x20, Bytes(4, 0xA4));
        camera.node<ICommand>("N").Execute(true);
        EXPECT_THAT(camera.port.accesses, ElementsAre("R 20+4", "W 20+4")) << nodes;
        EXPECT_THAT(camera.port.bytes(0x20, 4), ElementsAre(0xA5, 0xA4, 0xA4, 0xA4)) << nodes;
    }
}

TEST(AModeOfAccess, IsThatOfAllThatPassOnTheValue)
{
    const auto bitOf = [](const std::string& properties, const std::string& mode) {
        return registerNode("MaskedIntReg", "R", "0x20", "4", bit(7) + bigEndian + properties, mode);
    };
    const auto imposed = [](const std::string& mode) { return element("ImposedAccessMode", mode); };
    const auto number = [](const std::string& properties) {
        return node("Integer", "I", element("pValue", "R") + properties);
    };
    const auto mode = [](const std::string& properties) {
        return node("Boolean", "N", element("pValue", "I") + properties);
    };
    const std::pair<std::string, EAccessMode> rows[] = {
        {bitOf({}, "RW") + number({}) + mode({}), RW},
        {bitOf({}, "RO") + number({}) + mode(imposed("RW")), RO},
        {bitOf(imposed("RO"), "RW") + number({}) + mode({}), RO},
        {bitOf(imposed("WO"), "RW") + number({}) + mode({}), WO},
        {bitOf({}, "RW") + number(imposed("RO")) + mode({}), RO},
        {bitOf({}, "RW") + number({}) + mode(imposed("RO")), RO},
        {bitOf({}, "WO") + number({}) + mode({}), WO},
        {bitOf({}, "WO") + number(imposed("RO")) + mode({}), NA},
    };
    for (const auto& [nodes, expected] : rows) {
        Camera camera(nodes);
        EXPECT_EQ(camera.node<INode>("N").GetAccessMode(), expected) << nodes;
        if (expected == RO || expected == NA) {
            EXPECT_THAT(textOf<GenICam::AccessException>([&] { camera.node<IBoolean>("N").SetValue(true); }),
                        HasSubstr("N cannot be set"))
                << nodes;
        }
    }
}
