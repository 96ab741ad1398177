// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/camera/Camera.h"
#include "simulator/wire/ArpClient.h"

namespace simulator {

/// How a camera's answers find their way to the asker: straight, by way of a gateway, or by broadcast. Finds
/// out its neighbours' MAC addresses for that.
class AnswerRoute
{
public:
    struct Recipient
    {
        base::MacAddress mac; ///< Where the command's frame came from.
        base::Ipv4 address;
        std::uint16_t port = 0;
    };
    using Done = std::function<void()>;

    /// How long an answer that may be sent by broadcast instead waits for the next hop's MAC: an asker does
    /// not wait much longer for it.
    static constexpr std::chrono::milliseconds BroadcastPatience{100};

    /// `config` must outlive this.
    AnswerRoute(const CameraConfig& config, TimerQueue& timers, const FrameSink& send);

    /// `done` is called once, when the answer has left or found no way.
    void deliver(
        const Camera::Answer& answer, const Recipient& to, const Done& done = [] {});
    /// Sends a reply to a ping, in the camera's subnet or through its gateway.
    void deliver(const Echo& reply, const base::IpSettings& from);
    /// A message that the interface with the address `own` hears.
    void heard(base::Ipv4 own, const ArpMessage& message) { m_arp.heard(own, message); }
    /// Knows no neighbours any more; what waits for one goes on waiting.
    void forget() { m_arp.forget(); }
    /// Likewise; what waits is not sent.
    void stop() { m_arp.stop(); }

private:
    /// Whose MAC is to be asked for first; nothing where the one will do that the command came from.
    std::optional<base::Ipv4> nextHopTo(base::Ipv4 asker, const base::IpSettings& from) const;
    void deliverByArp(base::Ipv4 nextHop, const Camera::Answer& answer, const Recipient& to,
                      const Done& done);
    void deliverByBroadcast(const Camera::Answer& answer, const Recipient& to);
    void transmit(const base::MacAddress& mac, const Camera::Answer& answer, const Recipient& to);

    const CameraConfig& m_config;
    FrameSink m_send;
    ArpClient m_arp;
};

} // namespace simulator
