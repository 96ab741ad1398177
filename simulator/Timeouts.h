// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/TimerQueue.h"

#include <memory>

namespace simulator {

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
    std::shared_ptr<const Token> m_token = std::make_shared<Token>(); ///< Only what holds it still runs.
};

} // namespace simulator
