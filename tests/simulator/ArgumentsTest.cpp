// SPDX-License-Identifier: Apache-2.0
#include "simulator/Arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace simulator;
using testing::HasSubstr;
using Words = std::vector<std::string>;

std::string errorOf(const Words& words)
{
    try {
        parseArguments(words);
    } catch (const ArgumentError& error) {
        return error.what();
    }
    return "no error";
}

TEST(Arguments, NameAFarmToRun)
{
    const Arguments farm =
        parseArguments({"--config", "f.json", "--interface", "eth0", "--control", "/run/c"});
    EXPECT_EQ(farm.interface, "eth0");
    EXPECT_EQ(farm.configFile, "f.json");
    EXPECT_EQ(farm.controlSocket, "/run/c");
    EXPECT_FALSE(farm.command);
}

TEST(Arguments, JoinACommandsWords)
{
    const Arguments send =
        parseArguments({"--control", "/run/c", "send", "fault", "001A2B000001", "ARP drop", "2"});
    EXPECT_EQ(send.command, "fault 001A2B000001 ARP drop 2");
}

TEST(Arguments, AskForHelpWhateverElseIsThere)
{
    EXPECT_TRUE(parseArguments({"--interface", "eth0", "--help"}).wantsHelp);
}

TEST(Arguments, SayWhichOneIsWrongAndWhatIsAllowed)
{
    EXPECT_THAT(errorOf({}), HasSubstr("--interface IF is missing"));
    EXPECT_THAT(errorOf({"--interface", "eth0"}), HasSubstr("--config FILE is missing"));
    EXPECT_THAT(errorOf({"--interface"}), HasSubstr("--interface needs a value"));
    EXPECT_THAT(errorOf({"--speed", "9"}), HasSubstr("unknown argument \"--speed\": --interface, --config"));
    EXPECT_THAT(errorOf({"--control", "/run/c", "send"}), HasSubstr("send needs a command: unplug"));
    EXPECT_THAT(errorOf({"send", "show"}), HasSubstr("send needs --control SOCKET"));
    EXPECT_THAT(errorOf({"--control", "/c", "--config", "f", "send", "show"}),
                HasSubstr("with --control only"));
}

} // namespace
