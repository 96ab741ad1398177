// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Registers.h"
#include "simulator/config/Endpoint.h"

#include <chrono>
#include <optional>

namespace simulator {

/// Who controls a camera, with which privilege, and for how long without being heard.
class ControlChannel
{
public:
    using Clock = std::chrono::steady_clock;

    /// Known by address and port: two on one host have different ports.
    using Application = Endpoint;

    /// What a write of this value to the privilege register does; false when another application is in
    /// control.
    bool request(std::uint32_t value, const Application& application, Clock::time_point now);
    /// Puts an application in control that is never heard, and keeps control all the same.
    void seize(const Application& application, std::uint32_t privilege);
    void release();

    /// The application in control, if it is this one, has been heard; it may be silent from then on for as
    /// long as its heartbeat's time-out is.
    void heard(const Application& application, Clock::time_point at);
    /// Ends control by an application that has been silent for longer.
    void expire(Clock::time_point now, std::chrono::milliseconds heartbeatTimeout);

    const std::optional<Application>& application() const { return m_application; }
    std::uint32_t privilege() const { return m_privilege; }
    bool mayWrite(const Application& application) const { return m_application == application; }
    bool mayRead(const Application& application) const
    {
        return m_privilege != gvcp::Privilege::Exclusive || mayWrite(application);
    }

private:
    std::optional<Application> m_application;
    std::uint32_t m_privilege = gvcp::Privilege::Open;
    std::optional<Clock::time_point> m_lastHeard; ///< Nothing for one that need not be heard.
};

} // namespace simulator
