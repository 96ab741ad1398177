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

/// While it lives, the camera may ask for more time by PENDING_ACK, if it is able to. The camera is under
/// control.
class Session::TimeRequests
{
public:
    /// Throws CameraError when the camera has fallen silent.
    explicit TimeRequests(ControlChannel& channel);
    TimeRequests(const TimeRequests&) = delete;
    TimeRequests& operator=(const TimeRequests&) = delete;
    /// Leaves the camera as it was.
    ~TimeRequests();

private:
    ControlChannel& m_channel;
    std::optional<std::uint32_t> m_before; ///< The register, if it was changed.
};

Session::TimeRequests::TimeRequests(ControlChannel& channel) : m_channel(channel)
{
    const auto capability = channel.findRegister(gvcp::reg::GvcpCapability).value_or(0);
    if ((capability & gvcp::Capability::PendingAck) == 0)
        return;
    const auto before = channel.findRegister(gvcp::reg::GvcpConfiguration);
    if (!before || (*before & gvcp::Configuration::PendingAck) != 0)
        return;
    try {
        // As long as PENDING_ACK is off, a camera that is slow to write cannot say so. It is given much time
        // instead.
        channel.writeRegister(gvcp::reg::GvcpConfiguration, *before | gvcp::Configuration::PendingAck,
                              ControlChannel::ManyTries);
        m_before = before;
    } catch (const CameraError& error) {
        // A camera that refuses this works without it.
        if (error.status() == gvcp::Status::Success)
            throw;
    }
}

Session::TimeRequests::~TimeRequests()
{
    if (!m_before)
        return;
    try {
        m_channel.writeRegister(gvcp::reg::GvcpConfiguration, *m_before, m_channel.triesForFarewell());
    } catch (const std::exception&) {
        // The camera is gone, or has reset, and with that has its old configuration.
        return;
    }
}

Session::Session(std::unique_ptr<Network> network, base::Ipv4 camera, const base::MacAddress& mac, int tries,
                 const StartHeartbeat& startHeartbeat)
    : m_mac(mac),
      m_channel(std::move(network), camera)
{
    m_control.emplace(m_channel, tries);
    m_interface = interfaceWith(m_channel, mac);
    m_timeRequests = std::make_unique<TimeRequests>(m_channel);
    m_heartbeat =
        startHeartbeat(Heartbeat::intervalFor(heartbeatTimeout(m_channel)), [this] { return isAlive(); });
}

Session::~Session()
{
    close();
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
        // Either of the two cameras may get this. If it is not the one under our control, that one will
        // notice by its time-out that nobody is there any more.
        ExclusiveControl::giveBack(m_channel, 1);
        m_channel.close(error);
        throw;
    }
}

/// One beat of the heartbeat, on its thread. Control is not given back before that thread has ended.
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
