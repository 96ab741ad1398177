// SPDX-License-Identifier: Apache-2.0
#include "inventory/Neighbours.h"

#include "inventory/Netlink.h"

#include <linux/neighbour.h>
#include <netlink/route/neighbour.h>

namespace inventory {

std::vector<Neighbour> neighbours()
{
    Netlink netlink;
    nl_cache* all = nullptr;
    Netlink::require(rtnl_neigh_alloc_cache(netlink.get(), &all), "the kernel's neighbour table");
    const Cache owner(all);
    std::vector<Neighbour> result;
    for (nl_object* each = nl_cache_get_first(all); each; each = nl_cache_get_next(each)) {
        auto* const entry = reinterpret_cast<rtnl_neigh*>(each);
        const auto address = ipv4Of(rtnl_neigh_get_dst(entry));
        const auto mac = macOf(rtnl_neigh_get_lladdr(entry));
        const int state = rtnl_neigh_get_state(entry);
        if ((state & (NUD_REACHABLE | NUD_STALE | NUD_DELAY | NUD_PROBE | NUD_PERMANENT)) == 0 || !address ||
            !mac)
            continue;
        result.push_back(
            {static_cast<unsigned>(rtnl_neigh_get_ifindex(entry)), *address, *mac, state == NUD_REACHABLE});
    }
    return result;
}

} // namespace inventory
