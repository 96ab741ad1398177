// SPDX-License-Identifier: Apache-2.0
#include "tests/support/NetworkLab.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;

const std::string OneCamera = R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20"}]})";

/// The program as a user starts it.
class FarmProgram : public testing::Test
{
protected:
    FarmProgram()
    {
        std::filesystem::create_directory(directory);
        space.run(
            "ip link add name eth0 type veth peer name peer0\nip link set eth0 up\nip link set peer0 up");
    }
    ~FarmProgram() override { std::filesystem::remove_all(directory); }

    lab::Output run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), CAMERA_FARM);
        return space.execute(arguments);
    }

    lab::Process start() const
    {
        return space.start(
            {CAMERA_FARM, "--interface", "eth0", "--config", configFile(OneCamera), "--control", socket});
    }

    std::string configFile(const std::string& json) const
    {
        std::ofstream(directory + "/farm.json") << json;
        return directory + "/farm.json";
    }

    const std::string directory = testing::TempDir() + "farm-program-" + std::to_string(::getpid());
    const std::string socket = directory + "/control";
    lab::Namespace space;
};

TEST_F(FarmProgram, RefusesWrongArgumentsInOneLineWithStatus2)
{
    const lab::Output output = run({"--interface", "eth0", "--speed"});
    EXPECT_EQ(output.status, 2);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(output.standardError, HasSubstr("camera-farm: unknown argument \"--speed\""));
    EXPECT_EQ(std::count(output.standardError.begin(), output.standardError.end(), '\n'), 1);
}

TEST_F(FarmProgram, TellsItsUsageOnStandardOutput)
{
    const lab::Output output = run({"--help"});
    EXPECT_EQ(output.status, 0);
    EXPECT_THAT(output.standardOutput, HasSubstr("camera-farm --control SOCKET send COMMAND..."));
}

TEST_F(FarmProgram, HasAManualThatTheFormatterFindsNothingWrongWith)
{
    const lab::Output output = space.execute({"man", "--warnings", "-l", MAN_PAGE});
    EXPECT_EQ(output.status, 0);
    EXPECT_EQ(output.standardError, "");
    EXPECT_THAT(output.standardOutput, HasSubstr("simulated GigE Vision cameras"));
}

TEST_F(FarmProgram, EndsWithTheReasonWhenItCannotStart)
{
    const struct
    {
        std::vector<std::string> arguments;
        std::string reason;
    } table[] = {
        {{"--interface", "none0", "--config", configFile(OneCamera)}, "cannot open the interface none0: "},
        {{"--interface", "eth0", "--config", directory + "/missing"}, "/missing: cannot read the file"},
        {{"--interface", "eth0", "--config", directory}, "Is a directory"},
        {{"--interface", "eth0", "--config", directory + "/farm.json", "--control", "/missing/c"},
         "cannot listen on /missing/c"},
        {{"--interface", "eth0", "--config", directory + "/farm.json", "--control", std::string(200, 'x')},
         "the control socket's path must have"},
        {{"--control", socket, "send", "show", "001A2B000001"}, "no farm can be reached at " + socket},
    };
    for (const auto& each : table) {
        const lab::Output output = run(each.arguments);
        EXPECT_EQ(output.status, 1) << each.reason;
        EXPECT_EQ(output.standardOutput, "");
        EXPECT_THAT(output.standardError, HasSubstr(each.reason));
    }
}

TEST_F(FarmProgram, NamesFileCameraAndMemberOfABadConfiguration)
{
    const std::string file =
        configFile(R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20", "maks": 1}]})");
    const lab::Output output = run({"--interface", "eth0", "--config", file});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(output.standardError,
                HasSubstr(file + ": cameras[0] (00:1A:2B:00:00:01): \"maks\" is unknown"));
}

TEST_F(FarmProgram, SaysWhenItsCamerasAnswerAndEndsCleanlyOnASignal)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        lab::Process farm = start();
        EXPECT_EQ(farm.readLine(), "ready: 1 cameras");
        EXPECT_TRUE(std::filesystem::exists(socket));
        ::kill(farm.id(), signal);
        EXPECT_EQ(farm.wait(), 0);
        EXPECT_FALSE(std::filesystem::exists(socket));
    }
}

TEST_F(FarmProgram, TakesOverTheControlSocketOfAFarmThatIsGoneButNotOfOneThatRuns)
{
    {
        lab::Process killed = start();
        killed.readLine();
    }
    EXPECT_TRUE(std::filesystem::exists(socket)) << "it had no chance to clean up";
    lab::Process farm = start();
    EXPECT_EQ(farm.readLine(), "ready: 1 cameras");
    const lab::Output second =
        run({"--interface", "eth0", "--config", directory + "/farm.json", "--control", socket});
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.standardError, HasSubstr("another farm is listening on " + socket));
    EXPECT_EQ(run({"--control", socket, "send", "show", "001A2B000001"}).status, 0)
        << "the first one's is untouched";
}

TEST_F(FarmProgram, SendsACommandAndPrintsTheAnswerOrTheRefusal)
{
    lab::Process farm = start();
    farm.readLine();
    const lab::Output answer = run({"--control", socket, "send", "show", "001A2B000001"});
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.standardOutput, HasSubstr("\"address\": \"192.168.1.20\""));
    EXPECT_EQ(answer.standardError, "");
    const lab::Output refusal = run({"--control", socket, "send", "plug", "001A2B000009"});
    EXPECT_EQ(refusal.status, 1);
    EXPECT_EQ(refusal.standardOutput, "");
    EXPECT_EQ(refusal.standardError, "camera-farm: the farm has no camera 00:1A:2B:00:00:09\n");
}

TEST_F(FarmProgram, EndsWithTheReasonWhenItsInterfaceVanishes)
{
    lab::Process farm = start();
    farm.readLine();
    space.run("ip link delete eth0");
    EXPECT_EQ(farm.wait(), 1);
}

TEST_F(FarmProgram, NoticesThatAnInterfaceWhichIsDownVanishes)
{
    lab::Process farm = start();
    farm.readLine();
    space.run("ip link set eth0 down");
    // It has met that when it has answered.
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(run({"--control", socket, "send", "show", "001A2B000001"}).status, 0);
    space.run("ip link delete eth0");
    EXPECT_EQ(farm.wait(), 1);
}

} // namespace
