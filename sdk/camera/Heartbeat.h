// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace sdk {

/// Calls a function time and again on a thread of its own, until that returns false or the object goes.
class Heartbeat
{
public:
    /// How often a camera with this time-out wants to hear from us: three beats may get lost.
    static std::chrono::milliseconds intervalFor(std::chrono::milliseconds timeout);

    /// `beat` does not throw. The thread takes no signals; they are the program's.
    Heartbeat(std::chrono::milliseconds interval, std::function<bool()> beat);
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;
    /// Waits for a beat under way.
    ~Heartbeat();

private:
    void run(std::chrono::milliseconds interval);

    std::function<bool()> m_beat;
    std::mutex m_mutex;
    std::condition_variable m_stopped;
    bool m_isStopped = false;
    std::thread m_thread;
};

} // namespace sdk
