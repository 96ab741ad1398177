// SPDX-License-Identifier: Apache-2.0
#include "sdk/CameraHandle.h"

#include "sdk/discovery/Record.h"
#include "sdk/network/CameraError.h"

namespace sdk {

base::MacAddress CameraHandle::mac() const
{
    return macOf(m_info);
}

base::Ipv4 CameraHandle::address() const
{
    return addressOf(m_info);
}

void CameraHandle::open(std::unique_ptr<Network> network)
{
    ForcedAddresses& forced = ForcedAddresses::instance();
    const int tries =
        forced.wasJustForced(mac(), network->now()) ? ControlChannel::ManyTries : ControlChannel::Tries;
    auto session = std::make_shared<Session>(std::move(network), address(), mac(), tries);
    storeWaitingAddress(*session, forced);
    auto port = std::make_unique<Port>(session, forced);
    const std::lock_guard lock(m_mutex);
    m_session = std::move(session);
    m_port = std::move(port);
    m_openedBy = std::this_thread::get_id();
}

void CameraHandle::close()
{
    // Not under the lock: it takes as long as the camera does.
    std::shared_ptr<Session> session;
    {
        const std::lock_guard lock(m_mutex);
        session = m_session;
    }
    if (session)
        session->close();
}

bool CameraHandle::isOpen() const
{
    const std::lock_guard lock(m_mutex);
    return m_session && m_session->isOpen();
}

bool CameraHandle::wasOpenedBy(std::thread::id thread) const
{
    const std::lock_guard lock(m_mutex);
    return m_openedBy == thread;
}

std::shared_ptr<Session> CameraHandle::session() const
{
    const std::lock_guard lock(m_mutex);
    if (!m_session)
        throw CameraError(RZ_ERROR_NOT_OPEN, "the camera is not open");
    m_session->channel().requireOpen();
    return m_session;
}

GenApi::IPort* CameraHandle::port() const
{
    const std::lock_guard lock(m_mutex);
    return m_session && m_session->isOpen() ? m_port.get() : nullptr;
}

} // namespace sdk
