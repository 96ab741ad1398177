// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/session/Failure.h"
#include "site/Apply.h"
#include "site/Plan.h"
#include "site/Site.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace inventory {
struct Inventory;
}

namespace cli {

class Interruption;
struct Session;

/// What there is, for a plan; says on standard error that it looks, and where it could not. Throws a Failure.
inventory::Inventory surveyLine(const site::Site& site, const std::set<std::string>& only,
                                const std::function<bool()>& isOver, const Session& session);

/// What became of a plan.
struct LineRun
{
    std::vector<site::Outcome> outcomes;
    bool isInterrupted = false;

    /// How the command that did this ends.
    ExitStatus status() const;
};

/// Carries the plan out and tells how that goes on standard error. Throws a Failure when nothing could be
/// begun.
LineRun runLine(const site::Plan& plan, const site::Policy& policy, Interruption& interruption,
                const Session& session);

/// What would become of it, but that nothing is begun.
std::vector<site::Outcome> notBegun(const site::Plan& plan);

/// Throws a Failure that says how it ended, unless all is done.
void requireDone(const site::Plan& plan, const LineRun& run);

/// What is in the way of the whole plan, and what there is to say of it; on standard error.
void tellOfPlan(const site::Plan& plan, const Session& session);

} // namespace cli
