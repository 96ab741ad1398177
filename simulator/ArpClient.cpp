// SPDX-License-Identifier: Apache-2.0
#include "simulator/ArpClient.h"

#include <utility>

namespace simulator {

ArpClient::ArpClient(const gvcp::MacAddress& mac, TimerQueue& timers, FrameSink send)
    : m_mac(mac),
      m_timers(timers),
      m_send(std::move(send))
{}

void ArpClient::resolve(gvcp::Ipv4 own, gvcp::Ipv4 wanted, Done done)
{
    const auto known = m_known.find(wanted);
    if (known != m_known.end() && known->second.until > m_timers.now()) {
        done(known->second.mac);
        return;
    }
    const auto [waiting, isFirst] = m_waiting.try_emplace(wanted);
    waiting->second.push_back(std::move(done));
    if (!isFirst)
        return;
    ArpMessage request;
    request.sourceMac = m_mac;
    request.destinationMac = BroadcastMac;
    request.sender = own;
    request.target = wanted;
    m_send(request);
    // An answer is remembered for longer than this timer runs, so whoever waits when it fires waits for this
    // request.
    m_timers.after(Patience, [this, wanted] { finish(wanted, std::nullopt); });
}

void ArpClient::heard(const ArpMessage& message)
{
    if (message.isRequest || !m_waiting.contains(message.sender))
        return;
    m_known[message.sender] = {message.sourceMac, m_timers.now() + Lifetime};
    finish(message.sender, message.sourceMac);
}

void ArpClient::finish(gvcp::Ipv4 wanted, std::optional<gvcp::MacAddress> mac)
{
    const auto waiting = m_waiting.extract(wanted);
    if (waiting.empty())
        return;
    for (const Done& done : waiting.mapped())
        done(mac);
}

} // namespace simulator
