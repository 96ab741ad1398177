// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace sdk {

/// Where a camera says that its description file is.
struct DescriptionUrl
{
    bool isLocal = false; ///< In the camera's own memory, at:
    std::uint32_t address = 0;
    std::uint32_t length = 0; ///< Bytes, not 0; address and length stay within 32 bits.
};

/// "Local:name;address;length" in every spelling that cameras use: any case, blanks, leading slashes of the
/// name, numbers in hexadecimal with or without 0x, a query after them. "File:..." and "http:..." are not
/// local. Nothing when it is neither.
std::optional<DescriptionUrl> parseDescriptionUrl(std::string_view text);

} // namespace sdk
