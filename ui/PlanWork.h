// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "site/Apply.h"
#include "site/Export.h"
#include "site/Plan.h"
#include "site/Replacement.h"
#include "ui/QPlanThread.h"

#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// The jobs of the window that shows a plan, and what they make: values, in no language yet.

/// How far one place is.
struct PlanStep
{
    base::Sentence doing; ///< What is being done; meant while there is no outcome.
    std::optional<site::Outcome> outcome;
};

/// What one job made of a site file and of the cameras that it is about.
struct PlanWork
{
    QString strFile;
    std::vector<base::Sentence> failure; ///< Why the job could not be done.
    site::Site site;
    std::optional<site::Plan> plan;                        ///< Nothing: the file is wrong.
    std::map<std::string, site::Replacement> replacements; ///< By the places whose camera is missing.
    /// What became of the plan's tasks, by their indexes; empty as long as nothing was done.
    std::map<std::size_t, PlanStep> steps;
    std::vector<base::Sentence> notice; ///< What else there is to say: how it went.
    bool bChangedCameras = false;       ///< Or may have.
    bool bHasReplaced = false;          ///< A camera is in the place of another, and the file says so.

    bool IsApplicable() const;
    /// Null unless the task's camera is missing and somebody can take its place.
    const site::Replacement* ReplacementOf(std::size_t nTask) const;
};

/// What a job is given of the window that waits for it. Its functions are called on the job's thread.
struct PlanSurroundings
{
    Surveyor survey;
    std::function<void(std::size_t nTask, const PlanStep& step)> onStep;
    /// Asked many times a second: whether to begin nothing more.
    std::function<bool()> isOver;
};

// Each throws std::exception when the networks cannot be looked at.

/// Reads the file and finds out what there is to do.
PlanWork LookAtPlan(const QString& strFile, const PlanSurroundings& surroundings);

/// Does what is shown, as long as that is still what there is to do; else it shows anew.
PlanWork ApplyPlan(const PlanWork& shown, const PlanSurroundings& surroundings);

/// Gives the task's place to the newcomer that is shown, and writes that into the file.
PlanWork ReplaceCamera(const PlanWork& shown, std::size_t nTask, const PlanSurroundings& surroundings);

/// Writes what there is now into a file.
PlanWork SaveAsPlan(const QString& strFile, site::MatchBy by, const PlanSurroundings& surroundings);
