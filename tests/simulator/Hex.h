// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <string>
#include <string_view>

/// "42 01" as bytes; blanks are ignored.
inline base::Bytes hex(std::string_view text)
{
    base::Bytes bytes;
    std::string digits;
    for (const char each : text) {
        if (each != ' ')
            digits += each;
        if (digits.size() == 2) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits, nullptr, 16)));
            digits.clear();
        }
    }
    return bytes;
}
