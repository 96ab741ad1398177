// SPDX-License-Identifier: Apache-2.0
#include "base/MacAddress.h"

#include <charconv>
#include <cstdio>
#include <ostream>

namespace base {

std::optional<MacAddress> MacAddress::parse(std::string_view text)
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

std::string MacAddress::toText() const
{
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", bytes[0], bytes[1], bytes[2], bytes[3],
                  bytes[4], bytes[5]);
    return text;
}

std::ostream& operator<<(std::ostream& out, const MacAddress& mac)
{
    return out << mac.toText();
}

} // namespace base
