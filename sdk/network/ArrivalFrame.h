// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "sdk/RzCameraSdk.h"

#include <cstddef>
#include <optional>

namespace sdk {

/// What a device says of itself, beside and before all GVCP.
struct Arrival
{
    RZ_ARRIVAL kind = RZ_ARRIVAL_SPEECH;
    std::size_t adapter = 0; ///< Index of Network::adapters() that heard it.
    base::MacAddress mac;
    base::Ipv4 address; ///< The one that it has, or would like to have; 0.0.0.0 for none.

    bool operator==(const Arrival&) const = default;
};

/// Out of a frame that nobody has looked at yet: an ARP packet for IPv4 on Ethernet (RFC 826, RFC 5227), or
/// what a DHCP client sends to find a server or to get an address (RFC 2131). Nothing for all others.
std::optional<Arrival> parseArrivalFrame(base::ByteView frame, std::size_t adapter);

} // namespace sdk
