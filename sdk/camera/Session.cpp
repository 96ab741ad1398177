// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/Session.h"

#include "gvcp/Registers.h"
#include "sdk/camera/Heartbeat.h"
#include "sdk/camera/Identity.h"
#include "sdk/network/CameraError.h"

namespace sdk {

namespace {

/// The camera's own time-out in milliseconds; the usual one if it does not say.
std::chrono::milliseconds heartbeatTimeout(ControlChannel& channel)
{
    return std::chrono::milliseconds(channel.findRegister(gvcp::reg::HeartbeatTimeout).value_or(3000));
}

} // namespace

Session::Session(std::unique_ptr<Network> network, base::Ipv4 camera, const base::MacAddress& mac, int tries,
                 const StartHeartbeat& startHeartbeat)
    : m_mac(mac),
      m_channel(std::move(network), camera)
{
    m_control.emplace(m_channel, tries);
    m_interface = interfaceWith(m_channel, mac);
    m_timeRequests.emplace(m_channel);
    m_heartbeat =
        startHeartbeat(Heartbeat::intervalFor(heartbeatTimeout(m_channel)), [this] { return isAlive(); });
}

std::shared_ptr<void> Session::onThreadOfItsOwn(std::chrono::milliseconds interval,
                                                std::function<bool()> beat)
{
    return std::make_shared<Heartbeat>(interval, std::move(beat));
}

bool Session::isOpen() const
{
    return m_channel.isOpen();
}

void Session::requireSameCamera(int tries)
{
    try {
        requireMac(m_channel, m_interface, m_mac, tries);
    } catch (const CameraError& error) {
        if (error.code() != RZ_ERROR_OTHER_CAMERA)
            throw;
        // Whether this reaches the camera that is held is luck; else that one drops control by itself.
        ExclusiveControl::giveBack(m_channel, 1);
        m_channel.close(error);
        throw;
    }
}

/// One beat of the heartbeat, on its thread, which ends before the control does.
bool Session::isAlive()
{
    try {
        requireSameCamera(ControlChannel::FewTries);
    } catch (const CameraError& error) {
        if (error.code() == RZ_ERROR_OTHER_CAMERA)
            return false;
    }
    return m_control->isHeld();
}

bool Session::close(const std::function<void(Network&)>& last)
{
    const std::lock_guard lock(m_mutex);
    m_heartbeat.reset();
    m_timeRequests.reset();
    m_control.reset();
    const auto network = m_channel.close();
    if (network && last)
        last(*network);
    return network != nullptr;
}

} // namespace sdk
