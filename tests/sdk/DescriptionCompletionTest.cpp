// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/DescriptionCompletion.h"

#include "tests/support/Zips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

using sdk::completedDescription;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr std::size_t Size = 3'145'728;

const std::string Modes = R"(<Boolean Name="GevCurrentIPConfigurationPersistentIP"/>
<Group Comment="x"><Group><Boolean NameSpace="Standard" Name='GevCurrentIPConfigurationDHCP'/></Group></Group>)";
const std::string UserName = R"(<StringReg Name="DeviceUserID"/>)";
const std::string Reset = R"(<Command Name="DeviceReset"/>)";
const std::string Port = R"(<Port Name="Device"/>)";

/// The standard's frame round these nodes.
std::string description(const std::string& nodes)
{
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="M" xmlns="http://www.genicam.org/GenApi/Version_1_1">
)" + nodes +
           "\n</RegisterDescription>\n";
}

base::Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

std::string complete(const std::string& text, bool hasUserName = true, std::size_t maxSize = Size,
                     unsigned interface = 0)
{
    const auto bytes = completedDescription(bytesOf(text), hasUserName, interface, maxSize);
    return {bytes.begin(), bytes.end()};
}

struct Parsed
{
    explicit Parsed(const std::string& text)
    {
        const auto result = document.load_string(text.c_str());
        EXPECT_TRUE(result) << result.description();
    }

    /// The only node of that name, below the root.
    pugi::xml_node node(const std::string& name) const
    {
        const auto found = document.select_nodes(("//*[@Name='" + name + "']").c_str());
        EXPECT_EQ(found.size(), 1u) << name;
        return found.empty() ? pugi::xml_node() : found[0].node();
    }

    std::string text(const std::string& name, const char* child) const
    {
        return node(name).child_value(child);
    }

    pugi::xml_document document;
};

} // namespace

TEST(DescriptionCompletion, LeavesACompleteFileAsItIsToTheByte)
{
    const std::string complete1 = description(Port + Modes + UserName + Reset);
    for (const std::string& text : {complete1, complete1 + std::string(3, '\0'), "\xEF\xBB\xBF" + complete1})
        EXPECT_EQ(complete(text), text);
    const auto archive = bytesOf(zipOf({{"a.xml", complete1}}));
    EXPECT_EQ(completedDescription(archive, true, 0, Size), archive);
}

TEST(DescriptionCompletion, AddsExactlyWhatIsMissing)
{
    const std::string all[] = {Modes, UserName, Reset};
    const char* const names[] = {"GevCurrentIPConfigurationDHCP", "DeviceUserID", "DeviceReset"};
    for (unsigned present = 0; present < 7; ++present) {
        std::string nodes = Port;
        for (unsigned i = 0; i < 3; ++i)
            nodes += (present >> i & 1) != 0 ? all[i] : "";
        const std::string before = description(nodes);
        const std::string after = complete(before);
        const auto end = before.find("</RegisterDescription>");
        EXPECT_EQ(after.substr(0, end), before.substr(0, end)) << "what was there stays as it was";
        EXPECT_THAT(after, testing::EndsWith(before.substr(end)));
        const Parsed parsed(after);
        for (const char* name : names)
            EXPECT_TRUE(parsed.node(name)) << name << " with " << present;
    }
}

TEST(DescriptionCompletion, AddsTheModesAsBitsOfTheStandardsRegister)
{
    const Parsed parsed(complete(description(Port)));
    const std::pair<const char*, const char*> rows[] = {{"GevCurrentIPConfigurationPersistentIP", "31"},
                                                        {"GevCurrentIPConfigurationDHCP", "30"}};
    for (const auto& [name, bit] : rows) {
        EXPECT_STREQ(parsed.node(name).name(), "Boolean");
        const auto reg = parsed.text(name, "pValue");
        EXPECT_STREQ(parsed.node(reg).name(), "MaskedIntReg");
        EXPECT_EQ(parsed.text(reg, "Address"), "0x14");
        EXPECT_EQ(parsed.text(reg, "Length"), "4");
        EXPECT_EQ(parsed.text(reg, "Bit"), bit);
        EXPECT_EQ(parsed.text(reg, "Endianess"), "BigEndian");
        EXPECT_EQ(parsed.text(reg, "AccessMode"), "RW");
        EXPECT_EQ(parsed.text(reg, "pPort"), "Device");
    }
}

TEST(DescriptionCompletion, AddsTheUserNameAsStringRegisterIfTheCameraHasOne)
{
    const Parsed parsed(complete(description(Port)));
    EXPECT_STREQ(parsed.node("DeviceUserID").name(), "StringReg");
    EXPECT_EQ(parsed.text("DeviceUserID", "Address"), "0xE8");
    EXPECT_EQ(parsed.text("DeviceUserID", "Length"), "16");
    EXPECT_THAT(complete(description(Port), false),
                AllOf(HasSubstr("DeviceReset"), Not(HasSubstr("DeviceUserID"))));
    const std::string allButTheName = description(Port + Modes + Reset);
    EXPECT_EQ(complete(allButTheName, false), allButTheName);
}

TEST(DescriptionCompletion, AddsTheResetAsCommandOutsideTheCamerasAddresses)
{
    const Parsed parsed(complete(description(Port)));
    EXPECT_STREQ(parsed.node("DeviceReset").name(), "Command");
    EXPECT_EQ(parsed.text("DeviceReset", "CommandValue"), "1");
    const auto reg = parsed.text("DeviceReset", "pValue");
    EXPECT_STREQ(parsed.node(reg).name(), "IntReg");
    EXPECT_EQ(std::stoull(parsed.text(reg, "Address"), nullptr, 16), sdk::IpRestartAddress);
    EXPECT_EQ(parsed.text(reg, "AccessMode"), "WO");
}

TEST(DescriptionCompletion, UsesTheFilesOwnPort)
{
    struct Row
    {
        const char* ports;
        const char* used;
    };
    const Row rows[] = {
        {R"(<Port Name="Device"/>)", "Device"},
        {R"(<Port Name="Other"/><Group><Port Name="Device"/></Group>)", "Device"},
        {R"(<Port Name="Chunk"><ChunkID>1</ChunkID></Port><Port Name="Cam"/>)", "Cam"},
        {R"(<Port Name="Event"><EventID>9001</EventID></Port><Port Name="Cam"/>)", "Cam"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Parsed(complete(description(row.ports))).text("DeviceUserID", "pPort"), row.used);
}

TEST(DescriptionCompletion, TakesNoNameThatIsTaken)
{
    const Parsed parsed(
        complete(description(Port + R"(<Integer Name="DeviceResetReg"/><Integer Name="DeviceResetReg_"/>)")));
    const auto reg = parsed.text("DeviceReset", "pValue");
    EXPECT_STREQ(parsed.node(reg).name(), "IntReg");
}

TEST(DescriptionCompletion, IsNotMisledByOtherUsesOfTheNames)
{
    const std::string text = description(Port + R"(
<!-- <Command Name="DeviceReset"/> </RegisterDescription> -->
<![CDATA[<Command Name="DeviceReset"/>]]>
<Category Name="Root"><pFeature>DeviceReset</pFeature></Category>
<Enumeration Name="E"><EnumEntry Name="DeviceReset"><Value>1</Value></EnumEntry></Enumeration>)");
    EXPECT_EQ(Parsed(complete(text)).document.select_nodes("//Command[@Name='DeviceReset']").size(), 1u);
}

TEST(DescriptionCompletion, UnpacksAnIncompleteFileAndAddsToIt)
{
    const std::string text = description(Port);
    const auto bytes = completedDescription(bytesOf(zipOf({{"a.xml", text}})), true, 0, Size);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), complete(text));
}

TEST(DescriptionCompletion, AddsBeforeTheNulsThatSomeFilesEndIn)
{
    const std::string text = description(Port);
    EXPECT_EQ(complete(text + std::string(3, '\0')), complete(text));
}

TEST(DescriptionCompletion, LeavesAsItIsWhatWouldBeTooLong)
{
    const std::string text = description(Port);
    const auto completed = complete(text);
    EXPECT_EQ(complete(text, true, completed.size()), completed);
    EXPECT_EQ(complete(text, true, completed.size() - 1), text);
    const auto archive = bytesOf(zipOf({{"a.xml", text}}));
    EXPECT_EQ(completedDescription(archive, true, 0, completed.size() - 1), archive);
}

TEST(DescriptionCompletion, LeavesAsItIsWhatIsNoDescription)
{
    const std::string rows[] = {
        "",
        std::string(1, '\0'),
        "no XML",
        "<RegisterDescription>",
        "<RegisterDescription><Port Name='Device'/></RegisterDescription",
        "<Other><Port Name='Device'/></Other>",
        "<g:RegisterDescription xmlns:g='x'><g:Port Name='Device'/></g:RegisterDescription>",
        "PK\3\4 no archive",
        description(""), // no port
        description("<Port Name='&lt;b>'/>"),
        "<RegisterDescription/>",
        "<RegisterDescription><Port Name='D'/></RegisterDescription><!-- </RegisterDescription> -->",
    };
    for (const std::string& text : rows)
        EXPECT_EQ(complete(text), text);
}

TEST(DescriptionCompletion, EndsForAFileThatNestsOrRepeatsWithoutEnd)
{
    const std::string deep = description(Port + [] {
        std::string text;
        for (int i = 0; i < 400'000; ++i)
            text += "<a>";
        for (int i = 0; i < 400'000; ++i)
            text += "</a>";
        return text;
    }());
    EXPECT_THAT(complete(deep, true, 2 * deep.size()), HasSubstr("Name=\"DeviceReset\""));
    std::string bomb = R"(<!DOCTYPE R [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;&a;">]>)";
    bomb += description(Port + "<ToolTip>&b;&b;&b;</ToolTip>").substr(39);
    EXPECT_LE(complete(bomb).size(), bomb.size() + 4000);
}
