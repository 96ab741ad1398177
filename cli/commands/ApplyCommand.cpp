// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListenerHint.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/commands/Command.h"
#include "cli/line/ApplyReport.h"
#include "cli/line/LineRun.h"
#include "cli/line/SiteFile.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"
#include "inventory/Inventory.h"
#include "site/Words.h"

#include <ostream>

namespace cli {
namespace {

using site::Outcome;
using site::Plan;

std::set<std::string> placesMeant(const Arguments& arguments, const SiteFile& file)
{
    std::set<std::string> places;
    if (arguments.has("--only"))
        for (const std::string& place : arguments.repeated.at("--only")) {
            file.requirePlace(place);
            places.insert(place);
        }
    return places;
}

/// Shows the plan or what became of it.
class Report
{
public:
    Report(const Arguments& arguments, Session& session)
        : m_session(session),
          m_isJson(arguments.has("--json"))
    {}

    void print(const Plan& plan, const std::vector<Outcome>& outcomes) const
    {
        m_session.out << (m_isJson ? applyJson(plan, outcomes)
                                   : applyText(plan, outcomes, m_session.coloured))
                      << std::flush;
    }

private:
    Session& m_session;
    bool m_isJson;
};

[[noreturn]] void fail(ExitStatus status, const Plan& plan, const std::vector<Outcome>& outcomes,
                       const std::string& more)
{
    throw Failure(status, more + shown(summaryOf(plan, outcomes)));
}

/// Of a plan that is only looked at, or that cannot be begun.
void requireNothing(const Plan& plan, const std::vector<Outcome>& outcomes)
{
    if (plan.isRefused())
        fail(ExitStatus::Failed, plan, outcomes, "refused, nothing was changed. ");
    if (plan.hasMissing())
        fail(ExitStatus::NoSuchCamera, plan, outcomes, "");
    if (plan.hasActions())
        fail(ExitStatus::SomethingToDo, plan, outcomes, "");
}

void applyFile(const Arguments& arguments, Session& session)
{
    const SiteFile file = readSiteFile(arguments.operands[0]);
    const std::set<std::string> only = placesMeant(arguments, file);
    const Report report(arguments, session);
    const bool keepsGoing = arguments.has("--keep-going");

    Interruption interruption;
    bool isInterrupted = false;
    const auto isOver = [&] {
        isInterrupted = isInterrupted || interruption.arrives(std::chrono::milliseconds(0));
        return isInterrupted;
    };
    const inventory::Inventory found = surveyLine(file.site, only, isOver, session);
    session.err << listenerHint(listenerReport(found));
    if (isInterrupted)
        throw Failure(ExitStatus::Interrupted, "interrupted; no camera was changed");
    const Plan plan = makePlan(file.site, found, only);
    tellOfPlan(plan, session);

    if (arguments.has("--check")) {
        const std::vector<Outcome> outcomes = foresee(plan);
        report.print(plan, outcomes);
        return requireNothing(plan, outcomes);
    }
    if (plan.isRefused() || (plan.hasMissing() && !keepsGoing)) {
        const std::vector<Outcome> outcomes = notBegun(plan);
        report.print(plan, outcomes);
        return requireNothing(plan, outcomes);
    }
    if (plan.hasActions() && !file.isExport())
        session.err << "note: the way back is a file made before: ip-configurator-cli export >before.yaml; "
                       "apply before.yaml undoes this\n"
                    << std::flush;
    const LineRun run =
        runLine(plan, {.keepsGoing = keepsGoing, .patience = session.restartPatience}, interruption, session);
    report.print(plan, run.outcomes);
    requireDone(plan, run);
}

} // namespace

Command applyCommand()
{
    return {
        "apply",
        "FILE [--check] [--only PLACE]... [--keep-going] [--json]",
        "makes all cameras as a site file says",
        R"(Makes the cameras as the site file says: finds for each place of the file its camera, and gives it the address, the
way to obtain it, and the name that the file has for it. What is so already is not touched. Refuses before anything is
sent when a camera that needs a change is in use, a place has two candidates, an address is somebody else's, or an
adapter is not as the file says. The first camera changes alone; when it is seen to be as planned, the others follow side
by side. Cameras may swap their addresses. One that fails is put back as it was; then no other is begun. Ctrl-C begins
no other either: what has begun is finished or put back. "export" makes such a file, which is also the way back.

  FILE            the site file
  --check         only tells what it would do, and ends with 4 when there is something; nothing is changed
  --only PLACE    only this place, and each other one that is given so
  --keep-going    goes on with other cameras when one is missing or fails
  --json          prints a JSON array with an object for each place
)",
        {{"FILE"},
         {{"--check", {}},
          {.name = "--only", .value = "PLACE", .repeatable = true},
          {"--keep-going", {}},
          {"--json", {}}}},
        applyFile,
    };
}

} // namespace cli
