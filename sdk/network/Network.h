// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "sdk/network/Adapter.h"
#include "sdk/network/ArrivalFrame.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

namespace sdk {

using Clock = std::chrono::steady_clock;

/// What a camera sent to this host: every datagram of a Network comes from UDP port 3956.
struct Datagram
{
    std::size_t adapter = 0; ///< Index of Network::adapters() that heard it.
    base::Ipv4 source;
    base::ByteView payload; ///< Valid until the next receive().
    bool isToAll = false;   ///< It was sent by broadcast.
    bool isRelayed = false; ///< The listener heard it; the ordinary socket may have, too.
};

/// The seam below the protocol: datagrams in and out of the host's adapters, and the time. Tests put their
/// own network and their own clock here. Used by one thread at a time.
class Network
{
public:
    Network() = default;
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;
    virtual ~Network() = default;

    virtual const std::vector<Adapter>& adapters() const = 0;
    virtual Clock::time_point now() const = 0;

    /// Sends to UDP port 3956 of `destination`, out of that adapter whatever the routes say. False when the
    /// host could not send; a datagram that gets lost is a success.
    virtual bool send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
                      base::ByteView datagram) = 0;

    /// The next datagram, in no order across adapters, maybe twice; waits for it until `until` at most. What
    /// has come by then is still given later.
    virtual std::optional<Datagram> receive(Clock::time_point until) = 0;

    /// What a device has said of itself by ARP or as a DHCP client, where that is heard at all. The next of
    /// what receive() has come across, which then may return without a datagram before its time.
    virtual std::optional<Arrival> nextArrival() { return std::nullopt; }

    /// Sends from each of the adapter's addresses to the limited and to that subnet's directed broadcast:
    /// some cameras ignore the one, some sites lose the other. An adapter without an address sends to all,
    /// from whatever source the kernel gives. True when at least one could be sent.
    bool broadcast(std::size_t adapter, base::ByteView datagram);
};

} // namespace sdk
