// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/LinkLocalClaim.h"

#include <utility>

namespace simulator {

using namespace base::literals;

namespace {

constexpr base::Ipv4 Network = "169.254.0.0"_ip;
constexpr base::Ipv4 Mask = "255.255.0.0"_ip;

} // namespace

LinkLocalClaim::LinkLocalClaim(const base::MacAddress& mac, TimerQueue& timers, FrameSink send,
                               std::mt19937& random)
    : m_mac(mac),
      m_timeouts(timers),
      m_send(std::move(send)),
      m_random(random)
{}

void LinkLocalClaim::start(std::chrono::milliseconds interval, std::optional<base::Ipv4> preferred, Done done)
{
    m_interval = interval;
    m_done = std::move(done);
    tryAddress(preferred ? *preferred : someAddress());
}

void LinkLocalClaim::stop()
{
    m_timeouts.cancelAll();
    m_candidate.reset();
}

void LinkLocalClaim::heard(const ArpMessage& message)
{
    if (!m_candidate || message.sourceMac == m_mac)
        return;
    const bool isTaken = message.sender == *m_candidate;
    const bool isClaimedByAnother =
        message.isRequest && message.sender.isUnspecified() && message.target == *m_candidate;
    if (isTaken || isClaimedByAnother)
        tryAddress(someAddress());
}

void LinkLocalClaim::tryAddress(base::Ipv4 candidate)
{
    stop();
    m_candidate = candidate;
    // Cameras that are switched on together must not all ask at once.
    std::uniform_int_distribution<std::chrono::milliseconds::rep> wait(0, m_interval.count());
    m_timeouts.after(std::chrono::milliseconds{wait(m_random)}, [this] { probe(Probes); });
}

void LinkLocalClaim::probe(unsigned probesLeft)
{
    if (probesLeft == 0) {
        const base::IpSettings won{*m_candidate, Mask, {}};
        stop();
        m_done(won);
        return;
    }
    m_timeouts.after(m_interval, [this, probesLeft] { probe(probesLeft - 1); });
    ArpMessage request;
    request.sourceMac = m_mac;
    request.destinationMac = BroadcastMac;
    request.target = *m_candidate;
    m_send(request);
}

base::Ipv4 LinkLocalClaim::someAddress()
{
    // The first and the last 256 of the network are reserved.
    std::uniform_int_distribution<std::uint32_t> host(0x0100, 0xFEFF);
    return Network.plus(host(m_random));
}

} // namespace simulator
