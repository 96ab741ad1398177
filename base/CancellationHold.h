// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pthread.h>

namespace base {

/// Puts a cancellation of the calling thread off until the end of the scope. Callers may end a worker thread
/// by cancelling it; the unwinding must not start while its caller holds a lock or has half of a job done.
class CancellationHold
{
public:
    CancellationHold() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_before); }
    CancellationHold(const CancellationHold&) = delete;
    CancellationHold& operator=(const CancellationHold&) = delete;
    ~CancellationHold() { pthread_setcancelstate(m_before, nullptr); }

private:
    int m_before = PTHREAD_CANCEL_ENABLE;
};

} // namespace base
