// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/ForceIp.h"
#include "sdk/Network.h"
#include "sdk/RzCameraSdk.h"

namespace sdk {

/// Sends FORCEIP on the network's first adapter until the camera acknowledges it or is found at the new
/// address. `before` is what the camera had when it was last heard. Ends within 3 seconds.
///
/// An answer to the question "where is this camera" proves nothing about a camera that is asked to keep what
/// it has. If such a one acknowledges nothing, its control channel decides: when that is free, nothing stood
/// in the way.
RZ_ERROR forceIp(Network& network, const gvcp::ForceIp& wanted, const gvcp::ForceIp& before);

} // namespace sdk
