// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>

/// Of a fuzz target: what does not hold ends the program, as a sanitizer's finding does.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}
