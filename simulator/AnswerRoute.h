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
    using Done = std::function<void()>;

    /// How long an answer that may be sent by broadcast instead waits for the next hop's MAC: an asker does
    /// not wait much longer for it.
    static constexpr std::chrono::milliseconds BroadcastPatience{100};

    /// `config` and `arp` must outlive this.
    AnswerRoute(const CameraConfig& config, ArpClient& arp, FrameSink send);

    /// `done` is called once, when the answer has left or found no way.
    void deliver(
        const Camera::Answer& answer, const Recipient& to, const Done& done = [] {});
    /// Sends a reply to a ping, in the camera's subnet or through its gateway.
    void deliver(const Echo& reply, const IpSettings& from);

private:
    /// Whose MAC is to be asked for first; nothing where the one that the command came from will do.
    std::optional<gvcp::Ipv4> nextHopTo(gvcp::Ipv4 asker, const IpSettings& from) const;
    void deliverByArp(gvcp::Ipv4 nextHop, const Camera::Answer& answer, const Recipient& to,
                      const Done& done);
    void deliverByBroadcast(const Camera::Answer& answer, const Recipient& to);
    void transmit(const gvcp::MacAddress& mac, const Camera::Answer& answer, const Recipient& to);

    const CameraConfig& m_config;
    ArpClient& m_arp;
    FrameSink m_send;
};

} // namespace simulator
