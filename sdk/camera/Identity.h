// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/camera/ControlChannel.h"

/// Who it is that answers: two cameras may have the same address, the factory's for instance, and which of
/// them gets a command is up to the host's neighbour table, from one packet to the next.
namespace sdk {

/// Which of its network interfaces, counted from 0, has this MAC. Throws CameraError: RZ_ERROR_OTHER_CAMERA
/// when none has.
unsigned interfaceWith(ControlChannel& channel, const base::MacAddress& mac,
                       int tries = ControlChannel::Tries);

/// Throws CameraError unless that interface has this MAC still.
void requireMac(ControlChannel& channel, unsigned interface, const base::MacAddress& mac,
                int tries = ControlChannel::Tries);

} // namespace sdk
