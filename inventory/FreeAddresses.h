// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace inventory {

/// An address that is to be given to somebody who is heard on that adapter.
struct Proposal
{
    unsigned adapterIndex = 0;
    base::Ipv4 address;

    bool operator==(const Proposal&) const = default;
};

/// Finds addresses that nobody is known to have; each only once.
class FreeAddresses
{
public:
    /// Nor are those found that are `taken`. The inventory outlives this.
    FreeAddresses(const Inventory& inventory, std::set<base::Ipv4> taken);

    /// For somebody heard on that adapter: an address of the subnet, with its prefix. Nothing when it has
    /// none left.
    std::optional<AdapterAddress> in(const AdapterAddress& subnet, unsigned adapterIndex);

    /// In the subnet of the adapter that hears the camera; the same each time it is asked for that camera.
    std::optional<AdapterAddress> forCamera(const Camera& camera);

    /// In a private subnet where neither this computer nor any camera is.
    std::optional<AdapterAddress> inPrivateSubnet(unsigned adapterIndex);

    /// Whether that subnet has something in common with one of this computer's, or one just given.
    bool overlaps(const AdapterAddress& subnet) const;

    const std::vector<Proposal>& given() const { return m_given; }

private:
    const Inventory& m_inventory;
    std::set<base::Ipv4> m_used;
    std::map<base::Ipv4, base::Ipv4> m_cursors; ///< Where to go on, by the subnet's first address.
    std::map<base::MacAddress, std::optional<AdapterAddress>> m_ofCameras;
    std::vector<AdapterAddress> m_subnets; ///< Those given by inPrivateSubnet().
    std::vector<Proposal> m_given;
};

/// The address of the adapter in whose subnet its cameras best are; null when it has none with room.
const AdapterAddress* homeOf(const Adapter& adapter);

bool overlap(const AdapterAddress& a, const AdapterAddress& b);

/// The number of ones in a mask; nothing when that is none, or leaves no room for two hosts.
std::optional<unsigned> prefixOf(base::Ipv4 mask);

} // namespace inventory
