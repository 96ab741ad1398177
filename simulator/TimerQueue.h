// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>

namespace simulator {

/// What is to be done later, on a clock that its owner moves. One thread.
class TimerQueue
{
public:
    using Clock = std::chrono::steady_clock;
    using Action = std::function<void()>;

    explicit TimerQueue(Clock::time_point now) : m_now(now) {}

    Clock::time_point now() const { return m_now; }
    void after(std::chrono::milliseconds delay, Action action);
    /// When the next action is due.
    std::optional<Clock::time_point> next() const;
    /// Moves the clock and runs what has become due, in order; what an action adds waits for the next call.
    void advance(Clock::time_point now);

private:
    Clock::time_point m_now;
    std::multimap<Clock::time_point, Action> m_actions;
};

} // namespace simulator
