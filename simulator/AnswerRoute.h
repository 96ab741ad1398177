// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/ArpClient.h"
#include "simulator/Camera.h"

namespace simulator {

/// How a camera's answers find their way to the asker: straight, by way of a gateway, or by broadcast.
class AnswerRoute
{
public:
    struct Recipient
    {
        gvcp::MacAddress mac; ///< Where the command's frame came from.
        gvcp::Ipv4 address = 0;
        std::uint16_t port = 0;
    };

    /// `config` and `arp` must outlive this.
    AnswerRoute(const CameraConfig& config, ArpClient& arp, FrameSink send);

    void deliver(const Camera::Answer& answer, const Recipient& to);

private:
    /// Whose MAC is to be asked for first; nothing where the one that the command came from will do.
    std::optional<gvcp::Ipv4> nextHopTo(gvcp::Ipv4 asker, const IpSettings& from) const;
    void deliverByArp(gvcp::Ipv4 nextHop, const Camera::Answer& answer, const Recipient& to);
    void deliverByBroadcast(const Camera::Answer& answer, const Recipient& to);
    void transmit(const gvcp::MacAddress& mac, const Camera::Answer& answer, const Recipient& to);

    const CameraConfig& m_config;
    ArpClient& m_arp;
    FrameSink m_send;
};

} // namespace simulator
