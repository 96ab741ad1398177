// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Plan.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace site {

/// Decides what may begin, so that no two cameras ever have one address; knows neither time nor network.
///
/// One task alone, the first of the file that may begin, until one has succeeded; then all that may, side by
/// side. A task begins when all that it waits for have left their addresses for good. A circle of those that
/// wait for each other begins when nobody else is in its way: the one with a detour takes that, and the
/// others follow. What fails is put back; those that wait for it are not begun, and without `keepsGoing`
/// nobody else is. When one of a circle fails, the others of it go back too, the latest first: the address
/// that the failed one has to return to, or that the one on the detour came from, may be another's by then.
class Schedule
{
public:
    enum class Move
    {
        Detour, ///< To the free address, for now.
        Change, ///< To what is planned.
        Return  ///< To what was before.
    };
    struct Order
    {
        std::size_t task = 0;
        Move move = Move::Change;

        bool operator==(const Order&) const = default;
    };
    /// How an order ended.
    enum class End
    {
        Done,
        Unchanged, ///< It failed before anything was done.
        Partly,    ///< It failed, but the camera is seen to have the address that this was about.
        Failed     ///< It may have that address, or the one that it had.
    };
    enum class State
    {
        Idle,     ///< There is nothing to do.
        Waiting,  ///< It is not begun.
        Detoured, ///< It has the free address.
        Changed,  ///< It is as planned.
        Failed,   ///< It is to go back.
        PutBack,  ///< It failed, or its circle, and is as before.
        Marred,   ///< It could not be put back, but has its old address.
        Lost      ///< It could not be put back, and may have any of its addresses.
    };

    /// The plan outlives this.
    Schedule(const Plan& plan, bool keepsGoing);

    /// What is to begin now. Each is under way until its end is told.
    std::vector<Order> next();
    void ended(std::size_t task, End end);
    /// Nothing new is to begin. What has begun goes on to its end; so does a circle.
    void stop() { m_isStopped = true; }

    /// Nothing is under way: after a next() that has nothing, it is over.
    bool isIdle() const;
    State stateOf(std::size_t task) const { return m_members[task].state; }
    /// Nothing more becomes of the task, whatever becomes of the others.
    bool isSettled(std::size_t task) const;
    /// The task is in a circle in which one failed.
    bool isInFailedCircle(std::size_t task) const;
    bool hasFailures() const { return m_hasFailed; }

private:
    using Tasks = std::vector<std::size_t>;
    struct Circle
    {
        Tasks tasks;
        bool hasBegun = false;
        bool hasFailed = false;
    };
    struct Member
    {
        State state = State::Idle;
        std::optional<Move> underWay;
        Tasks waiters; ///< Those that wait for it.
        std::optional<std::size_t> circle;
    };

    void findCircles();
    std::optional<Move> toGoOn(std::size_t task) const;
    bool mayBegin(std::size_t task) const;
    bool mayReturn(std::size_t task) const;
    bool hasLeft(std::size_t task, std::optional<std::size_t> circle) const;
    bool isWhole(const Circle& circle) const;
    const Circle* circleOf(std::size_t task) const;
    void fail(std::size_t task);

    const Plan& m_plan;
    bool m_keepsGoing;
    bool m_isStopped = false;
    bool m_hasFailed = false;
    bool m_isProven = false; ///< One has succeeded.
    std::vector<Member> m_members;
    std::vector<Circle> m_circles;
};

} // namespace site
