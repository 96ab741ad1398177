// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Camera.h"

#include <cstdint>
#include <iosfwd>
#include <vector>

namespace inventory {

/// A UDP socket of this computer that can speak IPv4.
struct UdpSocket
{
    Endpoint local;  ///< The address is 0.0.0.0 for all of the computer's.
    Endpoint remote; ///< Whom alone it hears; port 0 when it is not connected.
    unsigned userId = 0;
    std::uint64_t inode = 0; ///< By which the files of processes name it.

    bool isConnected() const { return remote.port != 0; }
    bool operator==(const UdpSocket&) const = default;
};

/// The lines of the kernel's table of UDP sockets, or of that of IPv6, whose sockets may speak IPv4 too. A
/// line that is none is passed over.
std::vector<UdpSocket> readUdpSockets(std::istream& table);

/// Those in the calling thread's network, whoever's they are. Empty when the kernel does not tell.
std::vector<UdpSocket> udpSockets();

} // namespace inventory
