// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

struct PlanWork;

// What there is to say of a plan beside its rows, in the language of now.

/// Whether the plan can be applied; or, when it was, how that went. There is a plan.
QString HeadlineOf(const PlanWork& work);

/// One is neither as planned nor as it was.
bool HasFailedOne(const PlanWork& work);

struct PlanNotes
{
    QString strText; ///< A line for each.
    const char* color;
};

/// What stands in the way of all of it, and the warnings; and what the last job had to say.
PlanNotes NotesOn(const PlanWork& shown, const PlanWork& said);
