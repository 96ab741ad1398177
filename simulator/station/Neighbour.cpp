// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/Neighbour.h"

#include "simulator/wire/DhcpClient.h"

#include <utility>

namespace simulator {

Neighbour::Neighbour(const NeighbourConfig& config, TimerQueue& timers, FrameSink send)
    : m_config(config),
      m_send(std::move(send)),
      m_timeouts(timers),
      m_transaction(base::readU32(config.mac.bytes, 2))
{
    if (m_config.asks != NeighbourConfig::Asks::Nothing)
        m_timeouts.after(std::chrono::milliseconds{0}, [this] { askAgain(); });
}

void Neighbour::receive(const Frame& frame)
{
    const auto* const arp = std::get_if<ArpMessage>(&frame);
    if (!arp || !arp->isRequest || !m_config.hasAddress() || arp->target != m_config.address)
        return;
    ArpMessage reply;
    reply.sourceMac = mac();
    reply.destinationMac = arp->sourceMac;
    reply.isRequest = false;
    reply.sender = m_config.address;
    reply.target = arp->sender;
    reply.targetMac = arp->sourceMac;
    m_send(reply);
}

void Neighbour::askAgain()
{
    m_timeouts.after(m_config.every, [this] { askAgain(); });
    m_send(question());
}

Frame Neighbour::question()
{
    if (m_config.asks == NeighbourConfig::Asks::Dhcp)
        return DhcpClient::discover(mac(), ++m_transaction);
    ArpMessage request;
    request.sourceMac = mac();
    request.destinationMac = BroadcastMac;
    request.sender = m_config.hasAddress() ? m_config.address : base::Ipv4();
    request.target = m_config.address;
    return request;
}

} // namespace simulator
