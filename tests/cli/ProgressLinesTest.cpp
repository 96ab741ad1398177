// SPDX-License-Identifier: Apache-2.0
#include "cli/line/ProgressLines.h"

#include <gmock/gmock.h>
#include <sstream>

using site::Action;
using site::Outcome;
using site::Result;

namespace {

site::Task task(const std::string& place, std::vector<Action> actions)
{
    site::Task result;
    result.place.name = place;
    result.actions = std::move(actions);
    result.after.ip.address = *base::Ipv4::parse("192.0.2.31");
    return result;
}

/// Of three places, the first of which is as planned.
class ProgressLinesTest : public testing::Test
{
protected:
    std::string told(std::optional<cli::TerminalSize> terminal)
    {
        std::ostringstream out;
        cli::ProgressLines lines(plan, out, terminal);
        const site::Progress progress = lines.progress();
        Outcome outcome;
        progress.onOutcome(0, outcome);
        outcome.result = Result::PutBack;
        outcome.reason = {{"It \x1B[2J could not.", {}}};
        progress.onAction(1, Action::Force);
        progress.onReturn(1);
        progress.onOutcome(1, outcome);
        return out.str();
    }

    site::Plan plan{
        {task("done", {}), task("left", {Action::Force}), task("the right", {Action::Force})}, {}, {}};
};

} // namespace

TEST_F(ProgressLinesTest, AreALineForEachThingWhereNothingCanBeUpdated)
{
    const std::string plain = "left: force 192.0.2.31 ...\nleft: is put back ...\n"
                              "left: put back: It \\x1B[2J could not.\n";
    EXPECT_EQ(told(std::nullopt), plain);
    EXPECT_EQ(told(cli::TerminalSize{2, 80}), plain) << "the first line would have left the screen";
}

TEST_F(ProgressLinesTest, AreUpdatedInPlaceOnATerminal)
{
    const std::string up = "\x1B[2A\rleft:      ";
    const std::string down = "\x1B[K\x1B[2B\r";
    EXPECT_EQ(told(cli::TerminalSize{24, 80}), "left:      waits\nthe right: waits\n" + up +
                                                   "force 192.0.2.31 ..." + down + up + "is put back ..." +
                                                   down + up + "put back: It \\x1B[2J could not." + down);
}

TEST_F(ProgressLinesTest, AreNeverLongerThanTheTerminalIsWide)
{
    plan.tasks[1].place.name = "瓶盖瓶盖瓶盖瓶盖";
    EXPECT_THAT(told(cli::TerminalSize{24, 10}), testing::StartsWith("瓶盖瓶盖\nthe right\n"));
}
