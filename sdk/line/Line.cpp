// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Line.h"

#include <algorithm>

namespace sdk {

namespace {

/// Heard without a look at who may go on: hundreds of cameras answer a question at once, and a flood must not
/// keep anybody from what is due.
constexpr int DatagramsAtOnce = 512;

} // namespace

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
        listen(next);
    }
}

/// Waits until then for something to hear, and hears what else has come with it.
void Line::listen(Clock::time_point until)
{
    for (int i = 0; i < DatagramsAtOnce; ++i) {
        const auto datagram = m_network.receive(until);
        if (!datagram)
            return;
        tell(*datagram);
        until = m_network.now();
    }
}

void Line::tell(const Datagram& datagram)
{
    const auto acknowledge = gvcp::parseAcknowledge(datagram.payload);
    if (!acknowledge)
        return;
    if (const auto sighting = m_looks.sightingIn(datagram, *acknowledge))
        for (Waiter& waiter : m_waiters)
            waiter.step.see(*sighting);
    else
        for (Waiter& waiter : m_waiters)
            waiter.step.take(datagram, *acknowledge);
}

} // namespace sdk
