// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/CommandHandler.h"

#include "simulator/faults/FalseAnswers.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

// Forged answers leave in batches, so that thousands of them hold up nothing else.
constexpr unsigned ForgedBatch = 64;
constexpr std::chrono::milliseconds ForgedPause{5};

AnswerRoute::Recipient askerOf(const UdpDatagram& datagram)
{
    return {datagram.sourceMac, datagram.source, datagram.sourcePort};
}

/// The same bytes, the request id among them, from the same asker.
bool isSameCommand(const UdpDatagram& a, const UdpDatagram& b)
{
    return a.source == b.source && a.sourcePort == b.sourcePort && a.payload == b.payload;
}

/// Whether it is the answer to a DISCOVERY. One that was refused is acknowledged too, with nothing in it that
/// could be falsified.
bool namesACamera(base::ByteView packet)
{
    const auto acknowledge = gvcp::parseAcknowledge(packet);
    return acknowledge->command == gvcp::Command::Discovery && acknowledge->status == gvcp::Status::Success;
}

} // namespace

CommandHandler::CommandHandler(Camera& camera, AnswerRoute& route, TimerQueue& timers, std::mt19937& random,
                               FollowUp followUp)
    : m_camera(camera),
      m_route(route),
      m_random(random),
      m_followUp(std::move(followUp)),
      m_timeouts(timers)
{}

void CommandHandler::take(const UdpDatagram& datagram, const gvcp::CommandPacket& command,
                          const std::optional<Fault>& fault)
{
    const auto action = fault ? std::optional(fault->action) : std::nullopt;
    const bool isIgnored =
        action == FaultAction::Drop || action == FaultAction::Vanish || action == FaultAction::Reset;
    if (isIgnored || isRepeated(datagram, command))
        return;
    if (action == FaultAction::Busy || action == FaultAction::BadAlignment) {
        const auto status = action == FaultAction::Busy ? gvcp::Status::Busy : gvcp::Status::BadAlignment;
        if (const auto refusal = m_camera.refuse(command, status))
            m_route.deliver(*refusal, askerOf(datagram));
        return;
    }
    const std::chrono::milliseconds answerDelay = m_camera.config().answerDelay;
    if (action == FaultAction::Delay || action == FaultAction::Pending)
        putOff(datagram, command, *fault);
    else if (command.command == gvcp::Command::Discovery && answerDelay.count() > 0)
        carryOutLater(answerDelay, datagram, action);
    else
        carryOut(datagram, action);
}

void CommandHandler::stop()
{
    m_timeouts.cancelAll();
    m_underWay.clear();
}

bool CommandHandler::isRepeated(const UdpDatagram& datagram, const gvcp::CommandPacket& command)
{
    const auto same = std::find_if(m_underWay.begin(), m_underWay.end(), [&datagram](const UnderWay& each) {
        return isSameCommand(each.command, datagram);
    });
    if (same == m_underWay.end())
        return false;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(same->until - m_timeouts.now());
    if (same->isAnnounced)
        if (const auto announcement = m_camera.announceDelay(command, left))
            m_route.deliver(*announcement, askerOf(datagram));
    return true;
}

void CommandHandler::putOff(const UdpDatagram& datagram, const gvcp::CommandPacket& command,
                            const Fault& fault)
{
    const bool isAnnounced = fault.action == FaultAction::Pending;
    if (isAnnounced)
        if (const auto announcement = m_camera.announceDelay(command, fault.time))
            m_route.deliver(*announcement, askerOf(datagram));
    // Who waits for an answer sends nothing that would keep control alive.
    m_camera.excuse({datagram.source, datagram.sourcePort}, m_timeouts.now() + fault.time);
    if (command.command != gvcp::Command::Discovery && command.command != gvcp::Command::ForceIp)
        m_underWay.push_back({datagram, m_timeouts.now() + fault.time, isAnnounced});
    carryOutLater(fault.time, datagram, fault.action);
}

void CommandHandler::carryOutLater(std::chrono::milliseconds delay, const UdpDatagram& datagram,
                                   std::optional<FaultAction> fault)
{
    m_timeouts.after(delay, [this, datagram, fault] {
        std::erase_if(m_underWay,
                      [&datagram](const UnderWay& each) { return isSameCommand(each.command, datagram); });
        carryOut(datagram, fault);
    });
}

void CommandHandler::carryOut(const UdpDatagram& datagram, std::optional<FaultAction> fault)
{
    const auto command = gvcp::parseCommand(datagram.payload);
    const base::IpSettings before = m_camera.ip();
    const Camera::Reaction reaction =
        m_camera.handle(*command, {datagram.source, datagram.sourcePort}, m_timeouts.now());
    if (fault == FaultAction::Seize)
        m_camera.hold({});
    const auto answer = fault == FaultAction::Mute ? std::nullopt : reaction.answer;
    // What the camera knows of others it knows under its address; an answer from the one of before still goes
    // by it.
    if (m_camera.ip().address != before.address && !(answer && answer->from == before))
        m_route.forget();
    const auto follow = [this, effect = reaction.effect, before] { m_followUp(effect, before); };
    if (answer && fault == FaultAction::Twice)
        m_route.deliver(*answer, askerOf(datagram));
    if (!answer)
        follow();
    else if (namesACamera(answer->packet))
        answerDiscovery(*answer, askerOf(datagram));
    else
        m_route.deliver(*answer, askerOf(datagram), follow);
}

void CommandHandler::answerDiscovery(const Camera::Answer& answer, const AnswerRoute::Recipient& to)
{
    for (const NoiseKind kind : m_camera.config().noise) {
        Camera::Answer noise = answer;
        for (base::Bytes& packet : makeNoise(kind, answer.packet, m_random)) {
            noise.packet = std::move(packet);
            m_route.deliver(noise, to);
        }
    }
    m_route.deliver(answer, to);
    if (m_camera.config().forgedAnswers > 0)
        sendForged(answer, to, 0);
}

void CommandHandler::sendForged(const Camera::Answer& answer, const AnswerRoute::Recipient& to, unsigned next)
{
    const unsigned end = std::min(next + ForgedBatch, m_camera.config().forgedAnswers);
    for (; next < end; ++next) {
        Camera::Answer forged = answer;
        forged.packet = forgeAnswer(answer.packet, next);
        m_route.deliver(forged, to);
    }
    if (next < m_camera.config().forgedAnswers)
        m_timeouts.after(ForgedPause, [this, answer, to, next] { sendForged(answer, to, next); });
}

} // namespace simulator
