// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"

#include <optional>
#include <string>
#include <vector>

namespace sdk {

struct AdapterAddress
{
    base::Ipv4 address;
    base::Ipv4 mask;

    /// The subnet's own; nothing for a subnet of one or two addresses, which has none.
    std::optional<base::Ipv4> broadcastAddress() const;
};

/// A network interface of this host with its IPv4 addresses, if it has any.
struct Adapter
{
    std::string name;
    unsigned index = 0; ///< The kernel's interface index.
    std::vector<AdapterAddress> addresses;

    /// The address in whose subnet `camera` lies; null when it lies in none of them.
    const AdapterAddress* inSubnetOf(base::Ipv4 camera) const;

    /// The address from which to talk to `camera`: that one, else the first; 0.0.0.0 without any.
    base::Ipv4 addressTowards(base::Ipv4 camera) const;

    /// Whether this is the broadcast address of one of its subnets.
    bool isBroadcast(base::Ipv4 address) const;
};

/// All interfaces that are up, not loopback and have an IPv4 address, in the kernel's order. Throws
/// std::system_error when the kernel does not tell.
std::vector<Adapter> hostAdapters();

/// The same, and behind them those of these interface indexes that have no address.
std::vector<Adapter> hostAdaptersAnd(const std::vector<unsigned>& withoutAddress);

} // namespace sdk
