// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/camera/ControlChannel.h"

#include <optional>

namespace sdk {

/// While it lives, the camera may ask for more time by PENDING_ACK, if it can do so. Under control.
class TimeRequests
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

} // namespace sdk
