// SPDX-License-Identifier: Apache-2.0
#include "site/Schedule.h"
#include "tests/site/Puzzle.h"

#include <gmock/gmock.h>

using base::Ipv4;
using puzzle::FirstFree;
using site::Plan;
using site::Schedule;
using testing::ElementsAre;
using testing::IsEmpty;
using End = Schedule::End;
using Move = Schedule::Move;
using Order = Schedule::Order;
using State = Schedule::State;

namespace {

constexpr bool KeepsGoing = true;

Order change(std::size_t task)
{
    return {task, Move::Change};
}

Order back(std::size_t task)
{
    return {task, Move::Return};
}

Order detour(std::size_t task)
{
    return {task, Move::Detour};
}

/// Three that pass their addresses on: 0 gets that of 1, 1 that of 2, 2 that of 0.
Plan circle()
{
    return puzzle::plan({0, 1, 2}, {1, 2, 0});
}

} // namespace

TEST(Schedule, BeginsWithOneAloneAndGoesOnWithAllOthersSideBySide)
{
    const Plan plan = puzzle::plan({0, 1, 2, 3}, {0, FirstFree, FirstFree + 1, FirstFree + 2});
    Schedule schedule(plan, false);
    EXPECT_THAT(schedule.next(), ElementsAre(change(1)));
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_FALSE(schedule.isIdle());
    schedule.ended(1, End::Done);
    EXPECT_THAT(schedule.next(), ElementsAre(change(2), change(3)));
    schedule.ended(3, End::Done);
    schedule.ended(2, End::Done);
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_TRUE(schedule.isIdle());
    EXPECT_EQ(schedule.stateOf(0), State::Idle);
    EXPECT_EQ(schedule.stateOf(1), State::Changed);
}

TEST(Schedule, WaitsForAnAddressUntilItsOwnerHasLeft)
{
    const Plan plan = puzzle::plan({0, 1, 2}, {1, 2, FirstFree});
    Schedule schedule(plan, false);
    for (const std::size_t task : {2U, 1U, 0U}) {
        EXPECT_THAT(schedule.next(), ElementsAre(change(task)));
        schedule.ended(task, End::Done);
    }
    EXPECT_THAT(schedule.next(), IsEmpty());
}

TEST(Schedule, OpensACircleWithADetour)
{
    const Plan plan = circle();
    Schedule schedule(plan, false);
    for (const Order order : {detour(0), change(2), change(1), change(0)}) {
        EXPECT_THAT(schedule.next(), ElementsAre(order));
        EXPECT_FALSE(schedule.isSettled(order.task));
        schedule.ended(order.task, End::Done);
    }
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_TRUE(schedule.isSettled(2));
}

TEST(Schedule, BeginsACircleOnlyWhenNobodyElseIsInItsWay)
{
    // 0 and 1 swap; 2 has the address of 1 as well, and leaves.
    Plan plan = puzzle::plan({0, 1, 1}, {1, 0, FirstFree});
    plan.tasks[0].detour = puzzle::settings(puzzle::FirstDetour);
    plan.tasks[1].detour.reset();
    Schedule schedule(plan, KeepsGoing);
    EXPECT_THAT(schedule.next(), ElementsAre(change(2)));
    schedule.ended(2, End::Done);
    EXPECT_THAT(schedule.next(), ElementsAre(detour(0)));
}

TEST(Schedule, PutsBackWhatFailsAndBeginsNobodyElse)
{
    const Plan plan = puzzle::plan({0, 1, 2}, {FirstFree, FirstFree + 1, 0});
    Schedule schedule(plan, false);
    schedule.next();
    schedule.ended(0, End::Failed);
    EXPECT_THAT(schedule.next(), ElementsAre(back(0)));
    schedule.ended(0, End::Done);
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_EQ(schedule.stateOf(0), State::PutBack);
    EXPECT_EQ(schedule.stateOf(1), State::Waiting);
    EXPECT_EQ(schedule.stateOf(2), State::Waiting);
}

TEST(Schedule, KeepsGoingWithThoseThatDoNotWaitForTheOneThatFailed)
{
    const Plan plan = puzzle::plan({0, 1, 2, 3}, {FirstFree, 0, 1, FirstFree + 1});
    Schedule schedule(plan, KeepsGoing);
    schedule.next();
    schedule.ended(0, End::Failed);
    EXPECT_THAT(schedule.next(), ElementsAre(back(0)));
    schedule.ended(0, End::Failed);
    EXPECT_THAT(schedule.next(), ElementsAre(change(3))) << "alone, as no other has succeeded yet";
    schedule.ended(3, End::Done);
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_EQ(schedule.stateOf(0), State::Lost);
    EXPECT_EQ(schedule.stateOf(1), State::Waiting);
    EXPECT_EQ(schedule.stateOf(2), State::Waiting);
}

TEST(Schedule, LeavesAloneWhatFailedBeforeAnythingWasDone)
{
    const Plan plan = puzzle::plan({0}, {FirstFree});
    Schedule schedule(plan, false);
    schedule.next();
    schedule.ended(0, End::Unchanged);
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_EQ(schedule.stateOf(0), State::PutBack);
}

TEST(Schedule, PutsACircleBackTheLatestFirst)
{
    const Plan plan = circle();
    Schedule schedule(plan, false);
    for (const Order order : {detour(0), change(2)}) {
        EXPECT_THAT(schedule.next(), ElementsAre(order));
        schedule.ended(order.task, End::Done);
    }
    EXPECT_THAT(schedule.next(), ElementsAre(change(1)));
    schedule.ended(1, End::Failed);
    for (const Order order : {back(1), back(2), back(0)}) {
        EXPECT_THAT(schedule.next(), ElementsAre(order));
        schedule.ended(order.task, End::Done);
    }
    EXPECT_THAT(schedule.next(), IsEmpty());
    for (const std::size_t task : {0, 1, 2})
        EXPECT_EQ(schedule.stateOf(task), State::PutBack);
}

TEST(Schedule, MovesTheLastOfACircleAsideAgainBeforeTheOthersGoBack)
{
    const Plan plan = circle();
    Schedule schedule(plan, false);
    for (const Order order : {detour(0), change(2), change(1)}) {
        schedule.next();
        schedule.ended(order.task, End::Done);
    }
    EXPECT_THAT(schedule.next(), ElementsAre(change(0)));
    schedule.ended(0, End::Failed);
    for (const Order order : {detour(0), back(1), back(2), back(0)}) {
        EXPECT_THAT(schedule.next(), ElementsAre(order));
        schedule.ended(order.task, End::Done);
    }
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_EQ(schedule.stateOf(0), State::PutBack);
}

TEST(Schedule, LeavesTheOthersOfACircleWhereTheyAreWhenOneMayHaveTheirAddress)
{
    const Plan plan = circle();
    Schedule schedule(plan, false);
    for (const Order order : {detour(0), change(2)}) {
        schedule.next();
        schedule.ended(order.task, End::Done);
    }
    schedule.next();
    schedule.ended(1, End::Failed);
    EXPECT_THAT(schedule.next(), ElementsAre(back(1)));
    schedule.ended(1, End::Failed);
    EXPECT_THAT(schedule.next(), IsEmpty());
    EXPECT_TRUE(schedule.isIdle());
    EXPECT_EQ(schedule.stateOf(0), State::Detoured);
    EXPECT_EQ(schedule.stateOf(1), State::Lost);
    EXPECT_EQ(schedule.stateOf(2), State::Changed);
    EXPECT_FALSE(schedule.isSettled(2));
    EXPECT_TRUE(schedule.isInFailedCircle(2));
}

TEST(Schedule, PutsTheOthersOfACircleBackWhenTheFailedOneIsSeenToHaveItsOldAddress)
{
    const Plan plan = circle();
    Schedule schedule(plan, false);
    for (const Order order : {detour(0), change(2)}) {
        schedule.next();
        schedule.ended(order.task, End::Done);
    }
    schedule.next();
    schedule.ended(1, End::Failed);
    schedule.next();
    schedule.ended(1, End::Partly);
    EXPECT_THAT(schedule.next(), ElementsAre(back(2)));
    EXPECT_EQ(schedule.stateOf(1), State::Marred);
}

TEST(Schedule, FinishesACircleThatHasBegunWhenItIsStopped)
{
    Plan plan = puzzle::plan({0, 1, 2, 3}, {1, 0, FirstFree, FirstFree + 1});
    Schedule schedule(plan, false);
    EXPECT_THAT(schedule.next(), ElementsAre(detour(0)));
    schedule.stop();
    for (const Order order : {detour(0), change(1), change(0)}) {
        schedule.ended(order.task, End::Done);
        schedule.next();
    }
    EXPECT_TRUE(schedule.isIdle());
    EXPECT_EQ(schedule.stateOf(0), State::Changed);
    EXPECT_EQ(schedule.stateOf(1), State::Changed);
    EXPECT_EQ(schedule.stateOf(2), State::Waiting);
}
