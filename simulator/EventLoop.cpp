// SPDX-License-Identifier: Apache-2.0
#include "simulator/EventLoop.h"

#include "base/FileDescriptor.h"
#include "simulator/ControlSocket.h"
#include "simulator/Farm.h"
#include "simulator/wire/TimerQueue.h"
#include "simulator/wire/Wire.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/signalfd.h>
#include <system_error>

namespace simulator {

namespace {

// Frames taken in at a time, so that timers and commands get their turn in a flood.
constexpr int FramesPerTurn = 32;

sigset_t endSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

/// Readable when one of them has come.
base::FileDescriptor openEndSignals()
{
    const sigset_t signals = endSignals();
    base::FileDescriptor fd(::signalfd(-1, &signals, SFD_CLOEXEC));
    if (!fd)
        throw std::system_error(errno, std::generic_category(), "signalfd");
    return fd;
}

/// How long poll() may wait, in its own terms.
int pollTime(std::optional<TimerQueue::Clock::time_point> nextTimer,
             std::optional<std::chrono::milliseconds> wireTime)
{
    std::optional<std::chrono::milliseconds> time = wireTime;
    if (nextTimer) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*nextTimer - TimerQueue::Clock::now());
        time = std::max(std::min(left, time.value_or(left)), std::chrono::milliseconds(0));
    }
    return time ? static_cast<int>(time->count()) : -1;
}

} // namespace

void holdSignals()
{
    const sigset_t signals = endSignals();
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
}

void runUntilSignal(Wire& wire, Farm& farm, TimerQueue& timers, ControlSocket* control)
{
    const base::FileDescriptor end = openEndSignals();
    std::vector<pollfd> fds;
    bool isWireIdle = true;
    for (;;) {
        fds = {{end.get(), POLLIN, 0}, {wire.fd(), POLLIN, 0}};
        if (control)
            for (const int fd : control->descriptors())
                fds.push_back({fd, POLLIN, 0});
        const int wait = isWireIdle ? pollTime(timers.next(), wire.recheckTime()) : 0;
        if (::poll(fds.data(), fds.size(), wait) < 0 && errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "poll");
        if (fds[0].revents != 0)
            return;

        timers.advance(TimerQueue::Clock::now());
        isWireIdle = false;
        for (int i = 0; i < FramesPerTurn && !isWireIdle; ++i) {
            const auto frame = wire.receive();
            if (frame)
                farm.receive(*frame);
            else
                isWireIdle = true;
        }
        if (control &&
            std::any_of(fds.begin() + 2, fds.end(), [](const pollfd& each) { return each.revents != 0; }))
            control->serve();
    }
}

} // namespace simulator
