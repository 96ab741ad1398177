// SPDX-License-Identifier: Apache-2.0
#include "inventory/LocalSockets.h"

#include "inventory/Neighbours.h"
#include "inventory/Processes.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <system_error>
#include <unistd.h>

namespace inventory {
namespace {

/// The kernel's table, or nothing where it does not let itself be asked: then a holder's MAC is not known.
std::vector<Neighbour> knownNeighbours()
{
    try {
        return neighbours();
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

LocalSockets localSockets()
{
    LocalSockets local;
    local.neighbours = knownNeighbours();
    unsigned first = 0;
    unsigned last = 0;
    if (std::ifstream("/proc/sys/net/ipv4/ip_local_port_range") >> first >> last) {
        local.firstGivenPort = static_cast<std::uint16_t>(first);
        local.lastGivenPort = static_cast<std::uint16_t>(last);
    }

    const Processes processes;
    const std::vector<UdpSocket> sockets = udpSockets();
    // After the table, so that a socket in it whose owner ended meanwhile looks like one that may not be
    // seen.
    const std::map<std::uint64_t, std::vector<int>> owners = processes.bySocket();
    const int self = ::getpid();
    for (const UdpSocket& socket : sockets) {
        OwnedSocket owned{socket, userName(socket.userId), {}};
        const auto found = owners.find(socket.inode);
        const std::vector<int> none;
        const std::vector<int>& pids = found == owners.end() ? none : found->second;
        if (std::ranges::any_of(pids,
                                [&](int pid) { return pid == self || processes.parentOf(pid) == self; }))
            continue;
        for (const int pid : pids)
            if (auto process = processes.process(pid))
                owned.processes.push_back(*std::move(process));
        local.sockets.push_back(std::move(owned));
    }
    return local;
}

Holding whoHolds(const Camera& camera, const std::vector<Adapter>& adapters)
{
    return whoHolds(camera, adapters, localSockets());
}

std::map<base::MacAddress, Holding> holdingsOf(const Inventory& inventory,
                                               const std::function<bool(const Camera&)>& isMeant)
{
    std::map<base::MacAddress, Holding> holdings;
    std::optional<LocalSockets> local;
    for (const Camera& camera : inventory.cameras) {
        if (!isMeant(camera))
            continue;
        if (!local)
            local = localSockets();
        holdings[camera.mac] = whoHolds(camera, inventory.adapters, *local);
    }
    return holdings;
}

} // namespace inventory
