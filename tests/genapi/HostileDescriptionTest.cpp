// SPDX-License-Identifier: Apache-2.0
#include "tests/genapi/Descriptions.h"
#include "tests/genapi/MemoryPort.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi;
using testing::HasSubstr;

namespace {

std::string numbered(int i)
{
    return "N" + std::to_string(i);
}

std::string knife(const std::string& name, const std::string& variable, const std::string& formula)
{
    return "<IntSwissKnife Name=\"" + name + "\"><pVariable Name=\"V\">" + variable + "</pVariable>" +
           element("Formula", formula) + "</IntSwissKnife>\n";
}

std::string integer(const std::string& name, const std::string& properties)
{
    return "<Integer Name=\"" + name + "\">" + properties + "</Integer>\n";
}

/// A node that refers to another in one of the ways there are.
struct Link
{
    const char* name;
    std::function<std::string(const std::string& from, const std::string& to)> node;
};

std::string registerWith(const std::string& name, const std::string& properties)
{
    return "<IntReg Name=\"" + name + "\">" + element("Length", "4") + element("AccessMode", "RW") +
           properties + "</IntReg>\n";
}

Link property(const char* name, const char* kind)
{
    return {name, [=](const std::string& from, const std::string& to) {
                const std::string extra =
                    std::string(name).starts_with("pValue") && std::string(name) != "pValue"
                        ? element("pIndex", "One")
                        : std::string();
                return "<" + std::string(kind) + " Name=\"" + from + "\">" + extra + element(name, to) +
                       "</" + kind + ">\n";
            }};
}

const std::vector<Link> valueLinks{
    property("pValue", "Integer"),
    property("pValue", "Boolean"),
    property("pValue", "Enumeration"),
    property("pValue", "Float"),
    property("pValue", "String"),
    property("pValue", "Command"),
    property("pValue", "IntConverter"),
    property("pValue", "Converter"),
    property("pCommandValue", "Command"),
    property("pIndex", "Integer"),
    property("pValueIndexed", "Integer"),
    property("pValueDefault", "Integer"),
    property("pPort", "IntReg"),
    property("pPort", "Port"),
    property("pVariable", "SwissKnife"),
    property("pVariable", "Converter"),
    {"formula", [](const auto& from, const auto& to) { return knife(from, to, "V + 1"); }},
    {"address", [](const auto& from, const auto& to) { return registerWith(from, element("pAddress", to)); }},
    {"index", [](const auto& from, const auto& to) { return registerWith(from, element("pIndex", to)); }},
    {"offset",
     [](const auto& from, const auto& to) {
         return registerWith(from, "<pIndex pOffset=\"" + to + "\">One</pIndex>");
     }},
    {"formula inside a register",
     [](const auto& from, const auto& to) {
         return registerWith(from, "<IntSwissKnife><pVariable Name=\"V\">" + to +
                                       "</pVariable><Formula>V</Formula></IntSwissKnife>");
     }},
    {"structure",
     [](const auto& from, const auto& to) {
         return "<StructReg><Length>4</Length>" + element("pAddress", to) + "<StructEntry Name=\"" + from +
                "\"><Bit>1</Bit></StructEntry></StructReg>\n";
     }},
    {"white space",
     [](const auto& from, const auto& to) { return integer(from, element("pValue", "\n " + to + " ")); }},
    {"group", [](const auto& from,
                 const auto& to) { return "<Group>" + integer(from, element("pValue", to)) + "</Group>"; }},
};

/// From these nothing is followed further than the value of the node they lead to.
const std::vector<const char*> otherLinks{"pMin",         "pMax",      "pInc",      "pIsImplemented",
                                          "pIsAvailable", "pIsLocked", "pSelected", "pInvalidator"};

/// Uses the node in all ways; exceptions are fine, anything else is not.
void touch(const INodeMap& map, const char* name)
{
    const auto tolerate = [](const std::function<void()>& action) {
        try {
            action();
        } catch (const GenICam::GenericException&) {
            SUCCEED();
        }
    };
    if (auto* node = map.GetNode(name))
        tolerate([&] { node->GetAccessMode(); });
    if (auto* number = nodeAs<IInteger>(map, name)) {
        tolerate([&] { number->SetValue(1, true); });
        tolerate([&] { number->SetValue(number->GetValue(), false); });
    }
    if (auto* flag = nodeAs<IBoolean>(map, name))
        tolerate([&] { flag->SetValue(flag->GetValue(), true); });
    if (auto* bytes = nodeAs<IRegister>(map, name))
        tolerate([&] {
            std::vector<uint8_t> data(static_cast<std::size_t>(bytes->GetLength()));
            bytes->Get(data.data(), bytes->GetLength());
            bytes->Set(data.data(), bytes->GetLength(), true);
        });
    if (auto* command = nodeAs<ICommand>(map, name))
        tolerate([&] { command->Execute(true); });
}

} // namespace

TEST(ACircleOfValues, IsRefusedWhateverItsLengthAndKind)
{
    for (const auto& link : valueLinks)
        for (int length = 1; length <= 100; ++length) {
            std::string nodes = integer("One", element("Value", "1"));
            for (int i = 0; i < length; ++i)
                nodes += link.node(numbered(i), numbered((i + 1) % length));
            EXPECT_THAT(refusalOf(description(nodes)), HasSubstr("depend on themselves"))
                << link.name << length;
        }
}

TEST(ACircleOfValues, IsRefusedWhenItsKindsAreMixed)
{
    std::string nodes = integer("One", element("Value", "1"));
    const auto count = static_cast<int>(valueLinks.size());
    for (int i = 0; i < count; ++i)
        nodes += valueLinks[static_cast<std::size_t>(i)].node(numbered(i), numbered((i + 1) % count));
    EXPECT_THAT(refusalOf(description(nodes)), HasSubstr("depend on themselves"));
}

TEST(ACircleOfBoundsOrConditions, IsNoneForTheValues)
{
    for (const auto* link : otherLinks)
        for (int length = 1; length <= 100; ++length) {
            std::string nodes;
            for (int i = 0; i < length; ++i)
                nodes +=
                    integer(numbered(i), element("Value", "1") + element(link, numbered((i + 1) % length)));
            const auto map = load(description(nodes));
            EXPECT_EQ(nodeAs<IInteger>(*map, "N0")->GetValue(), 1);
            touch(*map, "N0");
        }
}

TEST(ALengthByReference, IsTakenFromConstantsOnly)
{
    for (int length = 1; length <= 100; ++length) {
        std::string nodes;
        for (int i = 0; i < length; ++i)
            nodes += "<Register Name=\"" + numbered(i) + "\">" + element("Address", "0") +
                     element("pLength", numbered((i + 1) % length)) + element("pPort", "Device") +
                     "</Register>";
        const auto map = load(description(nodes));
        EXPECT_THAT(textOf<GenICam::AccessException>([&] { nodeAs<IRegister>(*map, "N0")->GetLength(); }),
                    HasSubstr("length"));
    }
}

TEST(AChain, IsFollowedAsFarAsRealOnesGo)
{
    for (const auto& [length, isRefused] : {std::pair{100, false}, {129, true}, {20'000, true}}) {
        std::string nodes =
            registerNode("IntReg", numbered(length), "0", "4", element("Endianess", "BigEndian"));
        for (int i = 0; i < length; ++i)
            nodes += i % 2 == 0 ? integer(numbered(i), element("pValue", numbered(i + 1)))
                                : knife(numbered(i), numbered(i + 1), "V + 1");
        if (isRefused) {
            EXPECT_THAT(refusalOf(description(nodes)), HasSubstr("in a row")) << length;
            continue;
        }
        const auto map = load(description(nodes));
        MemoryPort port;
        map->Connect(&port, "Device");
        EXPECT_EQ(nodeAs<IInteger>(*map, "N0")->GetValue(), length / 2);
    }
}

TEST(AnEvaluation, IsRefusedWhenItWouldNeverEnd)
{
    std::string doubling = integer("N60", element("Value", "1"));
    for (int i = 0; i < 60; ++i)
        doubling += "<IntSwissKnife Name=\"" + numbered(i) + "\"><pVariable Name=\"A\">" + numbered(i + 1) +
                    "</pVariable><pVariable Name=\"B\">" + numbered(i + 1) +
                    "</pVariable><Formula>A+B</Formula></IntSwissKnife>";
    EXPECT_THAT(refusalOf(description(doubling)), HasSubstr("too long to evaluate"));

    std::string bounds = integer("N60", element("Value", "1"));
    for (int i = 0; i < 60; ++i)
        bounds +=
            integer(numbered(i), element("pValue", numbered(i + 1)) + element("pValue", numbered(i + 1)));
    EXPECT_THAT(refusalOf(description(bounds)), HasSubstr("too long to evaluate"));

    std::string expressions = "<Expression Name=\"E60\">1</Expression>";
    for (int i = 0; i < 60; ++i)
        expressions += "<Expression Name=\"E" + std::to_string(i) + "\">E" + std::to_string(i + 1) + "+E" +
                       std::to_string(i + 1) + "</Expression>";
    EXPECT_THAT(refusalOf(description("<IntSwissKnife Name=\"N\">" + expressions +
                                      "<Formula>E0</Formula></IntSwissKnife>")),
                HasSubstr("longer than"));
    EXPECT_THAT(
        refusalOf(description("<IntSwissKnife Name=\"N\"><Expression Name=\"A\">B</Expression><Expression "
                              "Name=\"B\">A</Expression><Formula>A</Formula></IntSwissKnife>")),
        HasSubstr("without end"));
}

TEST(AFormula, IsRefusedBeyondAnyRealOnesSize)
{
    std::string sum = "1";
    while (sum.size() < 1'000'000)
        sum += "+1";
    EXPECT_THAT(refusalOf(description(knife("N", "One", sum))), HasSubstr("characters"));
    for (const char* begin : {"(", "1+(", "NEG("}) {
        std::string brackets;
        for (int i = 0; i < 1000; ++i)
            brackets += begin;
        EXPECT_THAT(refusalOf(description(knife("N", "One", brackets + "1" + std::string(1000, ')')))),
                    HasSubstr("brackets"));
        EXPECT_THAT(refusalOf(description(knife("N", "One", brackets))), HasSubstr("brackets"));
    }
}

TEST(ADivision, OfTheSmallestNumberByMinusOneIsHarmless)
{
    for (const auto& [formula, result] : {std::pair{"A / B", std::numeric_limits<int64_t>::min()},
                                          {"A % B", int64_t{0}},
                                          {"A / (0 - C / C)", std::numeric_limits<int64_t>::min()},
                                          {"A / X", std::numeric_limits<int64_t>::min()},
                                          {"C / B", int64_t{-7}},
                                          {"C / 2 * 2", int64_t{6}},
                                          {"C % (B * 4)", int64_t{3}}}) {
        const auto signedBig = element("Sign", "Signed") + element("Endianess", "BigEndian");
        const auto map = load(description(
            registerNode("IntReg", "A", "0", "8", signedBig) +
            registerNode("IntReg", "B", "8", "4", signedBig) +
            "<IntSwissKnife Name=\"N\"><pVariable Name=\"A\">A</pVariable><pVariable Name=\"B\">B</pVariable>"
            "<Constant Name=\"C\">7</Constant><Expression Name=\"X\">B / 1</Expression>" +
            element("Formula", formula) + "</IntSwissKnife>"));
        MemoryPort port;
        port.put(0, {0x80, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF});
        map->Connect(&port, "Device");
        EXPECT_EQ(nodeAs<IInteger>(*map, "N")->GetValue(), result) << formula;
    }
}

TEST(ANodeOfTheWrongKind, DoesNoHarmWhereverItIsReferredTo)
{
    const std::string targets =
        integer("Integer", element("Value", "3")) + registerNode("StringReg", "Text", "0", "16") +
        registerNode("Register", "Bytes", "0", "9") +
        "<Float Name=\"Float\"><Value>1.5</Value></Float><String Name=\"String\"><Value>x"
        "</Value></String><Command Name=\"Command\"><Value>0</Value></Command><Boolean "
        "Name=\"Boolean\"><Value>1</Value></Boolean><Enumeration Name=\"Enumeration\"><Value>1"
        "</Value></Enumeration><Category Name=\"Category\"/><Port Name=\"Chunk\"><ChunkID>1"
        "</ChunkID></Port>";
    for (const char* to : {"Integer", "Text", "Bytes", "Float", "String", "Command", "Boolean", "Enumeration",
                           "Category", "Chunk", "Device", "", "Nowhere"}) {
        for (const auto& link : valueLinks) {
            const auto map =
                load(description(integer("One", element("Value", "1")) + targets + link.node("N0", to)));
            MemoryPort port;
            map->Connect(&port, "Device");
            touch(*map, "N0");
        }
        for (const auto* link : otherLinks) {
            const auto map =
                load(description(targets + integer("N0", element("Value", "1") + element(link, to))));
            touch(*map, "N0");
        }
    }
}
