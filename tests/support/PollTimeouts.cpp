// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PollTimeouts.h"

#include <csignal>
#include <dlfcn.h>
#include <mutex>
#include <poll.h>

namespace {

std::mutex s_mutex;
std::vector<long> s_timeouts;

} // namespace

std::vector<long> pollTimeouts()
{
    const std::lock_guard lock(s_mutex);
    return s_timeouts;
}

void forgetPollTimeouts()
{
    const std::lock_guard lock(s_mutex);
    s_timeouts.clear();
}

/// In the place of the C library's, for every library of the program.
extern "C" __attribute__((visibility("default"))) int ppoll(pollfd* files, nfds_t count,
                                                            const timespec* timeout, const sigset_t* mask)
{
    if (timeout) {
        const std::lock_guard lock(s_mutex);
        s_timeouts.push_back(timeout->tv_sec * 1000 + timeout->tv_nsec / 1000000);
    }
    static const auto next = reinterpret_cast<decltype(&ppoll)>(dlsym(RTLD_NEXT, "ppoll"));
    return next(files, count, timeout, mask);
}
