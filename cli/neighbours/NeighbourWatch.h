// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"
#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <chrono>
#include <cstdint>
#include <linux/neighbour.h>
#include <optional>
#include <vector>

namespace cli {

/// An IPv4 neighbour as the kernel knows it.
struct Neighbour
{
    int state = NUD_NONE;                       ///< One of the kernel's NUD_*; NUD_NONE when it has no entry.
    std::optional<base::MacAddress> mac;        ///< When it is known.
    std::chrono::milliseconds sinceConfirmed{}; ///< Since it was last known to have the address.
};

/// The entry of one address on one adapter in the kernel's neighbour table. Needs no privilege.
class NeighbourWatch
{
public:
    /// Throws std::system_error when the kernel does not let itself be asked, as do the functions below.
    NeighbourWatch(int adapterIndex, base::Ipv4 address);

    /// What the entry was since the last look, as far as the kernel tells it, and at the end what it is now.
    std::vector<Neighbour> look();

    /// Makes the kernel ask for the address's owner, unless it knows it already: by a datagram to it out of
    /// this adapter, past all gateways.
    void provoke();

private:
    void request();
    /// Whether the answer to the latest request is among the messages.
    bool take(char* messages, std::size_t size, std::vector<Neighbour>& seen) const;

    int m_adapterIndex;
    base::Ipv4 m_address;
    base::FileDescriptor m_netlink;
    std::uint32_t m_sequence = 0; ///< The latest request's.
};

} // namespace cli
