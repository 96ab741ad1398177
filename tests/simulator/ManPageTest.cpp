// SPDX-License-Identifier: Apache-2.0
#include "simulator/Arguments.h"
#include "simulator/config/ReadFarm.h"
#include "simulator/faults/FaultPlan.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>

// What comes with the program: its manual and its examples.
namespace {

using testing::HasSubstr;

std::string contentsOf(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string manPage()
{
    return contentsOf(std::filesystem::path(SOURCE_DIR) / "packaging/man/camera-farm.1");
}

/// The members that are allowed where this one is not.
std::vector<std::string> membersKnownBeside(const std::string& json)
{
    std::vector<std::string> members;
    try {
        simulator::readFarm(json);
    } catch (const simulator::ConfigError& error) {
        const std::string text = error.what();
        const std::string intro = "known here are ";
        const std::string list = text.substr(text.find(intro) + intro.size());
        const std::regex word("\\w+");
        for (std::sregex_iterator each(list.begin(), list.end(), word), end; each != end; ++each)
            members.push_back(each->str());
    }
    return members;
}

TEST(ManPage, NamesEveryMemberOfTheConfiguration)
{
    const std::string page = manPage();
    const auto ofCamera = membersKnownBeside(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "x": 1}]})");
    const auto ofFault = membersKnownBeside(
        R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "faults": [{"command": "ANY", "action": "drop", "x": 1}]}]})");
    const auto ofNeighbour =
        membersKnownBeside(R"({"neighbours": [{"mac": "00:1A:2B:00:00:01", "asks": "dhcp", "x": 1}]})");
    const auto ofFarm = membersKnownBeside(R"({"x": 1})");
    EXPECT_GT(ofCamera.size(), 30u);
    EXPECT_EQ(ofNeighbour.size(), 4u);
    EXPECT_EQ(ofFarm.size(), 3u);
    EXPECT_EQ(ofFault.size(), 6u);
    for (const auto& members : {ofCamera, ofFault, ofNeighbour, ofFarm})
        for (const std::string& member : members)
            EXPECT_TRUE(std::regex_search(page, std::regex("\\n\\.BR? [^\\n]*\\b" + member + "\\b")))
                << member;
    for (const auto& [name, fault] : simulator::faultsByName())
        EXPECT_TRUE(std::regex_search(page, std::regex("\\b" + std::string(name) + "\\b"))) << name;
    for (const std::string_view action : simulator::FaultActionNames)
        EXPECT_THAT(page, HasSubstr("\\(dq" + std::string(action) + "\\(dq"));
}

TEST(ManPage, NamesEveryCommandThatTheUsageNames)
{
    const std::string page = manPage();
    const std::string usage = simulator::Usage;
    const std::regex command("\\n        (\\w+) MAC");
    int commands = 0;
    for (std::sregex_iterator each(usage.begin(), usage.end(), command), end; each != end; ++each) {
        ++commands;
        EXPECT_TRUE(std::regex_search(
            page, std::regex("\\n(\\.BI " + each->str(1) + " |\\\\fB" + each->str(1) + "\\\\fP)")))
            << each->str(1);
    }
    EXPECT_EQ(commands, 9);
}

TEST(Examples, AreAllConfigurationsOfCameras)
{
    int examples = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(SOURCE_DIR) / "simulator/examples")) {
        ++examples;
        EXPECT_NO_THROW(simulator::readFarm(contentsOf(entry.path()))) << entry.path();
    }
    EXPECT_EQ(examples, 7);
}

} // namespace
