// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>

using Seconds = std::chrono::duration<double>;

inline Seconds timeOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - start;
}

/// The shortest of three times: what else the host does makes times longer, never shorter.
inline Seconds shortestTimeOf(const std::function<void()>& work)
{
    return std::min({timeOf(work), timeOf(work), timeOf(work)});
}
