// SPDX-License-Identifier: Apache-2.0
#include "inventory/Adapter.h"

#include "base/FileDescriptor.h"
#include "inventory/Netlink.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <netlink/route/addr.h>
#include <netlink/route/link.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace inventory {
namespace {

/// Mbit/s; nothing when the driver does not say.
std::optional<unsigned> linkSpeed(const base::FileDescriptor& socket, const std::string& adapter)
{
    // The kernel first says how many words of link modes it has, three times as many of which then follow.
    alignas(ethtool_link_settings) std::array<char, sizeof(ethtool_link_settings) + 12 * SCHAR_MAX> memory{};
    auto* const settings = reinterpret_cast<ethtool_link_settings*>(memory.data());
    ifreq request{};
    adapter.copy(request.ifr_name, sizeof request.ifr_name - 1);
    request.ifr_data = memory.data();
    settings->cmd = ETHTOOL_GLINKSETTINGS;
    if (::ioctl(socket.get(), SIOCETHTOOL, &request) != 0 || settings->link_mode_masks_nwords >= 0)
        return std::nullopt;
    settings->link_mode_masks_nwords = static_cast<__s8>(-settings->link_mode_masks_nwords);
    settings->cmd = ETHTOOL_GLINKSETTINGS;
    if (::ioctl(socket.get(), SIOCETHTOOL, &request) != 0)
        return std::nullopt;
    const std::uint32_t speed = settings->speed;
    return speed == 0 || speed == static_cast<std::uint32_t>(SPEED_UNKNOWN) ? std::nullopt
                                                                            : std::optional<unsigned>(speed);
}

} // namespace

base::Ipv4 AdapterAddress::mask() const
{
    return prefixLength == 0 ? base::Ipv4() : base::Ipv4(~std::uint32_t{0} << (32 - prefixLength));
}

std::string AdapterAddress::toText() const
{
    return address.toText() + "/" + std::to_string(prefixLength);
}

bool Adapter::hasAddress(base::Ipv4 address) const
{
    return std::ranges::find(addresses, address, &AdapterAddress::address) != addresses.end();
}

const AdapterAddress* Adapter::inSubnetOf(base::Ipv4 other) const
{
    const auto found =
        std::ranges::find_if(addresses, [other](const AdapterAddress& own) { return own.reaches(other); });
    return found == addresses.end() ? nullptr : &*found;
}

int reversePathFilterOf(const std::string& adapter)
{
    std::ifstream file("/proc/sys/net/ipv4/conf/" + adapter + "/rp_filter");
    int value = 0;
    file >> value;
    return value;
}

std::vector<Adapter> hostAdapters()
{
    Netlink netlink;
    nl_cache* links = nullptr;
    netlink.require(rtnl_link_alloc_cache(netlink.get(), AF_UNSPEC, &links), "the network adapters");
    const Cache linksOwner(links);
    nl_cache* addresses = nullptr;
    netlink.require(rtnl_addr_alloc_cache(netlink.get(), &addresses), "the network adapters' addresses");
    const Cache addressesOwner(addresses);

    const base::FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const int filterOfAll = reversePathFilterOf("all");
    std::vector<Adapter> adapters;
    for (nl_object* each = nl_cache_get_first(links); each; each = nl_cache_get_next(each)) {
        auto* const link = reinterpret_cast<rtnl_link*>(each);
        const unsigned flags = rtnl_link_get_flags(link);
        if ((flags & IFF_LOOPBACK) != 0)
            continue;
        Adapter adapter;
        adapter.name = rtnl_link_get_name(link);
        if (const auto mac = macOf(rtnl_link_get_addr(link)))
            adapter.mac = *mac;
        adapter.index = static_cast<unsigned>(rtnl_link_get_ifindex(link));
        adapter.isUp = (flags & IFF_UP) != 0;
        adapter.hasCarrier = (flags & IFF_RUNNING) != 0;
        adapter.isEthernet = rtnl_link_get_arptype(link) == ARPHRD_ETHER;
        if (const char* const kind = rtnl_link_get_type(link))
            adapter.kind = kind;
        adapter.master = static_cast<unsigned>(std::max(rtnl_link_get_master(link), 0));
        adapter.mtu = rtnl_link_get_mtu(link);
        adapter.linkSpeed = linkSpeed(socket, adapter.name);
        adapter.reversePathFilter = std::max(filterOfAll, reversePathFilterOf(adapter.name));
        adapters.push_back(std::move(adapter));
    }
    for (nl_object* each = nl_cache_get_first(addresses); each; each = nl_cache_get_next(each)) {
        auto* const entry = reinterpret_cast<rtnl_addr*>(each);
        const auto index = static_cast<unsigned>(rtnl_addr_get_ifindex(entry));
        const auto adapter = std::ranges::find(adapters, index, &Adapter::index);
        const auto address = ipv4Of(rtnl_addr_get_local(entry));
        if (adapter == adapters.end() || rtnl_addr_get_family(entry) != AF_INET || !address)
            continue;
        adapter->addresses.push_back({*address, static_cast<unsigned>(rtnl_addr_get_prefixlen(entry))});
    }
    return adapters;
}

} // namespace inventory
