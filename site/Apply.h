// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "site/Plan.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace site {

enum class Result
{
    Ok, ///< It was as planned before anything was done.
    Changed,
    WouldChange, ///< Nothing was to be done in earnest.
    Failed,      ///< It is neither as planned nor as it was, or was not seen to be.
    PutBack,     ///< It failed, and was seen to be as it was before.
    Missing,
    NotBegun
};

/// What became of one place.
struct Outcome
{
    Result result = Result::NotBegun;
    std::optional<Settings> now;        ///< What the camera has; nothing when that is not known.
    std::vector<Action> actions;        ///< Done, or to be done where Result::WouldChange.
    std::vector<base::Sentence> reason; ///< Why it failed, was not begun ...; of one that changed, a warning.

    bool operator==(const Outcome&) const = default;
};

/// What would become of the plan's tasks, in their order. Nothing is done.
std::vector<Outcome> foresee(const Plan& plan);

struct Progress
{
    /// That is being done, on the calling thread.
    std::function<void(std::size_t task, Action action)> onAction = [](std::size_t, Action) {};
    /// It is being put back to what it was.
    std::function<void(std::size_t task)> onReturn = [](std::size_t) {};
    std::function<void(std::size_t task, const Outcome& outcome)> onOutcome = [](std::size_t,
                                                                                 const Outcome&) {};
    /// Asked many times a second: whether to begin nothing more.
    std::function<bool()> isInterrupted = [] { return false; };
};

/// How far it goes when one fails.
struct Policy
{
    bool keepsGoing = false; ///< All that do not wait for it are begun nevertheless.
    /// How long a camera may take to come back from a restart: a minute to start, then a search for a DHCP
    /// server (15 s) and for a free link-local address (40 s).
    std::chrono::milliseconds patience = std::chrono::seconds(120);
};

/// Does it, all cameras side by side on the calling thread, the first one alone; what became of each, in the
/// order of the tasks. What fails is put back. The plan is not refused, and has nobody missing unless the
/// policy keeps going. Throws std::system_error when this computer's adapters cannot be used.
std::vector<Outcome> apply(const Plan& plan, const Policy& policy, const Progress& progress);

} // namespace site
