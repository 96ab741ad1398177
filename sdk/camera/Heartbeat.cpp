// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/Heartbeat.h"

#include <algorithm>
#include <csignal>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// No camera is asked more often than this, however short its time-out: one that has a wrong one must not
/// cause a flood.
constexpr std::chrono::milliseconds ShortestInterval = 100ms;
/// No camera is asked less often, however long its time-out: a loss of control is to be noticed.
constexpr std::chrono::milliseconds LongestInterval = 1000ms;

/// All signals blocked for the calling thread, and those that it starts, until the end of the scope.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before{};
};

} // namespace

std::chrono::milliseconds Heartbeat::intervalFor(std::chrono::milliseconds timeout)
{
    return std::clamp(timeout / 4, ShortestInterval, LongestInterval);
}

Heartbeat::Heartbeat(std::chrono::milliseconds interval, std::function<bool()> beat) : m_beat(std::move(beat))
{
    const SignalsBlocked blocked;
    m_thread = std::thread([this, interval] { run(interval); });
}

Heartbeat::~Heartbeat()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
    }
    m_stopped.notify_one();
    m_thread.join();
}

void Heartbeat::run(std::chrono::milliseconds interval)
{
    std::unique_lock lock(m_mutex);
    while (!m_stopped.wait_for(lock, interval, [this] { return m_isStopped; })) {
        lock.unlock();
        if (!m_beat())
            return;
        lock.lock();
    }
}

} // namespace sdk
