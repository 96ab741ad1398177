// SPDX-License-Identifier: Apache-2.0
#include "cli/line/LineRun.h"

#include "cli/line/ApplyReport.h"
#include "cli/line/ProgressLines.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "inventory/Inventory.h"
#include "site/Survey.h"
#include "site/Words.h"

#include <algorithm>
#include <ostream>
#include <system_error>

namespace cli {

using site::Outcome;
using site::Result;

inventory::Inventory surveyLine(const site::Site& site, const std::set<std::string>& only,
                                const std::function<bool()>& isOver, const Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    try {
        inventory::Inventory found = site::survey(site, only, isOver);
        if (!found.notSearched.empty())
            session.err << "note: cameras may be missing, as not all networks were searched ("
                        << displayText(found.notSearched) << ")\n";
        return found;
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::Failed,
                      "the networks cannot be looked at: " + displayText(std::string(error.what())));
    }
}

ExitStatus LineRun::status() const
{
    const auto has = [this](Result result) {
        return std::ranges::find(outcomes, result, &Outcome::result) != outcomes.end();
    };
    if (isInterrupted)
        return ExitStatus::Interrupted;
    if (has(Result::Failed) || has(Result::PutBack) || has(Result::NotBegun))
        return ExitStatus::Failed;
    return has(Result::Missing) ? ExitStatus::NoSuchCamera : ExitStatus::Done;
}

LineRun runLine(const site::Plan& plan, const site::Policy& policy, Interruption& interruption,
                const Session& session)
{
    LineRun run;
    ProgressLines lines(plan, session.err, session.interactive ? terminalSize() : std::nullopt);
    site::Progress progress = lines.progress();
    progress.isInterrupted = [&] {
        run.isInterrupted = run.isInterrupted || interruption.arrives(std::chrono::milliseconds(0));
        return run.isInterrupted;
    };
    try {
        run.outcomes = site::apply(plan, policy, progress);
    } catch (const std::system_error& error) {
        throw Failure(ExitStatus::Failed,
                      "the cameras cannot be reached: " + displayText(std::string(error.what())));
    }
    return run;
}

std::vector<Outcome> notBegun(const site::Plan& plan)
{
    std::vector<Outcome> outcomes = foresee(plan);
    for (Outcome& outcome : outcomes)
        if (outcome.result == Result::WouldChange) {
            outcome.result = Result::NotBegun;
            outcome.actions.clear();
        }
    return outcomes;
}

void requireDone(const site::Plan& plan, const LineRun& run)
{
    if (const ExitStatus status = run.status(); status != ExitStatus::Done)
        throw Failure(status,
                      (run.isInterrupted ? "interrupted. " : "") + shown(summaryOf(plan, run.outcomes)));
}

void tellOfPlan(const site::Plan& plan, const Session& session)
{
    for (const base::Sentence& warning : plan.warnings)
        session.err << "warning: " << shown({warning}) << '\n';
    for (const base::Sentence& obstacle : plan.obstacles)
        session.err << "error: " << shown({obstacle}) << '\n';
}

} // namespace cli
