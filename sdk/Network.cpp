// SPDX-License-Identifier: Apache-2.0
#include "sdk/Network.h"

namespace sdk {

bool Network::broadcast(std::size_t adapter, gvcp::ByteView datagram)
{
    bool sent = false;
    for (const AdapterAddress& own : adapters()[adapter].addresses) {
        sent |= send(adapter, own.address, gvcp::LimitedBroadcast, datagram);
        if (const auto directed = own.broadcastAddress())
            sent |= send(adapter, own.address, *directed, datagram);
    }
    return sent;
}

} // namespace sdk
