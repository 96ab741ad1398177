// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Addresses.h"

#include <charconv>
#include <cstdio>

namespace gvcp {

std::string toText(Ipv4 address)
{
    char text[16];
    std::snprintf(text, sizeof text, "%u.%u.%u.%u", address >> 24, address >> 16 & 0xFF, address >> 8 & 0xFF,
                  address & 0xFF);
    return text;
}

std::optional<Ipv4> parseIpv4(std::string_view text)
{
    Ipv4 address = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int octet = 0; octet < 4; ++octet) {
        if (octet > 0 && (at == end || *at++ != '.'))
            return std::nullopt;
        unsigned value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc{} || next - at > 3 || value > 255)
            return std::nullopt;
        address = address << 8 | value;
        at = next;
    }
    return at == end ? std::optional(address) : std::nullopt;
}

std::string toText(const MacAddress& mac)
{
    char text[18];
    const auto& b = mac.bytes;
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", b[0], b[1], b[2], b[3], b[4], b[5]);
    return text;
}

std::optional<MacAddress> parseMac(std::string_view text)
{
    const bool joined = text.size() == 17;
    if (!joined && text.size() != 12)
        return std::nullopt;
    const char joint = joined ? text[2] : '\0';
    if (joined && joint != ':' && joint != '-')
        return std::nullopt;

    MacAddress mac;
    const char* at = text.data();
    for (std::size_t i = 0; i < mac.bytes.size(); ++i) {
        if (joined && i > 0 && *at++ != joint)
            return std::nullopt;
        const auto [next, error] = std::from_chars(at, at + 2, mac.bytes[i], 16);
        if (error != std::errc{} || next != at + 2)
            return std::nullopt;
        at = next;
    }
    return mac;
}

} // namespace gvcp
