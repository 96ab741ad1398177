// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string bigEndian = element("Endianess", "BigEndian");
const std::string littleEndian = element("Endianess", "LittleEndian");

std::string node(const std::string& kind, const std::string& name, const std::string& properties)
{
    return "<" + kind + " Name=\"" + name + "\">" + properties + "</" + kind + ">\n";
}

struct BooleanRow
{
    const char* name;
    std::string nodes;
    std::vector<uint8_t> whenTrue; ///< The word at 0x14, which was 40 00 00 04 before.
    std::vector<uint8_t> whenFalse;
};

class ModeBoolean : public testing::TestWithParam<BooleanRow>
{};

const std::vector<BooleanRow> booleanRows{
    {"MaskedIntReg",
     registerNode("MaskedIntReg", "Bit", "0x14", "4", element("Bit", "30") + bigEndian),
     {0x40, 0, 0, 6},
     {0x40, 0, 0, 4}},
    {"MaskedIntRegWithLsbAndMsb",
     registerNode("MaskedIntReg", "Bit", "20", "4", element("LSB", "31") + element("MSB", "31") + bigEndian),
     {0x40, 0, 0, 5},
     {0x40, 0, 0, 4}},
    {"LittleEndianMaskedIntReg",
     registerNode("MaskedIntReg", "Bit", "0x14", "4", element("Bit", "30") + littleEndian),
     {0x40, 0, 0, 0x44},
     {0x40, 0, 0, 0x04}},
    {"StructEntry",
     "<StructReg Comment=\"modes\">" + element("Address", "0x14") + element("Length", "4") +
         element("AccessMode", "RW") + element("pPort", "Device") + bigEndian +
         node("StructEntry", "Other", element("Bit", "31")) +
         node("StructEntry", "Bit", element("Bit", "30")) + "</StructReg>",
     {0x40, 0, 0, 6},
     {0x40, 0, 0, 4}},
    {"AddressByFormula",
     node("Integer", "Selector", element("Value", "1")) +
         node("IntSwissKnife", "Where",
              "<pVariable Name=\"SEL\">Selector</pVariable>" +
                  element("Formula", "<![CDATA[ SEL > 0 ? 0x14 : 0 ]]>")) +
         "<MaskedIntReg Name=\"Bit\">" + element("pAddress", "Where") + element("Length", "4") +
         element("AccessMode", "RW") + element("pPort", "Device") + element("Bit", "30") + bigEndian +
         "</MaskedIntReg>",
     {0x40, 0, 0, 6},
     {0x40, 0, 0, 4}},
    {"AddressByFormulaInside",
     node("Integer", "Selector", element("Value", "1")) + "<MaskedIntReg Name=\"Bit\"><IntSwissKnife>" +
         "<pVariable Name=\"SEL\">Selector</pVariable>" + element("Formula", "SEL * 4") + "</IntSwissKnife>" +
         element("Address", "0x10") + element("Length", "4") + element("AccessMode", "RW") +
         element("pPort", "Device") + element("Bit", "30") + bigEndian + "</MaskedIntReg>",
     {0x40, 0, 0, 6},
     {0x40, 0, 0, 4}},
    {"AddressByIndex",
     node("Integer", "Selector", element("Value", "1")) +
         "<MaskedIntReg Name=\"Bit\"><pIndex Offset=\"4\">Selector" + "</pIndex>" +
         element("Address", "0x10") + element("Length", "4") + element("AccessMode", "RW") +
         element("pPort", "Device") + element("Bit", "30") + bigEndian + "</MaskedIntReg>",
     {0x40, 0, 0, 6},
     {0x40, 0, 0, 4}},
    {"ReferencesWithWhiteSpace",
     "<MaskedIntReg Name=\" Bit \"><Address>\n 0x14 </Address><Length> 4 </Length><AccessMode> RW "
     "</AccessMode>"
     "<pPort>\n Device </pPort><Bit> 30 </Bit><Endianess> BigEndian </Endianess></MaskedIntReg>",
     {0x40, 0, 0, 6},
     {0x40, 0, 0, 4}},
};

} // namespace

TEST_P(ModeBoolean, ChangesItsBitAndNoOther)
{
    Camera camera(GetParam().nodes + node("Boolean", "Mode", element("pValue", " Bit ")));
    camera.port.put(0x14, {0x40, 0, 0, 4});
    auto* mode = nodeAs<IBoolean>(*camera.map, "Mode");
    ASSERT_TRUE(mode);
    mode->SetValue(true, true);
    EXPECT_EQ(camera.port.bytes(0x14, 4), GetParam().whenTrue);
    EXPECT_TRUE(mode->GetValue());
    mode->SetValue(false, true);
    EXPECT_EQ(camera.port.bytes(0x14, 4), GetParam().whenFalse);
    EXPECT_FALSE(mode->GetValue());
}

INSTANTIATE_TEST_SUITE_P(Descriptions, ModeBoolean, testing::ValuesIn(booleanRows),
                         [](const auto& row) { return row.param.name; });

TEST(ABoolean, WritesItsOwnValuesForOnAndOff)
{
    Camera camera(registerNode("IntReg", "Word", "0", "4", bigEndian) +
                  node("Boolean", "Mode",
                       element("pValue", "Word") + element("OnValue", "5") + element("OffValue", "2")));
    auto* mode = nodeAs<IBoolean>(*camera.map, "Mode");
    mode->SetValue(true, true);
    EXPECT_THAT(camera.port.bytes(0, 4), ElementsAre(0, 0, 0, 5));
    mode->SetValue(false, true);
    EXPECT_THAT(camera.port.bytes(0, 4), ElementsAre(0, 0, 0, 2));
}

struct CommandRow
{
    const char* name;
    std::string target;
    std::vector<uint8_t> written;
};

class ResetCommand : public testing::TestWithParam<CommandRow>
{};

const std::vector<CommandRow> commandRows{
    {"Register", registerNode("IntReg", "R", "0x20", "4", bigEndian), {0, 0, 0, 1}},
    {"LittleEndian", registerNode("IntReg", "R", "0x20", "4", littleEndian), {1, 0, 0, 0}},
    {"Masked",
     registerNode("MaskedIntReg", "R", "0x20", "4", element("Bit", "15") + bigEndian),
     {0, 1, 0, 0}},
    {"WriteOnly", registerNode("IntReg", "R", "0x20", "4", bigEndian, "WO"), {0, 0, 0, 1}},
    {"WriteOnlyLittleEndian", registerNode("IntReg", "R", "0x20", "4", littleEndian, "WO"), {1, 0, 0, 0}},
    {"WriteOnlyMasked",
     registerNode("MaskedIntReg", "R", "0x20", "4", element("LSB", "31") + element("MSB", "31") + bigEndian,
                  "WO"),
     {0, 0, 0, 1}},
    {"WriteOnlyMaskedInTheMiddle",
     registerNode("MaskedIntReg", "R", "0x20", "4", element("Bit", "15") + bigEndian, "WO"),
     {0, 1, 0, 0}},
};

TEST_P(ResetCommand, WritesItsValueAndReadsNothingThatIsWriteOnly)
{
    Camera camera(GetParam().target +
                  node("Command", "Reset", element("pValue", "R") + element("CommandValue", "\n 0x1 \t")));
    auto* command = nodeAs<ICommand>(*camera.map, "Reset");
    ASSERT_TRUE(command);
    command->Execute(true);
    EXPECT_EQ(camera.port.bytes(0x20, 4), GetParam().written);
    if (GetParam().target.find("WO") != std::string::npos) {
        EXPECT_THAT(camera.port.accesses, ElementsAre("W 20+4"));
    }
}

INSTANTIATE_TEST_SUITE_P(Descriptions, ResetCommand, testing::ValuesIn(commandRows),
                         [](const auto& row) { return row.param.name; });

TEST(AStringRegister, IsARegisterOfItsFullLength)
{
    Camera camera(registerNode("StringReg", "DeviceUserID", "0xE8", "16"));
    auto* text = nodeAs<IRegister>(*camera.map, "DeviceUserID");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->GetLength(), 16);
    const std::string name("Left\0\0\0\0\0\0\0\0\0\0\0\0", 16);
    text->Set(reinterpret_cast<const uint8_t*>(name.data()), 16, true);
    EXPECT_THAT(camera.port.accesses, ElementsAre("W e8+16"));
    std::string read(16, 'x');
    text->Get(reinterpret_cast<uint8_t*>(read.data()), 16);
    EXPECT_EQ(read, name);
    EXPECT_THAT(textOf<GenICam::InvalidArgumentException>(
                    [&] { text->Set(reinterpret_cast<const uint8_t*>(name.data()), 4, true); }),
                HasSubstr("DeviceUserID has 16 bytes, not 4"));
}

TEST(AStringRegister, MayHaveItsLengthFromAConstant)
{
    Camera camera(node("Integer", "Size", element("Value", "16")) + "<StringReg Name=\"Text\">" +
                  element("Address", "0") + element("pLength", "Size") + element("AccessMode", "RW") +
                  element("pPort", "Device") + "</StringReg>");
    EXPECT_EQ(nodeAs<IRegister>(*camera.map, "Text")->GetLength(), 16);
}

TEST(AStringNode, IsNoRegister)
{
    Camera camera(registerNode("StringReg", "Text", "0xE8", "16") +
                  node("String", "DeviceUserID", element("pValue", "Text")));
    EXPECT_TRUE(camera.map->GetNode("DeviceUserID"));
    EXPECT_FALSE(nodeAs<IRegister>(*camera.map, "DeviceUserID"));
}

TEST(AnIntegerRegister, IsBoth)
{
    Camera camera(registerNode("IntReg", "Word", "0", "4", bigEndian));
    EXPECT_TRUE(nodeAs<IInteger>(*camera.map, "Word"));
    auto* bytes = nodeAs<IRegister>(*camera.map, "Word");
    ASSERT_TRUE(bytes);
    nodeAs<IInteger>(*camera.map, "Word")->SetValue(0x01020304);
    std::vector<uint8_t> read(4);
    bytes->Get(read.data(), 4);
    EXPECT_THAT(read, ElementsAre(1, 2, 3, 4));
}

TEST(ANode, IsNotThereUnlessTheTextHasIt)
{
    Camera camera({});
    EXPECT_EQ(camera.map->GetNode("DeviceReset"), nullptr);
    EXPECT_EQ(camera.map->GetNode(""), nullptr);
}

TEST(AnInteger, TakesWhatItsBoundsAndStepsAllow)
{
    Camera camera(registerNode("IntReg", "Word", "0", "4", bigEndian) +
                  node("Integer", "Number",
                       element("pValue", "Word") + element("Min", "1") + element("Max", "4294967295") +
                           element("Inc", "2")));
    auto* number = nodeAs<IInteger>(*camera.map, "Number");
    number->SetValue(0xFFFFFF01, true);
    EXPECT_THAT(camera.port.bytes(0, 4), ElementsAre(0xFF, 0xFF, 0xFF, 0x01));
    for (const int64_t value : {int64_t{0}, int64_t{-1062731519}, int64_t{2}, int64_t{4294967296}})
        EXPECT_THAT(textOf<GenICam::OutOfRangeException>([&] { number->SetValue(value, true); }),
                    HasSubstr("Number cannot be set to " + std::to_string(value) +
                              ": it takes 1 to 4294967295 in steps of 2"));
    EXPECT_THAT(camera.port.bytes(0, 4), ElementsAre(0xFF, 0xFF, 0xFF, 0x01));
    number->SetValue(-1062731519, false);
    EXPECT_THAT(camera.port.bytes(0, 4), ElementsAre(0xC0, 0xA8, 0x01, 0x01));
}

TEST(AnInteger, HasTheWholeRangeOf64BitsWithoutBounds)
{
    Camera camera(registerNode("IntReg", "Long", "0", "8", element("Sign", "Signed") + bigEndian) +
                  node("Integer", "Number", element("pValue", "Long")));
    auto* number = nodeAs<IInteger>(*camera.map, "Number");
    number->SetValue(std::numeric_limits<int64_t>::min(), true);
    EXPECT_EQ(number->GetValue(), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(number->GetMin(), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(number->GetMax(), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(number->GetInc(), 1);
}

TEST(AnInteger, MayHaveBoundsThatDependOnEachOther)
{
    const auto bound = [](const std::string& name, const std::string& other) {
        return node("IntSwissKnife", name,
                    "<pVariable Name=\"OTHER\">" + other + "</pVariable>" +
                        element("Formula", "100 - OTHER"));
    };
    Camera camera(registerNode("IntReg", "A", "0", "4", bigEndian) +
                  registerNode("IntReg", "B", "4", "4", bigEndian) + bound("MostWidth", "Offset") +
                  bound("MostOffset", "Width") +
                  node("Integer", "Width", element("pValue", "A") + element("pMax", "MostWidth")) +
                  node("Integer", "Offset", element("pValue", "B") + element("pMax", "MostOffset")));
    nodeAs<IInteger>(*camera.map, "Offset")->SetValue(30);
    EXPECT_EQ(nodeAs<IInteger>(*camera.map, "Width")->GetMax(), 70);
    nodeAs<IInteger>(*camera.map, "Width")->SetValue(70);
    EXPECT_THAT(
        textOf<GenICam::OutOfRangeException>([&] { nodeAs<IInteger>(*camera.map, "Offset")->SetValue(31); }),
        HasSubstr("0 to 30"));
}
