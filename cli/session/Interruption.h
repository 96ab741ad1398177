// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"

#include <chrono>
#include <csignal>

namespace cli {

/// While this lives, SIGINT, SIGTERM and SIGHUP do not end the process but are told here: the calling thread,
/// and the threads that it starts, have them blocked. Those that the process ignores anyway, as under
/// nohup(1), stay ignored.
///
/// At most one at a time, on the main thread.
class Interruption
{
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    /// A signal that was not waited for takes its usual course now.
    ~Interruption();

    /// Is readable from the first signal on.
    int descriptor() const { return m_descriptor.get(); }

    /// Waits for a signal, until one arrives or the time is over; whether one did. It counts as dealt with.
    bool arrives(std::chrono::milliseconds patience);

private:
    sigset_t m_before;
    base::FileDescriptor m_descriptor;
};

} // namespace cli
