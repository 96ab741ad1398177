// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "doctor/Evidence.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace doctor {

/// Finds addresses that nobody is known to have, for the repairs of one diagnosis; each only once.
class FreeAddresses
{
public:
    explicit FreeAddresses(const Evidence& evidence);

    /// For somebody heard on that adapter: an address of the subnet, with its prefix. Nothing when it has
    /// none left.
    std::optional<inventory::AdapterAddress> in(const inventory::AdapterAddress& subnet,
                                                unsigned adapterIndex);

    /// In the subnet of the adapter that hears the camera; the same each time it is asked for that camera.
    std::optional<inventory::AdapterAddress> forCamera(const inventory::Camera& camera);

    /// In a private subnet where neither this computer nor any camera is.
    std::optional<inventory::AdapterAddress> inPrivateSubnet(unsigned adapterIndex);

    /// Whether that subnet has something in common with one of this computer's, or one just given.
    bool overlaps(const inventory::AdapterAddress& subnet) const;

    const std::vector<Proposal>& given() const { return m_given; }

private:
    const inventory::Inventory& m_inventory;
    std::set<base::Ipv4> m_used;
    std::map<base::Ipv4, base::Ipv4> m_cursors; ///< Where to go on, by the subnet's first address.
    std::map<base::MacAddress, std::optional<inventory::AdapterAddress>> m_ofCameras;
    std::vector<inventory::AdapterAddress> m_subnets; ///< Those given by inPrivateSubnet().
    std::vector<Proposal> m_given;
};

/// The address of the adapter in whose subnet its cameras best are; null when it has none with room.
const inventory::AdapterAddress* homeOf(const inventory::Adapter& adapter);

bool overlap(const inventory::AdapterAddress& a, const inventory::AdapterAddress& b);

/// The number of ones in a mask; nothing when that is none, or leaves no room for two hosts.
std::optional<unsigned> prefixOf(base::Ipv4 mask);

} // namespace doctor
