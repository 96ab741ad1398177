// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/AnswerRoute.h"

#include <utility>

namespace simulator {

AnswerRoute::AnswerRoute(const CameraConfig& config, TimerQueue& timers, const FrameSink& send)
    : m_config(config),
      m_send(send),
      m_arp(config.mac, config.arpLifetime, timers, send)
{}

void AnswerRoute::deliver(const Camera::Answer& answer, const Recipient& to, const Done& done)
{
    // An asker without an address (0.0.0.0), or with the camera's own one, can be reached in no other way.
    const bool isByBroadcast =
        answer.onlyByBroadcast || to.address.isUnspecified() || to.address == answer.from.address;
    const auto nextHop = isByBroadcast ? std::nullopt : nextHopTo(to.address, answer.from);
    if (nextHop) {
        deliverByArp(*nextHop, answer, to, done);
        return;
    }
    if (isByBroadcast)
        deliverByBroadcast(answer, to);
    else
        transmit(to.mac, answer, to);
    done();
}

void AnswerRoute::deliver(const Echo& reply, const base::IpSettings& from)
{
    const bool isNear = from.reaches(reply.destination);
    if (!isNear && from.gateway.isUnspecified())
        return;
    m_arp.resolve(from.address, isNear ? reply.destination : from.gateway,
                  [this, echo = reply](const std::optional<base::MacAddress>& mac) mutable {
                      if (!mac)
                          return;
                      echo.destinationMac = *mac;
                      m_send(echo);
                  });
}

std::optional<base::Ipv4> AnswerRoute::nextHopTo(base::Ipv4 asker, const base::IpSettings& from) const
{
    if (from.reaches(asker) || m_config.answerBy == CameraConfig::AnswerBy::Arp)
        return asker;
    return from.gateway.isUnspecified() ? std::nullopt : std::optional(from.gateway);
}

void AnswerRoute::deliverByArp(base::Ipv4 nextHop, const Camera::Answer& answer, const Recipient& to,
                               const Done& done)
{
    const bool mayBeBroadcast = answer.broadcastAllowed && !answer.from.reaches(to.address);
    m_arp.resolve(
        answer.from.address, nextHop,
        [this, answer, to, done, mayBeBroadcast](const std::optional<base::MacAddress>& mac) {
            if (mac)
                transmit(*mac, answer, to);
            else if (mayBeBroadcast)
                deliverByBroadcast(answer, to);
            done();
        },
        mayBeBroadcast ? std::optional(BroadcastPatience) : std::nullopt);
}

void AnswerRoute::deliverByBroadcast(const Camera::Answer& answer, const Recipient& to)
{
    if (answer.broadcastAllowed)
        transmit(BroadcastMac, answer, {BroadcastMac, base::LimitedBroadcast, to.port});
}

void AnswerRoute::transmit(const base::MacAddress& mac, const Camera::Answer& answer, const Recipient& to)
{
    UdpDatagram datagram;
    datagram.sourceMac = m_config.mac;
    datagram.destinationMac = mac;
    datagram.source = answer.from.address;
    datagram.destination = to.address;
    datagram.sourcePort = gvcp::DevicePort;
    datagram.destinationPort = to.port;
    datagram.payload = answer.packet;
    m_send(datagram);
}

} // namespace simulator
