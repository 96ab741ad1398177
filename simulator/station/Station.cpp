// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/Station.h"

#include "simulator/faults/FalseAnswers.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

// Forged answers leave in batches, so that thousands of them hold up nothing else.
constexpr unsigned ForgedBatch = 64;
constexpr std::chrono::milliseconds ForgedPause{5};

std::mt19937 generatorFor(std::uint32_t seed, const base::MacAddress& mac)
{
    std::seed_seq sequence{seed, base::readU32(mac.bytes, 0), base::readU32(mac.bytes, 2)};
    return std::mt19937(sequence);
}

AnswerRoute::Recipient askerOf(const UdpDatagram& datagram)
{
    return {datagram.sourceMac, datagram.source, datagram.sourcePort};
}

/// Of the same asker, with the same request id.
bool isSameCommand(const UdpDatagram& a, const UdpDatagram& b)
{
    return a.source == b.source && a.sourcePort == b.sourcePort && a.payload == b.payload;
}

/// A refused DISCOVERY is acknowledged too, with nothing in it that could be falsified.
bool namesACamera(base::ByteView packet)
{
    const auto acknowledge = gvcp::parseAcknowledge(packet);
    return acknowledge->command == gvcp::Command::Discovery && acknowledge->status == gvcp::Status::Success;
}

} // namespace

Station::Station(const CameraConfig& config, std::uint32_t seed, TimerQueue& timers, FrameSink send)
    : m_camera(config),
      m_random(generatorFor(seed, config.mac)),
      m_timeouts(timers),
      m_send(std::move(send)),
      m_arp(config.mac, config.arpLifetime, timers, [this](const Frame& frame) { transmit(frame); }),
      m_route(m_camera.config(), m_arp, [this](const Frame& frame) { transmit(frame); }),
      m_boot(
          m_camera.config(), timers, [this](const Frame& frame) { transmit(frame); }, m_random,
          [this](const base::IpSettings& ip) {
              m_camera.setIp(ip);
              announceAddress();
          })
{
    for (const Fault& fault : config.faults)
        m_faults.add(fault);
    if (!m_boot.isOn())
        restartIp(std::chrono::milliseconds{0});
}

const Camera& Station::camera()
{
    m_camera.passTime(m_timeouts.now());
    return m_camera;
}

void Station::receive(const Frame& frame)
{
    if (!m_isPlugged || !m_boot.isOn() || isLost())
        return;
    if (m_boot.isRunning())
        std::visit([this](const auto& message) { hear(message); }, frame);
    else
        m_boot.receive(frame);
}

void Station::hear(const UdpDatagram& datagram)
{
    const base::IpSettings ip = m_camera.ip();
    const bool toAll =
        datagram.destination == base::LimitedBroadcast || datagram.destination == ip.broadcastAddress();
    if (datagram.destinationPort != gvcp::DevicePort || (!toAll && datagram.destination != ip.address))
        return;
    const auto command = gvcp::parseCommand(datagram.payload);
    if (!command || !m_camera.concerns(*command, toAll))
        return;
    const auto request = requestOf(command->command);
    const auto fault = request ? meetFault(*request) : std::nullopt;
    if (fault && (fault->action == FaultAction::Drop || fault->action == FaultAction::Vanish))
        return;
    if (isRepeated(datagram, *command) || (fault && !survives(*fault, datagram, *command)))
        return;
    const auto action = fault ? std::optional(fault->action) : std::nullopt;
    const std::chrono::milliseconds answerDelay = m_camera.config().answerDelay;
    if (request == Request::Discovery && answerDelay.count() > 0)
        carryOutLater(answerDelay, datagram, action);
    else
        carryOut(datagram, action);
}

bool Station::survives(const Fault& fault, const UdpDatagram& datagram, const gvcp::CommandPacket& command)
{
    const auto answer = [&](const std::optional<Camera::Answer>& what) {
        if (what)
            m_route.deliver(*what, askerOf(datagram));
    };
    switch (fault.action) {
    case FaultAction::Busy:
        answer(m_camera.refuse(command, gvcp::Status::Busy));
        return false;
    case FaultAction::BadAlignment:
        answer(m_camera.refuse(command, gvcp::Status::BadAlignment));
        return false;
    case FaultAction::Pending:
        answer(m_camera.announceDelay(command, fault.time));
        [[fallthrough]];
    case FaultAction::Delay:
        // Who waits for an answer sends nothing that would keep control alive.
        m_camera.excuse({datagram.source, datagram.sourcePort}, m_timeouts.now() + fault.time);
        if (command.command != gvcp::Command::Discovery && command.command != gvcp::Command::ForceIp)
            m_underWay.push_back(
                {datagram, m_timeouts.now() + fault.time, fault.action == FaultAction::Pending});
        carryOutLater(fault.time, datagram, fault.action);
        return false;
    case FaultAction::Drop:
    case FaultAction::Vanish:
    case FaultAction::Mute:
    case FaultAction::Twice:
    case FaultAction::Seize:
        break;
    }
    return true;
}

bool Station::isRepeated(const UdpDatagram& datagram, const gvcp::CommandPacket& command)
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

void Station::carryOutLater(std::chrono::milliseconds delay, const UdpDatagram& datagram,
                            std::optional<FaultAction> fault)
{
    m_timeouts.after(delay, [this, datagram, fault] {
        std::erase_if(m_underWay,
                      [&datagram](const UnderWay& each) { return isSameCommand(each.command, datagram); });
        carryOut(datagram, fault);
    });
}

void Station::carryOut(const UdpDatagram& datagram, std::optional<FaultAction> fault)
{
    const auto command = gvcp::parseCommand(datagram.payload);
    const base::IpSettings before = m_camera.ip();
    const Camera::Reaction reaction =
        m_camera.handle(*command, {datagram.source, datagram.sourcePort}, m_timeouts.now());
    if (fault == FaultAction::Seize)
        m_camera.hold({});
    const auto answer = fault == FaultAction::Mute ? std::nullopt : reaction.answer;
    // What it knows of others it knows under its address; an answer from the one of before still goes by it.
    if (m_camera.ip().address != before.address && !(answer && answer->from == before))
        m_arp.forget();
    const auto follow = [this, effect = reaction.effect, before] { followUp(effect, before); };
    if (answer && fault == FaultAction::Twice)
        m_route.deliver(*answer, askerOf(datagram));
    if (!answer)
        follow();
    else if (namesACamera(answer->packet))
        answerDiscovery(*answer, askerOf(datagram));
    else
        m_route.deliver(*answer, askerOf(datagram), follow);
}

void Station::followUp(Camera::Effect effect, const base::IpSettings& before)
{
    const std::chrono::milliseconds off = m_camera.config().forceIpOffTime;
    switch (effect) {
    case Camera::Effect::Reset:
        reset();
        break;
    case Camera::Effect::IpRestart:
        restartIp(off);
        break;
    case Camera::Effect::Forced:
        if (m_camera.ip().address != before.address)
            m_arp.forget();
        if (off.count() > 0) {
            dropAll();
            m_boot.pause(off, m_camera.ip());
        } else if (m_camera.ip() != before) {
            announceAddress();
        }
        break;
    case Camera::Effect::None:
        break;
    }
}

void Station::hear(const ArpMessage& message)
{
    const base::Ipv4 own = m_camera.ip().address;
    const bool isAsked = message.isRequest && message.target == own && !own.isUnspecified();
    if (isAsked && meetFault(Request::Arp))
        return;
    m_arp.heard(own, message);
    if (!isAsked)
        return;
    ArpMessage reply;
    reply.sourceMac = mac();
    reply.destinationMac = message.sourceMac;
    reply.isRequest = false;
    reply.sender = own;
    reply.target = message.sender;
    reply.targetMac = message.sourceMac;
    transmit(reply);
}

void Station::hear(const Echo& echo)
{
    const base::IpSettings ip = m_camera.ip();
    if (!echo.isRequest || echo.destination != ip.address || meetFault(Request::Ping))
        return;
    Echo reply = echo;
    reply.isRequest = false;
    reply.sourceMac = mac();
    std::swap(reply.source, reply.destination);
    m_route.deliver(reply, ip);
}

std::optional<Fault> Station::meetFault(Request request)
{
    ++m_counters[static_cast<std::size_t>(request)];
    const auto fault = m_faults.hit(request);
    if (fault && fault->action == FaultAction::Vanish)
        m_isPlugged = false;
    return fault;
}

void Station::answerDiscovery(const Camera::Answer& answer, const AnswerRoute::Recipient& to)
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

void Station::sendForged(const Camera::Answer& answer, const AnswerRoute::Recipient& to, unsigned next)
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

void Station::announceAddress()
{
    ArpMessage announcement;
    announcement.sourceMac = mac();
    announcement.destinationMac = BroadcastMac;
    announcement.sender = m_camera.ip().address;
    announcement.target = m_camera.ip().address;
    transmit(announcement);
}

void Station::reset()
{
    ++m_resets;
    m_camera.restart();
    restartIp(m_camera.config().rebootTime);
}

void Station::restartIp(std::chrono::milliseconds off)
{
    dropAll();
    m_camera.setIp({});
    m_boot.run(off, m_camera.registers().storedIp());
}

void Station::dropAll()
{
    m_timeouts.cancelAll();
    m_underWay.clear();
    m_arp.stop();
}

bool Station::isLost()
{
    return m_camera.config().loss > 0 && std::bernoulli_distribution(m_camera.config().loss)(m_random);
}

void Station::transmit(const Frame& frame)
{
    if (m_isPlugged && m_boot.isOn() && !isLost())
        m_send(frame);
}

} // namespace simulator
