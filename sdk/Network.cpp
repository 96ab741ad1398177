// SPDX-License-Identifier: Apache-2.0
#include "sdk/Network.h"

namespace sdk {

bool Network::broadcast(std::size_t adapter, gvcp::ByteView datagram)
{
    bool sent = false;
    for (const AdapterAddress& own : adapters()[adapter].addresses) {
        sent |= send(adapter, own.address, gvcp::LimitedBroadcast, datagram);
        const gvcp::Ipv4 hostBits = ~own.mask;
        // A subnet of one or two addresses has no broadcast address.
        if (hostBits > 1)
            sent |= send(adapter, own.address, own.address | hostBits, datagram);
    }
    return sent;
}

} // namespace sdk
