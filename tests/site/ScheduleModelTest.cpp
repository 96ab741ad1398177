// SPDX-License-Identifier: Apache-2.0
#include "tests/site/ModelLine.h"

#include <gmock/gmock.h>

using base::Ipv4;
using puzzle::Line;
using site::Plan;
using site::Schedule;
using State = Schedule::State;

namespace {

bool hasLostOne(const Schedule& schedule, const std::vector<std::size_t>& tasks)
{
    return std::ranges::any_of(
        tasks, [&schedule](std::size_t each) { return schedule.stateOf(each) == State::Lost; });
}

void expectSettled(const Plan& plan, const Line& line)
{
    const Schedule& schedule = line.schedule();
    for (std::size_t i = 0; i < plan.tasks.size(); ++i) {
        SCOPED_TRACE("task " + std::to_string(i));
        const site::Task& task = plan.tasks[i];
        const auto circle = puzzle::circleOf(plan.tasks, i);
        const std::set<Ipv4> before{task.before.ip.address};
        EXPECT_LE(line.detoursOf(i), task.detour ? 2U : 0U);
        switch (schedule.stateOf(i)) {
        case State::Idle:
        case State::Waiting:
            EXPECT_EQ(line.ordersOf(i), 0U);
            EXPECT_EQ(line.addressesOf(i), before);
            break;
        case State::Changed:
            EXPECT_EQ(line.addressesOf(i), std::set{task.after.ip.address});
            EXPECT_TRUE(!schedule.isInFailedCircle(i) || hasLostOne(schedule, circle));
            break;
        case State::Detoured:
            EXPECT_EQ(line.addressesOf(i), std::set{task.detour->address});
            EXPECT_TRUE(hasLostOne(schedule, circle));
            break;
        case State::PutBack:
        case State::Marred:
            EXPECT_EQ(line.addressesOf(i), before);
            break;
        case State::Failed:
            ADD_FAILURE() << "nobody put it back";
            break;
        case State::Lost:
            break;
        }
    }
}

/// Whoever waits for somebody, and he for somebody, who is not as planned.
bool waitsInVain(const Plan& plan, const Schedule& schedule, std::size_t task)
{
    std::set<std::size_t> seen;
    std::vector<std::size_t> open{task};
    while (!open.empty()) {
        const std::size_t each = open.back();
        open.pop_back();
        for (const std::size_t other : plan.tasks[each].waitsFor) {
            const State state = schedule.stateOf(other);
            if ((state != State::Changed && state != State::Waiting) || schedule.isInFailedCircle(other))
                return true;
            if (seen.insert(other).second)
                open.push_back(other);
        }
    }
    return false;
}

constexpr unsigned Cases = 5000;

} // namespace

TEST(ScheduleModel, BringsAnyCamerasToAnyAddressesAndNoTwoEverHaveOne)
{
    for (unsigned seed = 0; seed < Cases; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const Plan plan = puzzle::randomPlan(random);
        Line line(plan, false, random);
        line.run(0, 0);
        for (std::size_t i = 0; i < plan.tasks.size(); ++i) {
            EXPECT_EQ(line.addressesOf(i), std::set{plan.tasks[i].after.ip.address});
            EXPECT_EQ(line.ordersOf(i), plan.tasks[i].actions.empty() ? 0U : plan.tasks[i].detour ? 2U : 1U);
        }
        if (HasFailure())
            return;
    }
}

TEST(ScheduleModel, LeavesEachCameraAsPlannedOrAsBeforeWhateverFails)
{
    for (unsigned seed = 0; seed < Cases; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const Plan plan = puzzle::randomPlan(random);
        const bool keepsGoing = random() % 2 == 0;
        Line line(plan, keepsGoing, random);
        line.run(1 + random() % 8, 0);
        expectSettled(plan, line);
        for (std::size_t i = 0; i < plan.tasks.size() && keepsGoing; ++i)
            EXPECT_TRUE(line.schedule().stateOf(i) != State::Waiting || waitsInVain(plan, line.schedule(), i))
                << i;
        if (HasFailure())
            return;
    }
}

TEST(ScheduleModel, BringsWhatHasBegunToAnEndWhenItIsStopped)
{
    for (unsigned seed = 0; seed < Cases; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const Plan plan = puzzle::randomPlan(random);
        Line line(plan, random() % 2 == 0, random);
        line.run(random() % 2 == 0 ? 0 : 6, 4);
        expectSettled(plan, line);
        if (HasFailure())
            return;
    }
}
