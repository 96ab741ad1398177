// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Numbers.h"

#include "tests/genapi/Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace GenApi;
using genapi::parseInteger;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr auto Least = std::numeric_limits<int64_t>::min();
constexpr auto Most = std::numeric_limits<int64_t>::max();

const std::string bigEndian = element("Endianess", "BigEndian");
const std::string littleEndian = element("Endianess", "LittleEndian");

std::string node(const std::string& kind, const std::string& properties)
{
    return "<" + kind + " Name=\"N\">" + properties + "</" + kind + ">\n";
}

/// Of which each byte is its own address, up to 0x40.
struct CountingCamera : Camera
{
    explicit CountingCamera(const std::string& nodes) : Camera(nodes)
    {
        for (uint8_t i = 0; i < 0x40; ++i)
            port.put(i, {i});
    }
};

int64_t value(const Camera& camera)
{
    return camera.node<IInteger>("N").GetValue();
}

/// The register at 0x20 after the switch or command has been used.
template <int64_t Size>
int64_t written(const Camera& camera)
{
    int64_t number = 0;
    for (const auto byte : camera.port.bytes(0x20, Size))
        number = number << 8 | byte;
    return number;
}

/// A property in which @ stands for a number, and how to learn what the engine took it for.
struct Place
{
    const char* name;
    std::string nodes;
    int64_t (*read)(const Camera& camera);
};

const std::string target = registerNode("IntReg", "R", "0x20", "1", bigEndian);
const std::string one =
    "<Integer Name=\"One\"><Value>1</Value></Integer><Integer Name=\"It\"><Value>@</Value></Integer>";

std::string registerAt(const std::string& address)
{
    return node("IntReg", address + element("Length", "1") + element("AccessMode", "RW") +
                              element("pPort", "Device") + bigEndian);
}

const Place places[] = {
    {"Value", node("Integer", element("Value", "@")), value},
    {"Minimum", node("Integer", element("Value", "0") + element("Min", "@")),
     [](const Camera& camera) { return camera.node<IInteger>("N").GetMin(); }},
    {"Maximum", node("Integer", element("Value", "0") + element("Max", "@")),
     [](const Camera& camera) { return camera.node<IInteger>("N").GetMax(); }},
    {"Increment", node("Integer", element("Value", "0") + element("Inc", "@")),
     [](const Camera& camera) { return camera.node<IInteger>("N").GetInc(); }},
    {"Address", registerAt(element("Address", "@")), value},
    {"LaterAddress", registerAt(element("Address", "0") + element("Address", "@")), value},
    {"OffsetOfAnIndex", one + registerAt("<pIndex Offset=\"@\">One</pIndex>"), value},
    {"Index",
     one + node("Integer", "<pIndex>It</pIndex><ValueIndexed Index=\"3\">0</ValueIndexed>"
                           "<ValueIndexed Index=\"@\">@</ValueIndexed><ValueDefault>0"
                           "</ValueDefault>"),
     value},
    {"DefaultOfAnIndex", one + node("Integer", "<pIndex>One</pIndex><ValueDefault>@</ValueDefault>"), value},
    {"Length", registerNode("Register", "N", "0", "@"),
     [](const Camera& camera) { return camera.node<IRegister>("N").GetLength(); }},
    {"LengthElsewhere",
     one + node("StringReg", element("Address", "0") + element("pLength", "It") +
                                 element("AccessMode", "RW") + element("pPort", "Device")),
     [](const Camera& camera) { return camera.node<IRegister>("N").GetLength(); }},
    {"OnValue", target + node("Boolean", element("pValue", "R") + element("OnValue", "@")),
     [](const Camera& camera) {
         camera.node<IBoolean>("N").SetValue(true);
         return written<1>(camera);
     }},
    {"OffValue", target + node("Boolean", element("pValue", "R") + element("OffValue", "@")),
     [](const Camera& camera) {
         camera.node<IBoolean>("N").SetValue(false);
         return written<1>(camera);
     }},
    {"CommandValue", target + node("Command", element("pValue", "R") + element("CommandValue", "@")),
     [](const Camera& camera) {
         camera.node<ICommand>("N").Execute();
         return written<1>(camera);
     }},
    {"Bit",
     registerNode("MaskedIntReg", "R", "0x20", "2", littleEndian + element("Bit", "@"), "WO") +
         node("Boolean", element("pValue", "R")),
     [](const Camera& camera) -> int64_t {
         camera.node<IBoolean>("N").SetValue(true);
         const auto bytes = camera.port.bytes(0x20, 2);
         return __builtin_ctz(bytes[0] | bytes[1] << 8);
     }},
    {"LowestAndHighestBit",
     registerNode("MaskedIntReg", "R", "0x20", "2", bigEndian + element("LSB", "@") + element("MSB", "@"),
                  "WO") +
         node("Boolean", element("pValue", "R")),
     [](const Camera& camera) -> int64_t {
         camera.node<IBoolean>("N").SetValue(true);
         return 15 - __builtin_ctz(static_cast<unsigned>(written<2>(camera)));
     }},
    {"Constant", node("IntSwissKnife", "<Constant Name=\"C\">@</Constant><Formula>C</Formula>"), value},
    {"Formula", node("IntSwissKnife", "<Formula>@ / 1 * 1</Formula>"), value},
    {"Expression", node("IntSwissKnife", "<Expression Name=\"E\">@</Expression><Formula>E</Formula>"), value},
    {"FormulaOfReals",
     "<SwissKnife Name=\"K\"><Formula>@ / 1</Formula></SwissKnife>" + node("Integer", element("pValue", "K")),
     value},
    {"ConstantOfReals",
     "<SwissKnife Name=\"K\"><Constant Name=\"C\">@</Constant><Formula>C</Formula></SwissKnife>" +
         node("Integer", element("pValue", "K")),
     value},
};

std::string withNumber(std::string nodes, const std::string& number)
{
    for (auto at = nodes.find('@'); at != std::string::npos; at = nodes.find('@'))
        nodes.replace(at, 1, number);
    return nodes;
}

class NumberIn : public testing::TestWithParam<Place>
{};

/// What an attempt to use the node says.
std::string faultOf(const std::string& nodes)
{
    const Camera camera(nodes);
    EXPECT_EQ(camera.map->GetNode("N")->GetAccessMode(), NI) << nodes;
    const auto use = [&camera] {
        auto* any = camera.map->GetNode("N");
        if (auto* number = dynamic_cast<IInteger*>(any))
            number->GetValue();
        if (auto* flag = dynamic_cast<IBoolean*>(any))
            flag->SetValue(true, false);
        if (auto* command = dynamic_cast<ICommand*>(any))
            command->Execute(false);
        if (auto* bytes = dynamic_cast<IRegister*>(any))
            bytes->GetLength();
    };
    auto fault = textOf<GenICam::AccessException>(use);
    EXPECT_THAT(camera.port.accesses, IsEmpty()) << nodes;
    return fault;
}

} // namespace

TEST(Integers, AreDecimalOrHexadecimalWithAnOptionalSign)
{
    const std::pair<const char*, std::optional<int64_t>> rows[] = {
        {"0", 0},
        {"00", 0},
        {"8", 8},
        {"08", 8},
        {"0010", 10},
        {"-08", -8},
        {"+08", 8},
        {"0x10", 16},
        {"0X1f", 31},
        {"-0x10", -16},
        {"9223372036854775807", Most},
        {"-9223372036854775808", Least},
        {"0x7FFFFFFFFFFFFFFF", Most},
        {"0x8000000000000000", Least},
        {"0xFFFFFFFFFFFFFFFF", -1},
        {"18446744073709551615", -1},
        {"18446744073709551616", std::nullopt},
        {"-9223372036854775809", std::nullopt},
        {"0x10000000000000000", std::nullopt},
        {"", std::nullopt},
        {"-", std::nullopt},
        {"0x", std::nullopt},
        {"--1", std::nullopt},
        {"+-1", std::nullopt},
        {"0x-1", std::nullopt},
        {"1 ", std::nullopt},
        {"1e3", std::nullopt},
        {"8.0", std::nullopt},
        {"12abc", std::nullopt},
        {"0b11", std::nullopt},
    };
    for (const auto& [text, number] : rows)
        EXPECT_EQ(parseInteger(text), number) << text;
}

TEST_P(NumberIn, IsDecimalHoweverManyZerosLead)
{
    const std::pair<const char*, int64_t> spellings[] = {
        {"8", 8},  {"08", 8},  {"008", 8},  {"10", 10},   {"010", 10},       {"0010", 10},
        {"+9", 9}, {"+09", 9}, {"0xA", 10}, {"0X0a", 10}, {" \n 012\t", 12},
    };
    for (const auto& [spelling, number] : spellings)
        EXPECT_EQ(GetParam().read(CountingCamera(withNumber(GetParam().nodes, spelling))), number)
            << spelling;
}

TEST_P(NumberIn, IsNotToBeGuessedWhenItIsNone)
{
    for (const char* text : {"", "ten", "1O", "0x", "0b11", "1,5", "10 11", "0xG"}) {
        const auto fault = faultOf(withNumber(GetParam().nodes, text));
        EXPECT_THAT(fault, HasSubstr("N cannot be used: ")) << text;
        EXPECT_THAT(fault, testing::AnyOf(HasSubstr("'" + std::string(text) + "', which is no "),
                                          HasSubstr("formula"), HasSubstr("its length is not")))
            << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Descriptions, NumberIn, testing::ValuesIn(places),
                         [](const auto& row) { return row.param.name; });

TEST(ANumberThatIsNone, IsToldWithItsPlace)
{
    EXPECT_EQ(faultOf(registerNode("IntReg", "N", "0x2O", "4")),
              "N cannot be used: its Address is '0x2O', which is no whole number.");
    EXPECT_EQ(faultOf(node("Integer", "<ValueIndexed Index=\"I\">1</ValueIndexed>")),
              "N cannot be used: its Index is 'I', which is no whole number.");
    EXPECT_EQ(faultOf(node("IntSwissKnife", element("Formula", "1 + 0.5"))),
              "N cannot be used: its formula has '0.5', which is no whole number.");
    EXPECT_EQ(faultOf(registerNode("IntReg", "R", "0", "4 bytes") + node("Integer", element("pValue", "R"))),
              "N cannot be used: it needs 'R': its Length is '4 bytes', which is no whole number.");
}

TEST(ANumberInAFormula, IsExactUpTo64Bits)
{
    const std::pair<const char*, int64_t> rows[] = {
        {"9007199254740993", 9007199254740993},
        {"0x1234567890ABCDE1", 0x1234567890ABCDE1},
        {"0x7FFFFFFFFFFFFFFF", Most},
        {"0xFFFFFFFFFFFFFFFF", -1},
        {"0xFFFFFFFFFFFFFFFE", -2},
        {"0x8000000000000000", Least},
        {"1e3", 1000},
        {"2.0", 2},
    };
    for (const auto& [text, number] : rows) {
        EXPECT_EQ(value(Camera(node("IntSwissKnife", element("Formula", text)))), number) << text;
        EXPECT_EQ(value(Camera(node("IntSwissKnife", "<Constant Name=\"C\">" + std::string(text) +
                                                         "</Constant><Formula>C</Formula>"))),
                  number)
            << text;
    }
}

TEST(AConstant, MayBeNegative)
{
    for (const char* formula : {"10 + C", "10 - NEG(C)", "(C + 5) * C / C + 5 - 0"})
        EXPECT_EQ(value(Camera(node("IntSwissKnife",
                                    "<Constant Name=\"C\">-8</Constant>" + element("Formula", formula)))),
                  2)
            << formula;
}

TEST(AFormulaOfReals, HasItsNumbersAsTheyAreWritten)
{
    const std::pair<const char*, int64_t> rows[] = {
        {"-1.5", -15}, {"+1.5", 15}, {"01.50", 15},  {".5", 5}, {"00.5", 5},
        {"5.", 50},    {"1e-1", 1},  {"015E-1", 15}, {"0", 0},  {"0.0", 0}};
    for (const auto& [text, tenfold] : rows) {
        EXPECT_EQ(value(Camera("<SwissKnife Name=\"K\">" + element("Formula", text + std::string(" * 10")) +
                               "</SwissKnife>" + node("Integer", element("pValue", "K")))),
                  tenfold)
            << text;
        EXPECT_EQ(value(Camera("<SwissKnife Name=\"K\"><Constant Name=\"C\">" + std::string(text) +
                               "</Constant><Formula>C * 10</Formula></SwissKnife>" +
                               node("Integer", element("pValue", "K")))),
                  tenfold)
            << text;
    }
}

TEST(AMaximum, OfAll64BitsIsNone)
{
    for (const char* text : {"0xFFFFFFFFFFFFFFFF", "18446744073709551615", "9223372036854775807"}) {
        const Camera camera(
            node("Integer", element("Value", "0") + element("Min", "0") + element("Max", text)));
        EXPECT_EQ(camera.node<IInteger>("N").GetMax(), Most);
        camera.node<IInteger>("N").SetValue(1, true);
    }
    EXPECT_EQ(
        Camera(node("Integer", element("Value", "-5") + element("Max", "-1"))).node<IInteger>("N").GetMax(),
        -1);
}

TEST(ABooleanWithoutACamera, IsTrueOrFalseInWordsToo)
{
    for (const auto& [text, isOn] :
         {std::pair{"true", true}, {"1", true}, {"01", true}, {"false", false}, {"0", false}})
        EXPECT_EQ(Camera(node("Boolean", element("Value", text))).node<IBoolean>("N").GetValue(), isOn)
            << text;
}

TEST(AWordThatIsNotKnown, MakesTheNodeUnusable)
{
    const auto reg = [](const std::string& accessMode, const std::string& properties) {
        return faultOf(registerNode("IntReg", "N", "0", "4", properties, accessMode));
    };
    EXPECT_THAT(reg("RW", element("Endianess", "bigendian")),
                HasSubstr("its Endianess is 'bigendian', which"));
    EXPECT_THAT(reg("RW", element("Sign", "")), HasSubstr("its Sign is ''"));
    EXPECT_THAT(reg("rw", bigEndian), HasSubstr("its AccessMode is 'rw'"));
    EXPECT_THAT(reg("RW", element("ImposedAccessMode", "R")), HasSubstr("its ImposedAccessMode is 'R'"));
}

TEST(AFormula, ReadsABooleanThatSaysTheUsualValuesOutright)
{
    const CountingCamera camera(
        registerNode("IntReg", "R", "0x1", "1", bigEndian) + "<Boolean Name=\"B\">" + element("pValue", "R") +
        element("OnValue", "01") + element("OffValue", "0x0") + "</Boolean>" +
        node("IntSwissKnife", "<pVariable Name=\"V\">B</pVariable><Formula>V + 4</Formula>"));
    EXPECT_EQ(value(camera), 5);
}
