// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pthread.h>

namespace genapi {

/// Puts a cancellation of the calling thread off until the end of the scope: it would unwind through the
/// engine's C frames and leave its objects locked or half made.
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

} // namespace genapi
