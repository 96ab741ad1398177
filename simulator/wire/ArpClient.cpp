// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/ArpClient.h"

#include <algorithm>
#include <utility>

namespace simulator {

ArpClient::ArpClient(const base::MacAddress& mac, std::chrono::milliseconds lifetime, TimerQueue& timers,
                     FrameSink send)
    : m_mac(mac),
      m_lifetime(lifetime),
      m_timers(timers),
      m_send(std::move(send))
{}

void ArpClient::resolve(base::Ipv4 own, base::Ipv4 wanted, Done done,
                        std::optional<std::chrono::milliseconds> patience)
{
    if (const Known* const entry = known(wanted)) {
        done(entry->mac);
        return;
    }
    const auto [query, isNew] = m_queries.try_emplace(wanted, m_timers);
    std::deque<Waiting>& waiting = query->second.waiting;
    waiting.push_back({++m_lastNumber, std::move(done)});
    if (patience)
        query->second.timeouts.after(*patience,
                                     [this, wanted, number = m_lastNumber] { giveUp(wanted, number); });
    if (isNew)
        ask(own, wanted, Requests);
    else if (waiting.size() > MaxWaiting)
        giveUp(wanted, waiting.front().number);
}

void ArpClient::heard(base::Ipv4 own, const ArpMessage& message)
{
    const base::Ipv4 sender = message.sender;
    // Another interface with this one's own address: what is sent there would not leave this one.
    if (sender == own)
        return;
    if (message.target != own && !known(sender) && !m_queries.contains(sender))
        return;
    m_known[sender] = {message.sourceMac, m_timers.now() + m_lifetime};
    finish(sender, message.sourceMac);
}

void ArpClient::stop()
{
    forget();
    m_queries.clear();
}

const ArpClient::Known* ArpClient::known(base::Ipv4 address) const
{
    const auto found = m_known.find(address);
    return found != m_known.end() && found->second.until > m_timers.now() ? &found->second : nullptr;
}

void ArpClient::ask(base::Ipv4 own, base::Ipv4 wanted, unsigned requestsLeft)
{
    if (requestsLeft == 0) {
        finish(wanted, std::nullopt);
        return;
    }
    m_queries.at(wanted).timeouts.after(
        Interval, [this, own, wanted, requestsLeft] { ask(own, wanted, requestsLeft - 1); });
    ArpMessage request;
    request.sourceMac = m_mac;
    request.destinationMac = BroadcastMac;
    request.sender = own;
    request.target = wanted;
    m_send(request);
}

void ArpClient::giveUp(base::Ipv4 wanted, unsigned number)
{
    const auto query = m_queries.find(wanted);
    std::deque<Waiting>& waiting = query->second.waiting;
    const auto found = std::find_if(waiting.begin(), waiting.end(),
                                    [number](const Waiting& each) { return each.number == number; });
    if (found == waiting.end())
        return;
    const Done done = std::move(found->done);
    waiting.erase(found);
    if (waiting.empty())
        m_queries.erase(query);
    done(std::nullopt);
}

void ArpClient::finish(base::Ipv4 wanted, std::optional<base::MacAddress> mac)
{
    const auto query = m_queries.extract(wanted);
    if (query.empty())
        return;
    for (const Waiting& each : query.mapped().waiting)
        each.done(mac);
}

} // namespace simulator
