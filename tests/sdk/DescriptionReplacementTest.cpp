// SPDX-License-Identifier: Apache-2.0
// What the completion of a description puts in the place of nodes that are there.
#include "sdk/description/DescriptionCompletion.h"
#include "tests/support/Zips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr std::size_t Size = 3'145'728;

const std::string Modes =
    R"(<Boolean Name="GevCurrentIPConfigurationPersistentIP"><pValue>A</pValue></Boolean>
<Group><Boolean NameSpace="Standard" Name='GevCurrentIPConfigurationDHCP'><pValue>B</pValue></Boolean></Group>)";
const std::string Reset = R"(<Command Name="DeviceReset"/>)";
const std::string Register = R"(<StringReg Name="UserNameReg" NameSpace="Custom"><ToolTip>Name</ToolTip>
<Address> 0xE8 </Address><Length>16</Length><AccessMode>RW</AccessMode><pPort>Cam</pPort></StringReg>)";

/// Everything, and these nodes.
std::string description(const std::string& nodes)
{
    return "<?xml version=\"1.0\"?>\r\n<RegisterDescription ModelName='M'><!-- Name=\"DeviceUserID\" -->\r\n"
           "<Category Name='Root'><pFeature>DeviceUserID</pFeature></Category>" +
           nodes + Modes + Reset + "<Port Name=\"Cam\"/>\r\n</RegisterDescription>\r\n";
}

std::string completed(const std::string& text, unsigned interface = 0)
{
    const auto bytes = sdk::completedDescription({text.begin(), text.end()}, true, interface, Size);
    return {bytes.begin(), bytes.end()};
}

/// What has been inserted, if nothing else has changed but these names: what stood there before and does now.
std::string insertedInto(std::string before, const std::string& after,
                         const std::vector<std::pair<std::string, std::string>>& renamed)
{
    for (const auto& [from, to] : renamed)
        before.replace(before.find(from), from.size(), to);
    const auto end = before.rfind("</RegisterDescription>");
    EXPECT_EQ(after.substr(0, end), before.substr(0, end));
    EXPECT_THAT(after, testing::EndsWith(before.substr(end)));
    return after.substr(end, after.size() - before.size());
}

pugi::xml_node nodeOf(const pugi::xml_document& document, const std::string& name)
{
    const auto found = document.select_nodes(("//*[normalize-space(@Name)='" + name + "']").c_str());
    EXPECT_EQ(found.size(), 1u) << name;
    return found.empty() ? pugi::xml_node() : found[0].node();
}

/// The node of that name in the completed text, in a document of its own.
struct Found
{
    Found(const std::string& text, const std::string& name)
    {
        EXPECT_TRUE(document.load_string(text.c_str()));
        node = nodeOf(document, name);
    }

    std::string text(const char* child) const { return node.child_value(child); }

    pugi::xml_document document;
    pugi::xml_node node;
};

std::string string(const std::string& properties, const std::string& name = "DeviceUserID")
{
    return "<String Name=\"" + name + "\">" + properties + "</String>";
}

} // namespace

TEST(AUserNameThatIsAString, BecomesTheRegisterThatItStandsFor)
{
    const std::string before = description(string("<pValue> UserNameReg\n</pValue>") + Register);
    const std::string after = completed(before);
    EXPECT_EQ(
        insertedInto(before, after, {{"<String Name=\"DeviceUserID\"", "<String Name=\"DeviceUserID_\""}}),
        "\n<StringReg Name=\"DeviceUserID\" NameSpace=\"Standard\"><Address> 0xE8 "
        "</Address><Length>16</Length>"
        "<AccessMode>RW</AccessMode><pPort>Cam</pPort></StringReg>\n");
    EXPECT_EQ(completed(after), after);
}

TEST(AUserNameThatIsAString, MayStandForTheRegisterByWayOfOthers)
{
    const std::string text =
        completed(description(string("<pValue>One</pValue>") + string("<pValue>Two</pValue>", "One") +
                              string("<pValue>UserNameReg</pValue>", " Two ") + Register));
    const Found found(text, "DeviceUserID");
    EXPECT_STREQ(found.node.name(), "StringReg");
    EXPECT_EQ(found.text("Length"), "16");
}

TEST(AUserNameThatIsAString, IsFoundInWhateverWayItsNameIsWritten)
{
    for (const char* begin : {"<String\r\n Name = 'DeviceUserID' NameSpace=\"Custom\">",
                              "<String ToolTip=\"the > Name='x'\" Name=\" DeviceUserID\t\">",
                              "<String MergePriority='1'\tName=\"DeviceUserID\">"}) {
        const std::string text =
            completed(description(std::string(begin) + "<pValue>UserNameReg</pValue></String>" + Register));
        EXPECT_STREQ(Found(text, "DeviceUserID").node.name(), "StringReg") << begin;
        EXPECT_STREQ(Found(text, "DeviceUserID_").node.name(), "String") << begin;
    }
    const std::string marked =
        "\xEF\xBB\xBF" + description("<!-- \xFC\xE4 --><ToolTip>\xF6</ToolTip>" +
                                     string("<pValue>UserNameReg</pValue>") + Register);
    EXPECT_THAT(completed(marked), HasSubstr("<String Name=\"DeviceUserID_\">"));
}

TEST(AUserNameThatIsAString, GetsANameThatNobodyHas)
{
    const std::string text =
        completed(description(string("<pValue>UserNameReg</pValue>") + Register +
                              "<Integer Name='DeviceUserID_'/><Integer Name='DeviceUserID__'/>"));
    EXPECT_STREQ(Found(text, "DeviceUserID___").node.name(), "String");
}

TEST(AUserNameThatIsAString, KeepsItsConditions)
{
    const auto made = [](const std::string& ofString, const std::string& ofRegister) {
        std::string reg = Register;
        reg.insert(reg.find("<Address>"), ofRegister);
        return completed(description(string(ofString + "<pValue>UserNameReg</pValue>") + reg));
    };
    for (const char* condition : {"pIsImplemented", "pIsAvailable", "pIsLocked", "ImposedAccessMode"}) {
        const auto with = [&](const std::string& value) {
            return std::string("<") + condition + ">" + value + "</" + condition + ">";
        };
        EXPECT_EQ(Found(made(with(" RO "), ""), "DeviceUserID").text(condition), "RO") << condition;
        EXPECT_EQ(Found(made("", with("RO")), "DeviceUserID").text(condition), "RO") << condition;
        EXPECT_EQ(Found(made(with("RO"), with("RO")), "DeviceUserID").text(condition), "RO") << condition;
    }
    const auto imposed = [&](const std::string& a, const std::string& b) {
        const auto property = [](const std::string& mode) {
            return "<ImposedAccessMode>" + mode + "</ImposedAccessMode>";
        };
        return Found(made(property(a), property(b)), "DeviceUserID").text("ImposedAccessMode");
    };
    EXPECT_EQ(imposed("RO", "RW"), "RO");
    EXPECT_EQ(imposed("RW", "RO"), "RO");
    EXPECT_EQ(imposed("WO", "RO"), "RO");
    EXPECT_EQ(imposed("RW", "WO"), "WO");
}

TEST(AUserNameThatIsAString, MayBeUsedWhenBothItAndItsRegisterMayBe)
{
    const std::pair<const char*, const char*> rows[] = {{"pIsImplemented", "(V0<>0)&&(V7<>0)"},
                                                        {"pIsAvailable", "(V0<>0)&&(V7<>0)"},
                                                        {"pIsLocked", "(V0<>0)||(V7<>0)"}};
    for (const auto& [condition, formula] : rows) {
        const auto with = [&, condition = condition](const std::string& value) {
            return std::string("<") + condition + ">" + value + "</" + condition + ">";
        };
        std::string reg = Register;
        reg.insert(reg.find("<Address>"), with("Two"));
        const std::string text =
            completed(description(string(with("One") + "<pValue>UserNameReg</pValue>") + reg));
        const Found both(text, Found(text, "DeviceUserID").text(condition));
        EXPECT_STREQ(both.node.name(), "IntSwissKnife");
        EXPECT_EQ(both.text("Formula"), formula);
        EXPECT_EQ(both.text("pVariable"), "One");
        EXPECT_STREQ(both.node.last_child().previous_sibling().child_value(), "Two");
    }
}

TEST(AUserNameThatIsAString, StaysWhenItStandsForNoStringRegister)
{
    for (const std::string& nodes : {
             string("<Value>Camera</Value>"),
             string("<pValue>Gone</pValue>"),
             string("<pValue>UserNameReg</pValue>") + "<Register Name=\"UserNameReg\"/>",
             string("<pValue>UserNameReg</pValue>") + "<IntReg Name=\"UserNameReg\"/>",
             string("<pValue>UserNameReg</pValue>") + string("<Value>x</Value>", "UserNameReg"),
             string("<pValue>DeviceUserID</pValue>"),
             string("<pValue>One</pValue>") + string("<pValue>DeviceUserID</pValue>", "One"),
             std::string("<StringReg Name='DeviceUserID'/>"),
             std::string("<StringReg Name=' DeviceUserID '/>"),
         }) {
        const std::string text = description(nodes);
        EXPECT_EQ(completed(text), text) << nodes;
    }
}

TEST(ANameOfAPartOfANode, IsNotTheFeatures)
{
    const std::string text =
        completed(description("<IntSwissKnife Name='K'><pVariable Name='DeviceUserID'>N</pVariable>"
                              "<Constant Name='DeviceUserID'>1</Constant></IntSwissKnife>"));
    EXPECT_THAT(text, HasSubstr("<StringReg Name=\"DeviceUserID\""));
}

TEST(AnotherInterfaceThanTheFirst, HasItsModesInItsOwnRegister)
{
    const std::string before = description(Register);
    for (const auto& [interface, address] : {std::pair{1u, "0x68C"}, {2u, "0x70C"}, {3u, "0x78C"}}) {
        const std::string after = completed(before, interface);
        const std::string inserted = insertedInto(
            before, after,
            {{"\"GevCurrentIPConfigurationPersistentIP\"", "\"GevCurrentIPConfigurationPersistentIP_\""},
             {"'GevCurrentIPConfigurationDHCP'", "'GevCurrentIPConfigurationDHCP_'"}});
        EXPECT_THAT(inserted, AllOf(HasSubstr("DeviceUserID"), Not(HasSubstr("DeviceReset"))));
        for (const auto& [name, bit] : {std::pair{"GevCurrentIPConfigurationPersistentIP", "31"},
                                        {"GevCurrentIPConfigurationDHCP", "30"}}) {
            const Found reg(after, Found(after, name).text("pValue"));
            EXPECT_EQ(reg.text("Address"), address);
            EXPECT_EQ(reg.text("Bit"), bit);
            EXPECT_EQ(reg.text("Endianess"), "BigEndian");
            EXPECT_EQ(reg.text("pPort"), "Cam");
        }
    }
}

TEST(AnotherInterfaceThanTheFirst, HasModesThatTheFileLacks)
{
    const std::string text = completed("<RegisterDescription><Port Name='Device'/></RegisterDescription>", 1);
    const Found reg(text, Found(text, "GevCurrentIPConfigurationDHCP").text("pValue"));
    EXPECT_EQ(reg.text("Address"), "0x68C");
}

TEST(AReplacement, IsMadeInAZipTooWhichIsThenUnpacked)
{
    const std::string text = description(string("<pValue>UserNameReg</pValue>") + Register);
    EXPECT_EQ(completed(zipOf({{"a.xml", text}})), completed(text));
}

TEST(AReplacement, IsNotMadeWhereTheEndOfTheTextIsNotWhereItSeems)
{
    const std::string text = "<RegisterDescription>" + string("<pValue>UserNameReg</pValue>") + Register +
                             "<Port Name='Cam'/></RegisterDescription><!-- </RegisterDescription> -->";
    EXPECT_EQ(completed(text), text);
}

TEST(NulsAroundAFile, GoWhenItIsCompletedAndStayWhenItIsNot)
{
    const std::string text = description(string("<pValue>UserNameReg</pValue>") + Register);
    const std::string nuls("\0\0\n\0", 4);
    EXPECT_EQ(completed(nuls + text + nuls), completed(text));
    const std::string whole = description("<StringReg Name='DeviceUserID'/>");
    EXPECT_EQ(completed(nuls + whole + nuls), nuls + whole + nuls);
}
