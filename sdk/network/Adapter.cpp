// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/Adapter.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <system_error>

namespace sdk {

using namespace base::literals;

namespace {

base::Ipv4 ipv4Of(const sockaddr* address)
{
    sockaddr_in ipv4{};
    std::memcpy(&ipv4, address, sizeof ipv4);
    return base::Ipv4(ntohl(ipv4.sin_addr.s_addr));
}

} // namespace

std::optional<base::Ipv4> AdapterAddress::broadcastAddress() const
{
    const bool hasTwoAtMost = mask >= "255.255.255.254"_ip;
    return hasTwoAtMost ? std::nullopt : std::optional(address.broadcastAddress(mask));
}

const AdapterAddress* Adapter::inSubnetOf(base::Ipv4 camera) const
{
    const auto found = std::find_if(addresses.begin(), addresses.end(), [camera](const AdapterAddress& own) {
        return camera.isInSubnetOf(own.address, own.mask);
    });
    return found == addresses.end() ? nullptr : &*found;
}

base::Ipv4 Adapter::addressTowards(base::Ipv4 camera) const
{
    const AdapterAddress* own = inSubnetOf(camera);
    if (own)
        return own->address;
    return addresses.empty() ? base::Ipv4() : addresses.front().address;
}

bool Adapter::isBroadcast(base::Ipv4 address) const
{
    return std::any_of(addresses.begin(), addresses.end(),
                       [address](const AdapterAddress& own) { return own.broadcastAddress() == address; });
}

std::vector<Adapter> hostAdapters()
{
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0)
        throw std::system_error(errno, std::generic_category(), "the network adapters");
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(first, &freeifaddrs);

    std::vector<Adapter> adapters;
    for (const ifaddrs* entry = first; entry; entry = entry->ifa_next) {
        if (!entry->ifa_addr || entry->ifa_addr->sa_family != AF_INET || !entry->ifa_netmask)
            continue;
        if (!(entry->ifa_flags & IFF_UP) || (entry->ifa_flags & IFF_LOOPBACK))
            continue;
        // A further address of an interface can carry a label of its own, "eth0:1".
        std::string name(entry->ifa_name);
        name.resize(std::min(name.find(':'), name.size()));
        const unsigned index = if_nametoindex(name.c_str());
        if (index == 0)
            continue;

        auto adapter = std::find_if(adapters.begin(), adapters.end(),
                                    [index](const Adapter& known) { return known.index == index; });
        if (adapter == adapters.end())
            adapter = adapters.insert(adapter, Adapter{std::move(name), index, {}});
        adapter->addresses.push_back({ipv4Of(entry->ifa_addr), ipv4Of(entry->ifa_netmask)});
    }
    return adapters;
}

std::vector<Adapter> hostAdaptersAnd(const std::vector<unsigned>& withoutAddress)
{
    auto adapters = hostAdapters();
    for (const unsigned index : withoutAddress) {
        std::array<char, IF_NAMESIZE> name{};
        if (std::ranges::find(adapters, index, &Adapter::index) == adapters.end() &&
            if_indextoname(index, name.data()))
            adapters.push_back({name.data(), index, {}});
    }
    return adapters;
}

} // namespace sdk
