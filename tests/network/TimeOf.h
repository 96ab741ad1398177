// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>

using Seconds = std::chrono::duration<double>;

inline Seconds timeOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - start;
}
