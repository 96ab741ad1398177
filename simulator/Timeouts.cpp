// SPDX-License-Identifier: Apache-2.0
#include "simulator/Timeouts.h"

#include <utility>

namespace simulator {

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
