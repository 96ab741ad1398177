// SPDX-License-Identifier: Apache-2.0
#include "sdk/Session.h"

#include "gvcp/Registers.h"
#include "sdk/CameraError.h"
#include "sdk/IpRestart.h"

namespace sdk {

namespace {

/// The camera's own time-out in milliseconds; the usual one if it does not say.
std::chrono::milliseconds heartbeatTimeout(ControlChannel& channel)
{
    return std::chrono::milliseconds(channel.findRegister(gvcp::reg::HeartbeatTimeout).value_or(3000));
}

} // namespace

Session::Session(std::unique_ptr<Network> network, gvcp::Ipv4 camera) : m_channel(std::move(network), camera)
{
    m_control.emplace(m_channel);
    m_heartbeat.emplace(Heartbeat::intervalFor(heartbeatTimeout(m_channel)),
                        [this] { return m_control->isHeld(); });
}

bool Session::isOpen() const
{
    const std::lock_guard lock(m_mutex);
    return m_control.has_value();
}

void Session::close()
{
    const std::lock_guard lock(m_mutex);
    shutDown();
}

void Session::closeWithIpRestart(const gvcp::MacAddress& mac)
{
    const std::lock_guard lock(m_mutex);
    const auto network = shutDown();
    if (!network)
        throw CameraError(RZ_ERROR_NOT_OPEN, "the camera is not open any more");
    restartIp(*network, mac, m_channel.camera());
}

std::unique_ptr<Network> Session::shutDown()
{
    m_heartbeat.reset();
    m_control.reset();
    return m_channel.close();
}

} // namespace sdk
