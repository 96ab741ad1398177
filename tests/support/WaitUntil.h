// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <thread>

/// Waits until the condition holds, 20 s at most, and says whether it does. It is for what happens in the
/// kernel or in another process, which tell nobody; so the condition is asked again and again.
template <typename Condition>
bool waitUntil(Condition condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}
