// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/station/AnswerRoute.h"

#include <random>
#include <vector>

namespace simulator {

/// What becomes of the commands that reach a camera. Each is refused, put off or carried out, and then
/// answered, as the fault that it meets and the camera's own ways have it.
class CommandHandler
{
public:
    /// What comes after a command that has been carried out, when its answer has left or found no way;
    /// `before` is what the camera's address was when it was carried out.
    using FollowUp = std::function<void(Camera::Effect effect, const base::IpSettings& before)>;

    /// All but `followUp` must outlive this.
    CommandHandler(Camera& camera, AnswerRoute& route, TimerQueue& timers, std::mt19937& random,
                   FollowUp followUp);

    /// A command that concerns the camera, and the fault that it meets.
    void take(const UdpDatagram& datagram, const gvcp::CommandPacket& command,
              const std::optional<Fault>& fault);
    /// Forgets all that was put off, answers too.
    void stop();

private:
    /// A command of the control channel that was put off.
    struct UnderWay
    {
        UdpDatagram command;
        TimerQueue::Clock::time_point until;
        bool isAnnounced = false; ///< By PENDING_ACK.
    };

    /// Whether it is a retransmission of one that is under way; what was announced then is so again.
    bool isRepeated(const UdpDatagram& datagram, const gvcp::CommandPacket& command);
    void putOff(const UdpDatagram& datagram, const gvcp::CommandPacket& command, const Fault& fault);
    void carryOutLater(std::chrono::milliseconds delay, const UdpDatagram& datagram,
                       std::optional<FaultAction> fault);
    void carryOut(const UdpDatagram& datagram, std::optional<FaultAction> fault);
    void answerDiscovery(const Camera::Answer& answer, const AnswerRoute::Recipient& to);
    void sendForged(const Camera::Answer& answer, const AnswerRoute::Recipient& to, unsigned next);

    Camera& m_camera;
    AnswerRoute& m_route;
    std::mt19937& m_random;
    FollowUp m_followUp;
    Timeouts m_timeouts;
    std::vector<UnderWay> m_underWay;
};

} // namespace simulator
