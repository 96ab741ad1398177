// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/DiscoveryAck.h"
#include "gvcp/Packet.h"
#include "sdk/network/Network.h"

#include <functional>
#include <map>
#include <set>

using namespace base::literals;

/// A network of the test's own, whose clock moves only when the code under test waits. The test scripts the
/// cameras: it sees what is sent and puts answers on the way.
class FakeNetwork : public sdk::Network
{
public:
    struct Sent
    {
        sdk::Clock::duration time; ///< Since the network was made.
        std::size_t adapter;
        base::Ipv4 source;
        base::Ipv4 destination;
        base::Bytes bytes;

        gvcp::CommandPacket command() const { return gvcp::parseCommand(bytes).value(); }
    };

    explicit FakeNetwork(std::vector<sdk::Adapter> adapters) : m_adapters(std::move(adapters)) {}

    const std::vector<sdk::Adapter>& adapters() const override { return m_adapters; }
    void setAdapters(std::vector<sdk::Adapter> adapters) { m_adapters = std::move(adapters); }
    sdk::Clock::time_point now() const override { return m_now; }
    bool send(std::size_t adapter, base::Ipv4 source, base::Ipv4 destination,
              base::ByteView datagram) override;
    std::optional<sdk::Datagram> receive(sdk::Clock::time_point until) override;

    /// Puts a datagram on its way to this host.
    void deliver(sdk::Clock::duration delay, std::size_t adapter, base::Ipv4 source, base::Bytes bytes);

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
        base::Ipv4 source;
        base::Bytes bytes;
    };

    std::vector<sdk::Adapter> m_adapters;
    sdk::Clock::time_point m_now{};
    std::multimap<sdk::Clock::time_point, OnItsWay> m_onTheirWay;
    base::Bytes m_received;
    std::vector<Sent> m_sent;
};

/// One adapter with one address.
sdk::Adapter adapterWith(unsigned index, base::Ipv4 address, base::Ipv4 mask = base::Ipv4(0xFFFFFF00));

/// A camera 02:00:00:00:00:<number> at the address.
gvcp::DiscoveryAck cameraAt(std::uint8_t number, base::Ipv4 ip);

base::Bytes discoveryAnswer(std::uint16_t id, const gvcp::DiscoveryAck& camera);
base::Bytes registerAnswer(std::uint16_t id, std::uint32_t value);
