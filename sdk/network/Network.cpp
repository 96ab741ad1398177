// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/Network.h"

namespace sdk {

bool Network::broadcast(std::size_t adapter, base::ByteView datagram)
{
    if (adapters()[adapter].addresses.empty())
        return send(adapter, {}, base::LimitedBroadcast, datagram);
    bool sent = false;
    for (const AdapterAddress& own : adapters()[adapter].addresses) {
        sent |= send(adapter, own.address, base::LimitedBroadcast, datagram);
        if (const auto directed = own.broadcastAddress())
            sent |= send(adapter, own.address, *directed, datagram);
    }
    return sent;
}

} // namespace sdk
