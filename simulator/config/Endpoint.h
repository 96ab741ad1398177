// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// A program on a network, as UDP knows it.
struct Endpoint
{
    base::Ipv4 address;
    std::uint16_t port = 0;

    bool operator==(const Endpoint&) const = default;
};

/// "192.168.1.5:50010"; nothing for any other text, and for port 0.
std::optional<Endpoint> parseEndpoint(std::string_view text);
std::string toText(const Endpoint& endpoint);

} // namespace simulator
