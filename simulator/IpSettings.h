// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"

namespace simulator {

/// What an interface needs to take part in an IPv4 network; a gateway of 0.0.0.0 is none.
struct IpSettings
{
    gvcp::Ipv4 address = 0;
    gvcp::Ipv4 mask = 0;
    gvcp::Ipv4 gateway = 0;

    bool operator==(const IpSettings&) const = default;

    bool reaches(gvcp::Ipv4 other) const { return gvcp::sameSubnet(address, other, mask); }
    gvcp::Ipv4 broadcast() const { return address | ~mask; }
};

} // namespace simulator
