// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/TimeRequests.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"

namespace sdk {

TimeRequests::TimeRequests(ControlChannel& channel) : m_channel(channel)
{
    const auto capability = channel.findRegister(gvcp::reg::GvcpCapability).value_or(0);
    if ((capability & gvcp::Capability::PendingAck) == 0)
        return;
    const auto before = channel.findRegister(gvcp::reg::GvcpConfiguration);
    if (!before || (*before & gvcp::Configuration::PendingAck) != 0)
        return;
    try {
        // Until it is switched on, a camera that is slow to write has no way to say so.
        channel.writeRegister(gvcp::reg::GvcpConfiguration, *before | gvcp::Configuration::PendingAck,
                              ControlChannel::ManyTries);
        m_before = before;
    } catch (const CameraError& error) {
        // One that does not let it be switched on does without.
        if (error.status() == gvcp::Status::Success)
            throw;
    }
}

TimeRequests::~TimeRequests()
{
    if (!m_before)
        return;
    try {
        m_channel.writeRegister(gvcp::reg::GvcpConfiguration, *m_before, m_channel.triesForFarewell());
    } catch (const std::exception&) {
        // The camera is gone, or has reset and begins anew.
        return;
    }
}

} // namespace sdk
