// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/DiscoveryAck.h"
#include "gvcp/Packet.h"
#include "sdk/Network.h"

#include <functional>
#include <map>
#include <set>

/// A network of the test's own, whose clock moves only when the code under test waits. The test scripts the
/// cameras: it sees what is sent and puts answers on the way.
class FakeNetwork : public sdk::Network
{
public:
    struct Sent
    {
        sdk::Clock::duration time; ///< Since the network was made.
        std::size_t adapter;
        gvcp::Ipv4 source;
        gvcp::Ipv4 destination;
        gvcp::Bytes bytes;

        gvcp::CommandPacket command() const { return gvcp::parseCommand(bytes).value(); }
    };

    explicit FakeNetwork(std::vector<sdk::Adapter> adapters) : m_adapters(std::move(adapters)) {}

    const std::vector<sdk::Adapter>& adapters() const override { return m_adapters; }
    void setAdapters(std::vector<sdk::Adapter> adapters) { m_adapters = std::move(adapters); }
    sdk::Clock::time_point now() const override { return m_now; }
    bool send(std::size_t adapter, gvcp::Ipv4 source, gvcp::Ipv4 destination,
              gvcp::ByteView datagram) override;
    std::optional<sdk::Datagram> receive(sdk::Clock::time_point until) override;

    /// Puts a datagram on its way to this host.
    void deliver(sdk::Clock::duration delay, std::size_t adapter, gvcp::Ipv4 source, gvcp::Bytes bytes);

    sdk::Clock::duration elapsed() const { return m_now.time_since_epoch(); }
    /// All that was sent, in order.
    const std::vector<Sent>& sent() const { return m_sent; }
    /// What was sent with this command, in order.
    std::vector<Sent> sentCommands(gvcp::Command command) const;

    std::function<void(const Sent&)> onSend = [](const Sent&) {};
    std::set<std::size_t> brokenAdapters; ///< send() fails on these.
    bool keepsSent = true;

private:
    struct OnItsWay
    {
        std::size_t adapter;
        gvcp::Ipv4 source;
        gvcp::Bytes bytes;
    };

    std::vector<sdk::Adapter> m_adapters;
    sdk::Clock::time_point m_now{};
    std::multimap<sdk::Clock::time_point, OnItsWay> m_onTheirWay;
    gvcp::Bytes m_received;
    std::vector<Sent> m_sent;
};

/// One adapter with one address.
sdk::Adapter adapterWith(unsigned index, gvcp::Ipv4 address, gvcp::Ipv4 mask = 0xFFFFFF00);

/// A camera 02:00:00:00:00:<number> at the address.
gvcp::DiscoveryAck cameraAt(std::uint8_t number, gvcp::Ipv4 ip);

gvcp::Bytes discoveryAnswer(std::uint16_t id, const gvcp::DiscoveryAck& camera);
gvcp::Bytes registerAnswer(std::uint16_t id, std::uint32_t value);
