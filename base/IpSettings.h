// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"

namespace base {

/// What an interface needs to take part in an IPv4 network; a gateway of 0.0.0.0 is none.
struct IpSettings
{
    Ipv4 address;
    Ipv4 mask;
    Ipv4 gateway;

    bool operator==(const IpSettings&) const = default;

    bool reaches(Ipv4 other) const { return other.isInSubnetOf(address, mask); }
    Ipv4 broadcastAddress() const { return address.broadcastAddress(mask); }
};

} // namespace base
