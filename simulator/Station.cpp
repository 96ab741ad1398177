// SPDX-License-Identifier: Apache-2.0
#include "simulator/Station.h"

#include "simulator/FalseAnswers.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

// Forged answers leave in batches, so that thousands of them hold up nothing else.
constexpr unsigned ForgedBatch = 64;
constexpr std::chrono::milliseconds ForgedPause{5};

std::mt19937 generatorFor(std::uint32_t seed, const gvcp::MacAddress& mac)
{
    std::seed_seq sequence{seed, gvcp::readU32(mac.bytes, 0), gvcp::readU32(mac.bytes, 2)};
    return std::mt19937(sequence);
}

} // namespace

Station::Station(const CameraConfig& config, std::uint32_t seed, TimerQueue& timers, FrameSink send)
    : m_config(config),
      m_camera(config),
      m_timers(timers),
      m_send(std::move(send)),
      m_arp(config.mac, timers, [this](const Frame& frame) { transmit(frame); }),
      m_random(generatorFor(seed, config.mac))
{
    for (const CameraConfig::Fault& fault : config.faults)
        m_faults.add(fault);
}

void Station::receive(const Frame& frame)
{
    if (m_isPlugged && m_isRunning && !isLost())
        std::visit([this](const auto& message) { hear(message); }, frame);
}

void Station::hear(const UdpDatagram& datagram)
{
    const IpSettings ip = m_camera.ip();
    const bool toAll =
        datagram.destination == gvcp::LimitedBroadcast || datagram.destination == ip.broadcast();
    if (datagram.destinationPort != gvcp::DevicePort || (!toAll && datagram.destination != ip.address))
        return;
    const auto command = gvcp::parseCommand(datagram.payload);
    if (!command || !m_camera.concerns(*command, toAll))
        return;
    const auto request = requestOf(command->command);
    if (request && ignores(*request))
        return;

    const auto answer = m_camera.handle(*command, {datagram.source, datagram.sourcePort});
    const Recipient asker{datagram.sourceMac, datagram.source, datagram.sourcePort};
    if (answer && request == Request::Discovery) {
        if (m_config.answerDelay.count() > 0)
            after(m_config.answerDelay, [this, answer = *answer, asker] { answerDiscovery(answer, asker); });
        else
            answerDiscovery(*answer, asker);
    } else if (answer) {
        deliver(*answer, asker);
    }
    if (m_camera.ip() != ip)
        announceAddress();
}

void Station::hear(const ArpMessage& message)
{
    m_arp.heard(message);
    const gvcp::Ipv4 own = m_camera.ip().address;
    if (!message.isRequest || message.target != own || own == 0 || ignores(Request::Arp))
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
    const IpSettings ip = m_camera.ip();
    if (!echo.isRequest || echo.destination != ip.address || ignores(Request::Ping))
        return;
    Echo reply = echo;
    reply.isRequest = false;
    reply.sourceMac = mac();
    reply.destinationMac = echo.sourceMac;
    std::swap(reply.source, reply.destination);
    if (ip.reaches(echo.source)) {
        transmit(reply);
    } else if (ip.gateway != 0) {
        m_arp.resolve(ip.address, ip.gateway, [this, reply](std::optional<gvcp::MacAddress> gateway) mutable {
            if (!gateway)
                return;
            reply.destinationMac = *gateway;
            transmit(reply);
        });
    }
}

bool Station::ignores(Request request)
{
    ++m_counters[static_cast<std::size_t>(request)];
    return m_faults.drops(request);
}

void Station::answerDiscovery(const Camera::Answer& answer, const Recipient& to)
{
    for (const CameraConfig::NoiseKind kind : m_config.noise) {
        Camera::Answer noise = answer;
        for (gvcp::Bytes& packet : makeNoise(kind, answer.packet, m_random)) {
            noise.packet = std::move(packet);
            deliver(noise, to);
        }
    }
    deliver(answer, to);
    if (m_config.forgedAnswers > 0)
        sendForged(answer, to, 0);
}

void Station::sendForged(const Camera::Answer& answer, const Recipient& to, unsigned next)
{
    const unsigned end = std::min(next + ForgedBatch, m_config.forgedAnswers);
    for (; next < end; ++next) {
        Camera::Answer forged = answer;
        forged.packet = forgeAnswer(answer.packet, next);
        deliver(forged, to);
    }
    if (next < m_config.forgedAnswers)
        after(ForgedPause, [this, answer, to, next] { sendForged(answer, to, next); });
}

void Station::deliver(const Camera::Answer& answer, const Recipient& to)
{
    // An asker without an address (0.0.0.0) can be reached in no other way.
    if (answer.onlyByBroadcast || to.address == 0)
        deliverByBroadcast(answer, to);
    else if (answer.from.reaches(to.address))
        transmitTo(to.mac, answer, to);
    else if (m_config.answerBy == CameraConfig::AnswerBy::Arp)
        deliverByArp(to.address, answer, to);
    else if (answer.from.gateway != 0)
        deliverByArp(answer.from.gateway, answer, to);
    else
        transmitTo(to.mac, answer, to);
}

void Station::deliverByArp(gvcp::Ipv4 nextHop, const Camera::Answer& answer, const Recipient& to)
{
    m_arp.resolve(answer.from.address, nextHop,
                  [this, answer, to](const std::optional<gvcp::MacAddress>& mac) {
                      if (mac)
                          transmitTo(*mac, answer, to);
                      else
                          deliverByBroadcast(answer, to);
                  });
}

void Station::deliverByBroadcast(const Camera::Answer& answer, const Recipient& to)
{
    if (answer.broadcastAllowed)
        transmitTo(BroadcastMac, answer, {BroadcastMac, gvcp::LimitedBroadcast, to.port});
}

void Station::transmitTo(const gvcp::MacAddress& mac, const Camera::Answer& answer, const Recipient& to)
{
    UdpDatagram datagram;
    datagram.sourceMac = this->mac();
    datagram.destinationMac = mac;
    datagram.source = answer.from.address;
    datagram.destination = to.address;
    datagram.sourcePort = gvcp::DevicePort;
    datagram.destinationPort = to.port;
    datagram.payload = answer.packet;
    transmit(datagram);
}

void Station::announceAddress()
{
    // Whoever knew the address as another interface's learns better.
    ArpMessage announcement;
    announcement.sourceMac = mac();
    announcement.destinationMac = BroadcastMac;
    announcement.sender = m_camera.ip().address;
    announcement.target = m_camera.ip().address;
    transmit(announcement);
}

void Station::reset()
{
    m_isRunning = false;
    ++m_boot;
    after(m_config.rebootTime, [this] {
        m_camera.restart();
        m_isRunning = true;
        announceAddress();
    });
}

void Station::after(std::chrono::milliseconds delay, std::function<void()> action)
{
    m_timers.after(delay, [this, boot = m_boot, action = std::move(action)] {
        if (boot == m_boot)
            action();
    });
}

bool Station::isLost()
{
    return m_config.loss > 0 && std::bernoulli_distribution(m_config.loss)(m_random);
}

void Station::transmit(const Frame& frame)
{
    if (m_isPlugged && m_isRunning && !isLost())
        m_send(frame);
}

} // namespace simulator
