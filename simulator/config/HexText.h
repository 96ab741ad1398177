// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace simulator {

/// As registers are written: 0x and eight digits.
inline std::string hexText(std::uint32_t number)
{
    char text[11];
    std::snprintf(text, sizeof text, "0x%08X", number);
    return text;
}

} // namespace simulator
