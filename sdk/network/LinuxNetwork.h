// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"
#include "sdk/network/Listener.h"
#include "sdk/network/Network.h"

#include <array>
#include <memory>
#include <poll.h>
#include <string>

namespace sdk {

/// The host's own network. Each adapter is heard through two: an ordinary UDP socket that is pinned to the
/// device, and the listener, where it may have its privilege. The second also gets what the kernel keeps from
/// the first: answers that a reverse-path filter or a firewall drops. What both get comes twice.
///
/// All adapters are heard on the same port: on a switch with two of them, the kernel may let a camera's
/// answer to the one come in on the other.
class LinuxNetwork : public Network
{
public:
    /// Opens the sockets and waits until the listeners listen, for a moment at most. An adapter on which
    /// there is no room for either is left out of adapters(), and told by failures().
    ///
    /// To talk to one camera alone, say which: when an adapter's ordinary socket has heard it once, it will
    /// do so again, and the listener, which then only makes everything come twice, is ended.
    explicit LinuxNetwork(const std::vector<Adapter>& adapters,
                          std::optional<base::Ipv4> onlyCamera = std::nullopt);
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

private:
    struct Port
    {
        base::FileDescriptor udp;
        std::unique_ptr<Listener> listener; ///< Null when it is not needed any more.
    };

    bool openAll(const std::vector<Adapter>& adapters);
    void awaitListeners();
    std::optional<Datagram> readUdp(std::size_t adapter);
    std::optional<Datagram> readListener(std::size_t adapter, bool isReadable);

    const std::optional<base::Ipv4> m_onlyCamera;
    std::vector<Adapter> m_adapters;
    std::vector<std::string> m_failures;
    std::vector<Port> m_ports; ///< One for each of m_adapters.
    std::uint16_t m_port = 0;  ///< The UDP port of all of them.
    std::size_t m_turn = 0; ///< Two for each of m_ports; read next, so that no busy adapter starves another.
    std::vector<pollfd> m_polled; ///< One for each turn: udp, listener.
    std::array<std::uint8_t, 65536> m_buffer;
};

} // namespace sdk
