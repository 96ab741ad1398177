// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <optional>
#include <string>
#include <vector>

namespace inventory {

struct AdapterAddress
{
    base::Ipv4 address;
    unsigned prefixLength = 24;

    base::Ipv4 mask() const;
    bool reaches(base::Ipv4 other) const { return other.isInSubnetOf(address, mask()); }
    /// "192.168.10.1/24".
    std::string toText() const;

    bool operator==(const AdapterAddress&) const = default;
};

/// A network interface of this computer, loopback left out.
struct Adapter
{
    std::string name;
    base::MacAddress mac;    ///< Unspecified for one that has none.
    unsigned index = 0;      ///< The kernel's interface index.
    bool isUp = false;       ///< Switched on.
    bool hasCarrier = false; ///< A cable, and something at its other end that is on.
    bool isEthernet = false; ///< Of the kind that cameras can be on.
    std::string kind;    ///< What the kernel calls a device in software: "veth", "bridge", "bond" ...; empty
                         ///< for hardware.
    unsigned master = 0; ///< The index of the bridge or bond whose port it is; 0 for none.
    std::vector<AdapterAddress> addresses;
    std::optional<unsigned> linkSpeed; ///< Mbit/s; nothing when the driver does not say.
    unsigned mtu = 0;                  ///< Bytes.
    int reversePathFilter = 0; ///< In force, the larger of all adapters' and its own: 1 strict, 2 loose.

    bool operator==(const Adapter&) const = default;

    bool isPhysical() const { return isEthernet && kind.empty(); }
    /// Whether that is one of its own.
    bool hasAddress(base::Ipv4 address) const;
    /// The address in whose subnet the other one lies; null when it lies in none of them.
    const AdapterAddress* inSubnetOf(base::Ipv4 other) const;
};

/// What the kernel is set to on one adapter, or for "all"; the larger of both is in force. 0 when it does not
/// tell. Of the calling thread's own network.
int reversePathFilterOf(const std::string& adapter);

/// In the kernel's order. Throws std::system_error when the kernel does not tell.
std::vector<Adapter> hostAdapters();

} // namespace inventory
