// SPDX-License-Identifier: Apache-2.0
#include "simulator/station/BootSequence.h"

#include "gvcp/Registers.h"
#include "simulator/config/CameraConfig.h"

#include <utility>

namespace simulator {

BootSequence::BootSequence(const CameraConfig& config, TimerQueue& timers, const FrameSink& send,
                           std::mt19937& random, Done done)
    : m_config(config),
      m_timeouts(timers),
      m_dhcp(config.mac, timers, send, random),
      m_claim(config.mac, timers, send, random),
      m_done(std::move(done)),
      m_phase(config.ip.address.isUnspecified() ? Phase::Off : Phase::Running)
{
    if (config.ip.address.isLinkLocal())
        m_lastLinkLocal = config.ip.address;
}

void BootSequence::run(std::chrono::milliseconds off, const StoredIp& settings)
{
    switchOff();
    if (off.count() > 0)
        m_timeouts.after(off, [this, settings] { obtainAddress(settings); });
    else
        obtainAddress(settings);
}

void BootSequence::pause(std::chrono::milliseconds off, const base::IpSettings& ip)
{
    switchOff();
    m_timeouts.after(off, [this, ip] { finish(ip); });
}

void BootSequence::switchOff()
{
    m_timeouts.cancelAll();
    m_dhcp.stop();
    m_claim.stop();
    m_phase = Phase::Off;
}

void BootSequence::receive(const Frame& frame)
{
    if (const auto* const arp = std::get_if<ArpMessage>(&frame))
        m_claim.heard(*arp);
    else if (const auto* const datagram = std::get_if<UdpDatagram>(&frame);
             datagram && datagram->destinationPort == DhcpClient::Port)
        m_dhcp.receive(*datagram);
}

void BootSequence::obtainAddress(const StoredIp& settings)
{
    if ((settings.ipConfig & gvcp::IpConfig::Persistent) && !settings.persistent.address.isUnspecified())
        finish(settings.persistent);
    else if (settings.ipConfig & gvcp::IpConfig::Dhcp)
        obtainLease();
    else
        claimLinkLocal();
}

void BootSequence::obtainLease()
{
    const base::IpSettings& expected = m_config.ip;
    if (!expected.address.isUnspecified() && !expected.address.isLinkLocal()) {
        finish(expected);
        return;
    }
    m_phase = Phase::Dhcp;
    m_dhcp.start(m_config.dhcpTimeout, [this](const std::optional<base::IpSettings>& lease) {
        if (lease)
            finish(*lease);
        else
            claimLinkLocal();
    });
}

void BootSequence::claimLinkLocal()
{
    m_phase = Phase::LinkLocal;
    m_claim.start(m_config.probeInterval, m_lastLinkLocal, [this](const base::IpSettings& ip) {
        m_lastLinkLocal = ip.address;
        finish(ip);
    });
}

void BootSequence::finish(const base::IpSettings& ip)
{
    m_phase = Phase::Running;
    m_done(ip);
}

} // namespace simulator
