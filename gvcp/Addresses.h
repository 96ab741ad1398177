// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gvcp {

/// An IPv4 address, mask or gateway in host order: the first octet is the top byte.
using Ipv4 = std::uint32_t;

inline constexpr Ipv4 LimitedBroadcast = 0xFFFFFFFF;

/// "192.168.1.20".
std::string toText(Ipv4 address);

/// Four decimal octets of one to three digits, 0 to 255 each, and nothing else; no other spelling is taken.
std::optional<Ipv4> parseIpv4(std::string_view text);

inline bool sameSubnet(Ipv4 a, Ipv4 b, Ipv4 mask)
{
    return ((a ^ b) & mask) == 0;
}

/// Ones, then zeros: 255.255.254.0 is one, 255.0.255.0 is none. 0.0.0.0 and 255.255.255.255 are contiguous
/// too.
inline bool isContiguousMask(Ipv4 mask)
{
    const Ipv4 hostBits = ~mask;
    return (hostBits & (hostBits + 1)) == 0;
}

/// A camera's identity on the wire and in every list.
struct MacAddress
{
    std::array<std::uint8_t, 6> bytes{};

    auto operator<=>(const MacAddress&) const = default;
};

/// "00:1A:2B:3C:4D:5E".
std::string toText(const MacAddress& mac);

/// Twelve hexadecimal digits in any case: in pairs joined by colons throughout or by dashes throughout, or
/// bare.
std::optional<MacAddress> parseMac(std::string_view text);

} // namespace gvcp
