// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"
#include "sdk/network/Listener.h"
#include "sdk/network/Network.h"

#include <array>
#include <deque>
#include <memory>
#include <poll.h>
#include <string>

namespace sdk {

/// The host's own network. Each adapter is heard through two: an ordinary UDP socket that is pinned to the
/// device, and the listener, where it may have its privilege. The second also gets what the kernel keeps from
/// the first: answers that a reverse-path filter or a firewall drops. What both get comes twice.
///
/// Where it is asked for, a second listener on each adapter hears what devices say by ARP and as DHCP
/// clients.
///
/// All adapters are heard on the same port: on a switch with two of them, the kernel may let a camera's
/// answer to the one come in on the other.
class LinuxNetwork : public Network
{
public:
    /// Opens the sockets and waits until the listeners listen, for a moment at most. An adapter on which
    /// there is no room for either is left out of adapters(), and told by failures().
    ///
    explicit LinuxNetwork(const std::vector<Adapter>& adapters) : LinuxNetwork(adapters, Purpose()) {}

    struct Purpose
    {
        /// To talk to one camera alone: when an adapter's ordinary socket has heard it once, it will do so
        /// again, and the listener, which then only makes everything come twice, is ended.
        std::optional<base::Ipv4> onlyCamera;
        bool hearsArrivals = false;
    };
    LinuxNetwork(const std::vector<Adapter>& adapters, const Purpose& purpose);
    ~LinuxNetwork() override;

    const std::vector<Adapter>& adapters() const override { return m_adapters; }
    /// "eth1: Too many open files" for each adapter that is left out.
    const std::vector<std::string>& failures() const { return m_failures; }
    /// Hears when all listeners do, else how the first of the others fares.
    RZ_LISTENER listening() const;
    Clock::time_point now() const override { return Clock::now(); }
    bool send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
              base::ByteView datagram) override;
    std::optional<Datagram> receive(Clock::time_point until) override;
    std::optional<Arrival> nextArrival() override;

private:
    struct Port
    {
        base::FileDescriptor udp;
        std::unique_ptr<Listener> listener; ///< Null when it is not needed any more.
        std::unique_ptr<Listener> arrivals; ///< Null where nobody asks for them.

        std::array<Listener*, 2> listeners() const { return {listener.get(), arrivals.get()}; }
    };
    /// What a port is read from, in turns.
    enum Source
    {
        Udp,
        Answers,
        Arrivals,
        Sources
    };

    bool isToAll(std::size_t adapter, base::Ipv4 destination) const;
    bool openAll(const std::vector<Adapter>& adapters);
    void awaitListeners();
    std::optional<Datagram> readUdp(std::size_t adapter);
    std::optional<Datagram> readListener(std::size_t adapter, bool isReadable);
    bool readArrivals(std::size_t adapter, bool isReadable);

    const Purpose m_purpose;
    std::vector<Adapter> m_adapters;
    std::vector<std::string> m_failures;
    std::vector<Port> m_ports; ///< One for each of m_adapters.
    std::uint16_t m_port = 0;  ///< The UDP port of all of them.
    /// A Source of one of m_ports; read next, so that no busy adapter starves another.
    std::size_t m_turn = 0;
    std::vector<pollfd> m_polled;   ///< One for each turn.
    std::deque<Arrival> m_arrivals; ///< Not handed out yet.
    std::array<std::uint8_t, 65536> m_buffer;
};

} // namespace sdk
