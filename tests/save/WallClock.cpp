// SPDX-License-Identifier: Apache-2.0
#include "tests/save/WallClock.h"

#include <atomic>
#include <sys/time.h>
#include <time.h>

namespace {

std::atomic<bool> isRightOnceMore = false;
std::atomic<time_t> secondsAhead = 0;

} // namespace

void wall_clock::setAfterNextLook(std::chrono::seconds ahead)
{
    isRightOnceMore = true;
    secondsAhead = ahead.count();
}

void wall_clock::putRight()
{
    secondsAhead = 0;
}

/// In place of the C library's, for Qt too, which asks nobody else for the time of day.
extern "C" __attribute__((visibility("default"))) int gettimeofday(timeval* time, void*) noexcept
{
    timespec right = {};
    ::clock_gettime(CLOCK_REALTIME, &right);
    time->tv_sec = right.tv_sec;
    time->tv_usec = right.tv_nsec / 1000;
    if (!isRightOnceMore.exchange(false))
        time->tv_sec += secondsAhead;
    return 0;
}
