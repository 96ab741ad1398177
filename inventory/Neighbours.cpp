// SPDX-License-Identifier: Apache-2.0
#include "inventory/Neighbours.h"

#include "base/FileDescriptor.h"
#include "inventory/Netlink.h"

#include <arpa/inet.h>
#include <cerrno>
#include <linux/neighbour.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netlink/route/neighbour.h>
#include <sys/socket.h>

namespace inventory {
namespace {

/// RFC 863: whoever serves this port throws away what comes.
constexpr std::uint16_t DiscardPort = 9;

[[noreturn]] void failToSend()
{
    throw std::system_error(errno, std::generic_category(), "a datagram to the address");
}

} // namespace

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

void askForOwner(unsigned adapterIndex, base::Ipv4 address)
{
    const base::FileDescriptor datagrams(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!datagrams)
        failToSend();
    char name[IF_NAMESIZE] = {};
    if (!::if_indextoname(adapterIndex, name) ||
        ::setsockopt(datagrams.get(), SOL_SOCKET, SO_BINDTODEVICE, name, sizeof name) != 0)
        failToSend();
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(address.number());
    to.sin_port = htons(DiscardPort);
    if (::sendto(datagrams.get(), nullptr, 0, MSG_DONTROUTE, reinterpret_cast<const sockaddr*>(&to),
                 sizeof to) == -1)
        failToSend();
}

} // namespace inventory
