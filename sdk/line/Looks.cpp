// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Looks.h"

namespace sdk {

namespace {

using namespace std::chrono_literals;

constexpr auto Interval = 250ms;
/// Between two questions for different waiters: 256 cameras answer each, and are busy with changes.
constexpr auto Gap = 125ms;
/// Cameras answer within a second.
constexpr auto TimeToAnswer = 2s;

} // namespace

void Looks::proceed(Clock::time_point since)
{
    const auto now = m_network.now();
    if (now < nextStep(since))
        return;
    m_last = now;
    std::erase_if(m_times, [now](const auto& each) { return now - each.second > TimeToAnswer; });
    const std::uint16_t id = m_ids.next();
    m_times[id] = now;
    const base::Bytes packet = gvcp::encodeCommand(
        gvcp::Command::Discovery, gvcp::FlagAcknowledge | gvcp::FlagBroadcastAcknowledge, id);
    for (std::size_t adapter = 0; adapter < m_network.adapters().size(); ++adapter)
        m_network.broadcast(adapter, packet);
}

Clock::time_point Looks::nextStep(Clock::time_point since) const
{
    if (!m_last)
        return Clock::time_point::min();
    return *m_last + (*m_last < since ? Gap : Interval);
}

std::optional<Sighting> Looks::sightingIn(const Datagram& datagram,
                                          const gvcp::AcknowledgePacket& acknowledge) const
{
    const auto asked = m_times.find(acknowledge.id);
    if (asked == m_times.end() || acknowledge.command != gvcp::Command::Discovery ||
        acknowledge.status != gvcp::Status::Success)
        return std::nullopt;
    const auto identity = gvcp::parseDiscoveryAck(acknowledge.payload);
    return identity ? std::optional(Sighting{*identity, datagram.adapter, asked->second}) : std::nullopt;
}

} // namespace sdk
