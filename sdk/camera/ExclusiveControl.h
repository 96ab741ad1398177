// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/camera/ControlChannel.h"

namespace sdk {

/// Exclusive control of a camera, from construction to destruction. Without a heartbeat the camera drops it
/// after its time-out, usually 3 seconds.
class ExclusiveControl
{
public:
    /// Throws CameraError when another application has the camera, or none can.
    explicit ExclusiveControl(ControlChannel& channel, int tries = ControlChannel::Tries);
    ExclusiveControl(const ExclusiveControl&) = delete;
    ExclusiveControl& operator=(const ExclusiveControl&) = delete;
    /// Gives control back. A camera that does not answer any more will find out by itself.
    ~ExclusiveControl();

    /// Asks the camera, which counts as a sign of life. False when it says that control is gone; a camera
    /// that says nothing is given the benefit of the doubt.
    bool isHeld();

    /// Gives control back, whoever answers: a camera that is not under this control ignores it.
    static void giveBack(ControlChannel& channel, int tries) noexcept;

private:
    ControlChannel& m_channel;
};

} // namespace sdk
