// SPDX-License-Identifier: Apache-2.0
#include "site/Schedule.h"

#include <algorithm>

namespace site {
namespace {

bool contains(const std::vector<std::size_t>& tasks, std::size_t task)
{
    return std::ranges::find(tasks, task) != tasks.end();
}

/// Those that the task waits for, and that they wait for, and so on; the task itself if it is among them.
std::vector<std::size_t> allThatItWaitsFor(const Plan& plan, std::size_t task)
{
    std::vector<std::size_t> found;
    std::vector<std::size_t> open{task};
    while (!open.empty()) {
        const std::size_t each = open.back();
        open.pop_back();
        for (const std::size_t other : plan.tasks[each].waitsFor)
            if (!contains(found, other)) {
                found.push_back(other);
                open.push_back(other);
            }
    }
    return found;
}

} // namespace

Schedule::Schedule(const Plan& plan, bool keepsGoing)
    : m_plan(plan),
      m_keepsGoing(keepsGoing),
      m_members(plan.tasks.size())
{
    for (std::size_t i = 0; i < m_members.size(); ++i) {
        if (!plan.tasks[i].actions.empty())
            m_members[i].state = State::Waiting;
        for (const std::size_t other : plan.tasks[i].waitsFor)
            m_members[other].waiters.push_back(i);
    }
    findCircles();
}

void Schedule::findCircles()
{
    for (std::size_t i = 0; i < m_members.size(); ++i) {
        if (!m_plan.tasks[i].detour)
            continue;
        Circle circle{{i}};
        for (const std::size_t other : allThatItWaitsFor(m_plan, i))
            if (other != i && contains(allThatItWaitsFor(m_plan, other), i))
                circle.tasks.push_back(other);
        for (const std::size_t each : circle.tasks)
            m_members[each].circle = m_circles.size();
        m_circles.push_back(std::move(circle));
    }
}

std::vector<Schedule::Order> Schedule::next()
{
    std::vector<Order> orders;
    const auto begin = [&](std::size_t task, Move move) {
        m_members[task].underWay = move;
        orders.push_back({task, move});
    };
    for (std::size_t i = 0; i < m_members.size(); ++i)
        if (const auto move = m_members[i].underWay ? std::nullopt : toGoOn(i))
            begin(i, *move);
    for (std::size_t i = 0; i < m_members.size(); ++i) {
        if (!m_isProven && !isIdle())
            break;
        if (!mayBegin(i))
            continue;
        if (m_members[i].circle)
            m_circles[*m_members[i].circle].hasBegun = true;
        begin(i, m_plan.tasks[i].detour ? Move::Detour : Move::Change);
    }
    return orders;
}

/// What is next for one that has begun, or whose circle has.
std::optional<Schedule::Move> Schedule::toGoOn(std::size_t task) const
{
    const State state = m_members[task].state;
    const Circle* const circle = circleOf(task);
    const bool goesBack = circle && circle->hasFailed;
    if (state == State::Failed || (goesBack && (state == State::Changed || state == State::Detoured))) {
        if (mayReturn(task))
            return Move::Return;
        // It may have the address that another one of the circle has to return to.
        if (state == State::Failed && m_plan.tasks[task].detour)
            return Move::Detour;
        return std::nullopt;
    }
    const bool isNext =
        state == State::Detoured || (state == State::Waiting && circle && circle->hasBegun && !goesBack);
    const bool isFree = std::ranges::all_of(m_plan.tasks[task].waitsFor, [&](std::size_t other) {
        return hasLeft(other, m_members[task].circle);
    });
    return isNext && isFree ? std::optional(Move::Change) : std::nullopt;
}

bool Schedule::mayBegin(std::size_t task) const
{
    if (m_isStopped || (m_hasFailed && !m_keepsGoing))
        return false;
    const Member& member = m_members[task];
    const Circle* const circle = circleOf(task);
    if (member.state != State::Waiting || member.underWay || (circle && circle->hasBegun))
        return false;
    if (circle && !m_plan.tasks[task].detour)
        return false;
    const auto isOutOfTheWay = [&](std::size_t each) {
        return std::ranges::all_of(m_plan.tasks[each].waitsFor, [&](std::size_t other) {
            return (circle && contains(circle->tasks, other)) || hasLeft(other, std::nullopt);
        });
    };
    return circle ? std::ranges::all_of(circle->tasks, isOutOfTheWay) : isOutOfTheWay(task);
}

/// Nobody has, or is about to have, its old address.
bool Schedule::mayReturn(std::size_t task) const
{
    return std::ranges::all_of(m_members[task].waiters, [this](std::size_t waiter) {
        const Member& member = m_members[waiter];
        return !member.underWay && (member.state == State::Waiting || member.state == State::Detoured ||
                                    member.state == State::PutBack || member.state == State::Marred);
    });
}

/// It has left its address, and does not come back: seen from within that circle, or from outside.
bool Schedule::hasLeft(std::size_t task, std::optional<std::size_t> circle) const
{
    const Member& member = m_members[task];
    if (member.state == State::Idle)
        return true;
    if (circle && member.circle == circle)
        return !member.underWay && (member.state == State::Changed || member.state == State::Detoured);
    return member.state == State::Changed && (!member.circle || isWhole(m_circles[*member.circle]));
}

bool Schedule::isWhole(const Circle& circle) const
{
    return std::ranges::all_of(circle.tasks, [this](std::size_t task) {
        return m_members[task].state == State::Changed && !m_members[task].underWay;
    });
}

const Schedule::Circle* Schedule::circleOf(std::size_t task) const
{
    return m_members[task].circle ? &m_circles[*m_members[task].circle] : nullptr;
}

void Schedule::fail(std::size_t task)
{
    m_hasFailed = true;
    if (m_members[task].circle)
        m_circles[*m_members[task].circle].hasFailed = true;
}

void Schedule::ended(std::size_t task, End end)
{
    Member& member = m_members[task];
    const Move move = *member.underWay;
    const bool isAside = move == Move::Detour && member.state == State::Failed;
    member.underWay.reset();
    if (move == Move::Return) {
        member.state = end == End::Done ? State::PutBack : end == End::Partly ? State::Marred : State::Lost;
    } else if (end == End::Done || (isAside && end == End::Partly)) {
        member.state = move == Move::Detour ? State::Detoured : State::Changed;
        m_isProven = m_isProven || move == Move::Change;
    } else {
        fail(task);
        if (isAside)
            member.state = State::Lost;
        else if (end != End::Unchanged)
            member.state = State::Failed;
        else if (member.state == State::Waiting)
            member.state = State::PutBack;
    }
}

bool Schedule::isIdle() const
{
    return std::ranges::none_of(m_members, [](const Member& member) { return member.underWay.has_value(); });
}

bool Schedule::isSettled(std::size_t task) const
{
    switch (const Member& member = m_members[task]; member.state) {
    case State::Idle:
    case State::PutBack:
    case State::Marred:
    case State::Lost:
        return !member.underWay;
    case State::Changed:
        return !member.underWay && (!member.circle || isWhole(m_circles[*member.circle]));
    default:
        return false;
    }
}

bool Schedule::isInFailedCircle(std::size_t task) const
{
    const Circle* const circle = circleOf(task);
    return circle && circle->hasFailed;
}

} // namespace site
