// SPDX-License-Identifier: Apache-2.0
#include "inventory/FreeAddresses.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace inventory {
namespace {

/// A longer prefix leaves no room for two hosts beside the subnet's own two addresses.
constexpr unsigned LongestPrefix = 30;

/// Below them are, as a rule, gateways and what else a person has numbered first.
constexpr std::uint32_t FirstOffset = 10;

/// RFC 3927: the first and the last 256 of 169.254.0.0/16 are nobody's.
constexpr std::uint32_t Reserved = 256;

struct Range
{
    base::Ipv4 first;
    std::uint32_t count = 0;
};

Range hostsOf(const AdapterAddress& subnet)
{
    const std::uint32_t size = std::uint32_t{1} << (32 - subnet.prefixLength);
    const base::Ipv4 network = subnet.address.networkAddress(subnet.mask());
    if (network.isLinkLocal() && subnet.prefixLength == 16)
        return {network.plus(Reserved), size - 2 * Reserved};
    return {network.plus(1), size - 2};
}

} // namespace

const AdapterAddress* homeOf(const Adapter& adapter)
{
    const AdapterAddress* home = nullptr;
    for (const AdapterAddress& each : adapter.addresses)
        if (each.prefixLength >= 1 && each.prefixLength <= LongestPrefix && each.address.canBeHost() &&
            (!home || (home->address.isLinkLocal() && !each.address.isLinkLocal())))
            home = &each;
    return home;
}

bool overlap(const AdapterAddress& a, const AdapterAddress& b)
{
    return a.reaches(b.address) || b.reaches(a.address);
}

std::optional<unsigned> prefixOf(base::Ipv4 mask)
{
    const auto prefix = static_cast<unsigned>(std::popcount(mask.number()));
    return mask.isMask() && prefix >= 1 && prefix <= LongestPrefix ? std::optional(prefix) : std::nullopt;
}

FreeAddresses::FreeAddresses(const Inventory& inventory, std::set<base::Ipv4> taken)
    : m_inventory(inventory),
      m_used(std::move(taken))
{
    for (const Adapter& adapter : m_inventory.adapters)
        for (const AdapterAddress& own : adapter.addresses)
            m_used.insert(own.address);
    for (const Camera& camera : m_inventory.cameras) {
        m_used.insert({camera.ip.address, camera.ip.gateway});
        if (camera.stored)
            m_used.insert({camera.stored->address, camera.stored->gateway});
        if (camera.holder)
            m_used.insert(camera.holder->address);
        if (camera.stream)
            m_used.insert(camera.stream->address);
    }
    for (const Neighbour& neighbour : m_inventory.neighbours)
        m_used.insert(neighbour.address);
    for (const Arrival& arrival : m_inventory.arrivals)
        m_used.insert(arrival.address);
}

std::optional<AdapterAddress> FreeAddresses::in(const AdapterAddress& subnet, unsigned adapterIndex)
{
    const auto [first, count] = hostsOf(subnet);
    base::Ipv4& cursor =
        m_cursors.try_emplace(first, first.plus(std::min(FirstOffset - 1, count / 2))).first->second;
    for (std::uint32_t tried = 0; tried < count; ++tried) {
        const base::Ipv4 candidate = cursor;
        cursor = first.plus((cursor.number() - first.number() + 1) % count);
        if (!candidate.canBeHost() || !m_used.insert(candidate).second)
            continue;
        m_given.push_back({adapterIndex, candidate});
        return AdapterAddress{candidate, subnet.prefixLength};
    }
    return std::nullopt;
}

std::optional<AdapterAddress> FreeAddresses::forCamera(const Camera& camera)
{
    const auto [entry, isNew] = m_ofCameras.try_emplace(camera.mac);
    const Adapter* const adapter = m_inventory.adapterWith(camera.adapterIndex);
    if (const AdapterAddress* const home = isNew && adapter ? homeOf(*adapter) : nullptr)
        entry->second = in(*home, camera.adapterIndex);
    return entry->second;
}

std::optional<AdapterAddress> FreeAddresses::inPrivateSubnet(unsigned adapterIndex)
{
    constexpr std::uint32_t begin = base::Ipv4::parse("192.168.10.0")->number();
    constexpr std::uint32_t end = base::Ipv4::parse("192.168.255.0")->number();
    for (std::uint32_t network = begin; network <= end; network += 256) {
        const AdapterAddress subnet{base::Ipv4(network + 1), 24};
        const bool isUsed =
            std::ranges::any_of(m_used, [&subnet](base::Ipv4 each) { return subnet.reaches(each); });
        if (isUsed || overlaps(subnet))
            continue;
        m_subnets.push_back(subnet);
        return in(subnet, adapterIndex);
    }
    return std::nullopt;
}

bool FreeAddresses::overlaps(const AdapterAddress& subnet) const
{
    const auto meets = [&subnet](const AdapterAddress& each) { return overlap(subnet, each); };
    return std::ranges::any_of(m_subnets, meets) ||
           std::ranges::any_of(m_inventory.adapters, [&meets](const Adapter& adapter) {
               return std::ranges::any_of(adapter.addresses, meets);
           });
}

} // namespace inventory
