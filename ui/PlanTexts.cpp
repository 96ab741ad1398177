// SPDX-License-Identifier: Apache-2.0
#include "ui/PlanTexts.h"

#include "site/Words.h"
#include "ui/PlanWork.h"
#include "ui/QPlanWindow.h"
#include "ui/Spoken.h"
#include "widgets/StyleRules.h"

#include <algorithm>

namespace {

constexpr const char* BadColor = "#a83025";
constexpr const char* WarningColor = "#9a5c00";

bool IsAsPlanned(const PlanStep& step)
{
    return step.outcome &&
           (step.outcome->result == site::Result::Ok || step.outcome->result == site::Result::Changed);
}

} // namespace

QString HeadlineOf(const PlanWork& work)
{
    if (HasFailedOne(work))
        return QPlanWindow::tr("A camera failed and could not be put back!");
    if (!work.steps.empty()) {
        const bool bDone =
            std::ranges::all_of(work.steps, [](const auto& step) { return IsAsPlanned(step.second); });
        return bDone ? QPlanWindow::tr("It is done.") : QPlanWindow::tr("Not all of it was done.");
    }
    if (work.plan->isRefused())
        return QPlanWindow::tr("This plan cannot be applied: something stands in the way.");
    return Spoken(site::summaryOf(*work.plan, site::foresee(*work.plan)));
}

bool HasFailedOne(const PlanWork& work)
{
    return std::ranges::any_of(work.steps, [](const auto& step) {
        return step.second.outcome && step.second.outcome->result == site::Result::Failed;
    });
}

PlanNotes NotesOn(const PlanWork& shown, const PlanWork& said)
{
    QStringList lines;
    const auto add = [&lines](const std::vector<base::Sentence>& sentences) {
        for (const base::Sentence& sentence : sentences)
            lines << Spoken(sentence);
    };
    if (!said.failure.empty())
        lines << Spoken(said.failure);
    add(said.notice);
    bool bBad = !said.failure.empty() || HasFailedOne(shown);
    bool bWarns = false;
    if (shown.plan && shown.steps.empty()) {
        add(shown.plan->obstacles);
        add(shown.plan->warnings);
        bBad = bBad || !shown.plan->obstacles.empty();
        bWarns = !shown.plan->warnings.empty();
    }
    return {lines.join(QLatin1Char('\n')), bBad ? BadColor : (bWarns ? WarningColor : DarkTextColor)};
}
