// SPDX-License-Identifier: Apache-2.0
#include "site/Apply.h"

namespace site {
namespace {

Outcome foreseeOne(const Plan& plan, const Task& task)
{
    Outcome outcome;
    if (task.camera)
        outcome.now = task.before;
    if (!task.obstacles.empty())
        outcome.reason = task.obstacles;
    else if (task.isMissing())
        outcome.result = Result::Missing;
    else if (task.actions.empty())
        outcome.result = Result::Ok;
    else if (plan.isRefused())
        outcome.reason = {{TRANSLATABLE("Sentence", "Nothing is begun while something is in the way."), {}}};
    else {
        outcome.result = Result::WouldChange;
        outcome.actions = task.actions;
    }
    return outcome;
}

} // namespace

std::vector<Outcome> foresee(const Plan& plan)
{
    std::vector<Outcome> outcomes;
    for (const Task& task : plan.tasks)
        outcomes.push_back(foreseeOne(plan, task));
    return outcomes;
}

} // namespace site
