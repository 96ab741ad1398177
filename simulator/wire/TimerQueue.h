// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
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

/// One owner's timers in the common queue: they are cancelled together, and at the latest with this object.
class Timeouts
{
public:
    explicit Timeouts(TimerQueue& queue) : m_queue(queue) {}
    Timeouts(const Timeouts&) = delete;
    Timeouts& operator=(const Timeouts&) = delete;

    TimerQueue::Clock::time_point now() const { return m_queue.now(); }
    void after(std::chrono::milliseconds delay, TimerQueue::Action action);
    void cancelAll();

private:
    struct Token
    {};

    TimerQueue& m_queue;
    /// The queued actions watch it: one whose token is gone does nothing when its time comes.
    std::shared_ptr<const Token> m_token = std::make_shared<Token>();
};

} // namespace simulator
