// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/TimerQueue.h"

#include <utility>
#include <vector>

namespace simulator {

void TimerQueue::after(std::chrono::milliseconds delay, Action action)
{
    m_actions.emplace(m_now + delay, std::move(action));
}

std::optional<TimerQueue::Clock::time_point> TimerQueue::next() const
{
    return m_actions.empty() ? std::nullopt : std::optional(m_actions.begin()->first);
}

void TimerQueue::advance(Clock::time_point now)
{
    m_now = now;
    std::vector<Action> due;
    const auto end = m_actions.upper_bound(now);
    for (auto each = m_actions.begin(); each != end; ++each)
        due.push_back(std::move(each->second));
    m_actions.erase(m_actions.begin(), end);
    for (const Action& action : due)
        action();
}

void Timeouts::after(std::chrono::milliseconds delay, TimerQueue::Action action)
{
    m_queue.after(delay, [token = std::weak_ptr(m_token), action = std::move(action)] {
        if (!token.expired())
            action();
    });
}

void Timeouts::cancelAll()
{
    m_token = std::make_shared<Token>();
}

} // namespace simulator
