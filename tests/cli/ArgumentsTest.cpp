// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/Arguments.h"

#include "tests/cli/Refusal.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::Pair;

namespace {

const cli::Syntax Syntax{{"MAC"}, {{"--ip", "ADDRESS", true}, {"--mask", "MASK"}, {"--dhcp", {}}}};

} // namespace

TEST(Arguments, AreTakenInAnyOrderAndInBothForms)
{
    const std::vector<std::string> lines[] = {
        {"M", "--ip", "A", "--mask", "N"},
        {"--ip", "A", "M", "--mask", "N"},
        {"--mask=N", "--ip=A", "M"},
    };
    for (const auto& words : lines) {
        const cli::Arguments arguments = cli::parseArguments(Syntax, words);
        EXPECT_THAT(arguments.operands, ElementsAre("M"));
        EXPECT_THAT(arguments.options, ElementsAre(Pair("--ip", "A"), Pair("--mask", "N")));
    }
}

TEST(Arguments, SayWhetherAnOptionWasGiven)
{
    const cli::Arguments arguments = cli::parseArguments(Syntax, {"M", "--ip", "A", "--dhcp"});
    EXPECT_TRUE(arguments.has("--dhcp"));
    EXPECT_FALSE(arguments.has("--mask"));
}

TEST(Arguments, MayHaveAValueThatIsEmptyOrLooksLikeAnOptionAfterAnEqualsSign)
{
    for (const char* value : {"", "--mask", "a=b"}) {
        const cli::Arguments arguments = cli::parseArguments(Syntax, {"M", std::string("--ip=") + value});
        EXPECT_THAT(arguments.options, ElementsAre(Pair("--ip", value)));
    }
}

TEST(Arguments, KeepAllValuesOfAnOptionThatMayBeRepeated)
{
    const cli::Syntax syntax{{}, {{.name = "--only", .value = "PLACE", .repeatable = true}, {"--json", {}}}};
    const cli::Arguments arguments =
        cli::parseArguments(syntax, {"--only", "left", "--json", "--only=right"});
    EXPECT_TRUE(arguments.has("--only"));
    EXPECT_THAT(arguments.repeated, ElementsAre(Pair("--only", ElementsAre("left", "right"))));
}

TEST(Arguments, ThatAreWrongAreNamed)
{
    const struct
    {
        std::vector<std::string> words;
        const char* reason;
    } table[] = {
        {{}, "MAC is missing"},
        {{"--ip", "A"}, "MAC is missing"},
        {{"M"}, "--ip ADDRESS is missing"},
        {{"M", "--ip"}, "--ip needs a value: --ip ADDRESS"},
        {{"M", "--ip", "--mask", "N"}, "--ip needs a value: --ip ADDRESS"},
        {{"M", "--ip", "A", "--ip", "A"}, "--ip is given twice; once is allowed"},
        {{"M", "--ip=A", "--dhcp", "--dhcp"}, "--dhcp is given twice; once is allowed"},
        {{"M", "--ip", "A", "--dhcp=yes"}, "--dhcp takes no value"},
        {{"M", "--ip", "A", "N"}, "\"N\" is one argument too many: MAC, --ip, --mask and --dhcp are allowed"},
        {{"M", "--ip", "A", ""}, "\"\" is one argument too many: MAC, --ip, --mask and --dhcp are allowed"},
        {{"M", "--speed", "A"}, "unknown option \"--speed\": --ip, --mask and --dhcp are allowed"},
        {{"M", "--i=A"}, "unknown option \"--i\": --ip, --mask and --dhcp are allowed"},
        {{"M", "-ip", "A"}, "unknown option \"-ip\": --ip, --mask and --dhcp are allowed"},
        {{"M", "--\x1B[2J"}, "unknown option \"--\\x1B[2J\": --ip, --mask and --dhcp are allowed"},
    };
    for (const auto& each : table)
        EXPECT_EQ(refusal([&each] { cli::parseArguments(Syntax, each.words); }),
                  std::string(each.reason) + "; see --help");
}

TEST(Arguments, MayLackAnOptionalOperandAtTheirEnd)
{
    const cli::Syntax syntax{{"FILE", "MAC"}, {{"--json", {}}}, 1};
    EXPECT_THAT(cli::parseArguments(syntax, {"F", "--json"}).operands, ElementsAre("F"));
    EXPECT_THAT(cli::parseArguments(syntax, {"F", "M"}).operands, ElementsAre("F", "M"));
    EXPECT_EQ(refusal([&syntax] { cli::parseArguments(syntax, {}); }), "FILE is missing; see --help");
    EXPECT_EQ(refusal([&syntax] {
                  cli::parseArguments(syntax, {"F", "M", "N"});
              }),
              "\"N\" is one argument too many: FILE, MAC and --json are allowed; see --help");
}

TEST(Arguments, ThatAreWrongAreToldOfTheOnlyOptionThereIs)
{
    EXPECT_EQ(refusal([] {
                  cli::parseArguments({{}, {{"--json", {}}}}, {"--xml"});
              }),
              "unknown option \"--xml\": --json is allowed; see --help");
    EXPECT_EQ(refusal([] {
                  cli::parseArguments({{}, {{"--json", {}}}}, {"xml"});
              }),
              "\"xml\" is one argument too many: --json is allowed; see --help");
    EXPECT_EQ(refusal([] { cli::parseArguments({}, {"--xml"}); }),
              "unknown option \"--xml\": nothing is allowed; see --help");
}
