// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace base {

/// A camera's identity on the wire and in every list.
struct MacAddress
{
    std::array<std::uint8_t, 6> bytes{};

    /// Twelve hexadecimal digits in any case: in pairs joined by colons throughout or by dashes throughout,
    /// or bare.
    static std::optional<MacAddress> parse(std::string_view text);

    /// "00:1A:2B:3C:4D:5E".
    std::string toText() const;

    /// All zeros, which is nobody's.
    bool isUnspecified() const { return *this == MacAddress{}; }
    /// Of several machines, as that of a broadcast is.
    bool isGroup() const { return (bytes[0] & 1) != 0; }

    auto operator<=>(const MacAddress&) const = default;
};

/// As text.
std::ostream& operator<<(std::ostream& out, const MacAddress& mac);

} // namespace base
