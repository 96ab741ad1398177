// SPDX-License-Identifier: Apache-2.0
#include "cli/commands/Command.h"
#include "tests/cli/ProgramFixture.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <streambuf>

using cli::ExitStatus;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class ProgramTest : public ProgramFixture
{};

/// Full from the first byte on.
class FullDevice : public std::streambuf
{};

} // namespace

TEST_F(ProgramTest, WithoutACommandTellsItsUsageAsAnError)
{
    EXPECT_EQ(run({}), ExitStatus::WrongArguments);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), testing::AllOf(StartsWith("usage:\n"), HasSubstr("130 interrupted")));
}

TEST_F(ProgramTest, TellsItsUsageAndItsVersionAsDataWhenAsked)
{
    for (const char* option : {"--help", "-h"}) {
        EXPECT_EQ(run({option}), ExitStatus::Done);
        for (const char* text : {"  list ", "  force ", "  set ", "doctor [MAC] [--json]\n",
                                 "force MAC --ip ADDRESS --mask MASK [--gateway GATEWAY]",
                                 "apply FILE [--check] [--only PLACE]... [--keep-going] [--json]\n",
                                 "replace PLACE FILE [--yes]\n", "export [--by mac|serial|adapter]\n",
                                 "3 no such camera", "4 there is", "130 interrupted"})
            EXPECT_THAT(out.str(), HasSubstr(text));
        EXPECT_EQ(err.str(), "");
    }
    EXPECT_EQ(run({"--version"}), ExitStatus::Done);
    EXPECT_THAT(out.str(), testing::MatchesRegex("ip-configurator-cli [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(ProgramTest, TellsACommandsUsageWhateverElseIsGiven)
{
    EXPECT_EQ(run({"list", "--help"}), ExitStatus::Done);
    EXPECT_THAT(out.str(), StartsWith("usage: ip-configurator-cli list [--json]\n"));
    EXPECT_EQ(run({"force", "nonsense", "--ip", "--help"}), ExitStatus::Done);
    EXPECT_THAT(out.str(), StartsWith("usage: ip-configurator-cli force MAC "));
    for (const cli::Command& command : cli::commands()) {
        EXPECT_EQ(run({command.name, "--help"}), ExitStatus::Done);
        EXPECT_THAT(out.str(), HasSubstr("130 interrupted")) << command.name;
    }
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(ProgramTest, ListsInTheHelpWhatTheDoctorFinds)
{
    EXPECT_EQ(run({"doctor", "--help"}), ExitStatus::Done);
    for (const char* id :
         {"no-link", "adapter-down", "no-address", "outside-subnet", "duplicate-address", "host-address",
          "overlapping-adapters", "reverse-path-filter", "firewall", "no-listener", "slow-link", "in-use",
          "in-use-for-ever", "no-dhcp-server", "not-stored", "lossy-network", "silent-device", "container"})
        EXPECT_THAT(out.str(), HasSubstr(id));
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(ProgramTest, RefusesWrongArgumentsInOneLine)
{
    const std::vector<std::string> lines[] = {
        {"lst"},
        {"--speed"},
        {"LIST"},
        {"list", "--speed"},
        {"set"},
        {"set", "00:00:00:00:00:01"},
        {"list", "all"},
        {"force"},
        {"force", "00:00:00:00:00:01"},
        {"who"},
        {"who", "00:00:00:00:00:01", "--jsn"},
        {"doctor", "00:00:00:00:00:01", "00:00:00:00:00:02"},
        {"watch", "--seconds"},
        {"watch", "--seconds", "ever"},
        {"export", "--by", "name"},
        {"export", "file.yaml"},
        {"apply"},
        {"apply", "a.yaml", "b.yaml"},
        {"apply", "a.yaml", "--only"},
        {"replace", "left"},
    };
    for (const auto& words : lines) {
        EXPECT_EQ(run(words), ExitStatus::WrongArguments) << words[0];
        EXPECT_EQ(out.str(), "");
        EXPECT_THAT(err.str(), StartsWith("ip-configurator-cli: "));
        EXPECT_THAT(err.str(), HasSubstr("see --help"));
        const std::string text = err.str();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(ProgramTest, FailsWhenItsOutputCannotBeWritten)
{
    FullDevice full;
    out.std::ostream::rdbuf(&full);
    EXPECT_EQ(run({"list", "--json"}), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("standard output cannot be written"));
}
