// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Line.h"

#include <algorithm>

namespace sdk {

/// Lets one coroutine go on whose step is over; false when there is none.
bool Line::resumeOne()
{
    for (Waiter& waiter : m_waiters) {
        try {
            waiter.step.proceed();
            if (!waiter.step.isOver())
                continue;
        } catch (...) { // The one that waits gets it.
            waiter.failure = std::current_exception();
        }
        waiter.coroutine.resume(); // Waits for another step now, or has ended: the waiter is gone.
        return true;
    }
    return false;
}

void Line::serve(Clock::time_point until, const std::function<bool()>& hasNews)
{
    for (;;) {
        while (!hasNews() && resumeOne()) {
        }
        if (hasNews() || m_waiters.empty() || m_network.now() >= until)
            return;
        auto next = until;
        for (const Waiter& waiter : m_waiters)
            next = std::min(next, waiter.step.nextStep());
        const auto datagram = m_network.receive(next);
        if (const auto acknowledge = datagram ? gvcp::parseAcknowledge(datagram->payload) : std::nullopt)
            for (Waiter& waiter : m_waiters)
                waiter.step.take(*datagram, *acknowledge);
    }
}

} // namespace sdk
