// SPDX-License-Identifier: Apache-2.0
#include "simulator/camera/ControlChannel.h"

#include <algorithm>

namespace simulator {

bool ControlChannel::request(std::uint32_t value, const Application& application, Clock::time_point now)
{
    if (m_application && !mayWrite(application))
        return false;
    // Exclusive wins where both are asked for; the other bits belong to features that no camera here has.
    const std::uint32_t privilege =
        value & gvcp::Privilege::Exclusive ? gvcp::Privilege::Exclusive : value & gvcp::Privilege::Control;
    if (privilege == gvcp::Privilege::Open) {
        release();
    } else {
        m_application = application;
        m_privilege = privilege;
        m_lastHeard = now;
    }
    return true;
}

void ControlChannel::seize(const Application& application, std::uint32_t privilege)
{
    m_application = application;
    m_privilege = privilege;
    m_lastHeard.reset();
}

void ControlChannel::release()
{
    m_application.reset();
    m_privilege = gvcp::Privilege::Open;
    m_lastHeard.reset();
}

void ControlChannel::heard(const Application& application, Clock::time_point at)
{
    if (m_lastHeard && mayWrite(application))
        m_lastHeard = std::max(*m_lastHeard, at);
}

void ControlChannel::expire(Clock::time_point now, std::chrono::milliseconds heartbeatTimeout)
{
    if (m_lastHeard && now - *m_lastHeard > heartbeatTimeout)
        release();
}

} // namespace simulator
