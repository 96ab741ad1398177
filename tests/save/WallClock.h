// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

/// The clock on the wall as this test program sees it. The computer's own is left alone.
namespace wall_clock {

/// The next time that somebody looks at it, it still shows the right time; afterwards it is this much ahead
/// (or behind, below zero).
void setAfterNextLook(std::chrono::seconds ahead);

/// It shows the right time again.
void putRight();

} // namespace wall_clock
