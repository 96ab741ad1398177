// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>
#include <unistr.h>

inline bool isUtf8(std::string_view text)
{
    return u8_check(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()) == nullptr;
}
