// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/Station.h"

#include <utility>

namespace simulator {

namespace {

std::mt19937 generatorFor(std::uint32_t seed, const base::MacAddress& mac)
{
    std::seed_seq sequence{seed, base::readU32(mac.bytes, 0), base::readU32(mac.bytes, 2)};
    return std::mt19937(sequence);
}

} // namespace

Station::Station(const CameraConfig& config, std::uint32_t seed, TimerQueue& timers, FrameSink send)
    : m_camera(config),
      m_random(generatorFor(seed, config.mac)),
      m_timers(timers),
      m_send(std::move(send)),
      m_route(m_camera.config(), timers, [this](const Frame& frame) { transmit(frame); }),
      m_boot(
          m_camera.config(), timers, [this](const Frame& frame) { transmit(frame); }, m_random,
          [this](const base::IpSettings& ip) {
              m_camera.setIp(ip);
              announceAddress();
          }),
      m_commands(m_camera, m_route, timers, m_random,
                 [this](Camera::Effect effect, const base::IpSettings& before) { followUp(effect, before); }),
      m_hasBooted(m_boot.isOn())
{
    for (const Fault& fault : config.faults)
        m_faults.add(fault);
    setPlugged(config.isPlugged);
}

void Station::setPlugged(bool isPlugged)
{
    m_isPlugged = isPlugged;
    if (isPlugged && !m_hasBooted)
        restartIp(std::chrono::milliseconds{0});
}

const Camera& Station::camera()
{
    m_camera.passTime(m_timers.now());
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
    m_commands.take(datagram, *command, request ? meetFault(*request) : std::nullopt);
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
            m_route.forget();
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
    m_route.heard(own, message);
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
    const auto action = fault ? std::optional(fault->action) : std::nullopt;
    if (action == FaultAction::Vanish)
        m_isPlugged = false;
    else if (action == FaultAction::Reset)
        reset();
    else if (action == FaultAction::Hold)
        hold({});
    return fault;
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
    m_hasBooted = true;
    dropAll();
    m_camera.setIp({});
    m_boot.run(off, m_camera.registers().storedIp());
}

void Station::dropAll()
{
    m_commands.stop();
    m_route.stop();
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
