// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Steps.h"

#include "sdk/network/CameraError.h"

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// So long is waited for an answer on the adapter that heard the camera before, when another hears it too.
constexpr auto TimeAtHome = 600ms;
/// A camera may leave the network for some seconds when it changes.
constexpr auto TimeToMove = 6s;

} // namespace

Search::Search(Line& line, const base::MacAddress& mac, unsigned home, Clock::time_point end,
               Predicate isWanted)
    : m_line(line),
      m_mac(mac),
      m_home(home),
      m_begin(line.network().now()),
      m_end(end),
      m_isWanted(std::move(isWanted))
{}

void Search::proceed()
{
    if (!isOver())
        m_line.looks().proceed(m_begin);
}

void Search::see(const Sighting& sighting)
{
    if (m_found || sighting.identity.mac != m_mac || sighting.asked < m_begin)
        return;
    const Network& network = m_line.network();
    const bool isAtHome = network.adapters()[sighting.adapter].index == m_home;
    if (!isAtHome && network.now() - m_begin < TimeAtHome)
        return;
    m_last = sighting;
    if (m_isWanted(*m_last))
        m_found = m_last;
}

Forcing::Forcing(Line& line, const gvcp::ForceIp& wanted, const Sighting& before, unsigned home)
    : m_search(line, wanted.mac, home, line.network().now() + TimeToMove,
               [ip = wanted.ip](const Sighting& seen) { return seen.identity.ip == ip; }),
      m_sender(line.network(), before.adapter, before.identity.ip.address),
      m_force(line.network(), line.ids(),
              forceIpPlan(wanted, before.identity.ip.address, [this](base::ByteView packet) {
                  if (!m_sender.send(packet))
                      throw CameraError(RZ_ERROR_NETWORK, "forcing an address: the host cannot send");
              }))
{}

void Forcing::proceed()
{
    m_force.proceed();
    m_search.proceed();
}

} // namespace sdk
