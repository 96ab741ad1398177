// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/ForceIp.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/network/Network.h"

namespace sdk {

/// Sends FORCEIP on the network's first adapter until the camera acknowledges it or is found at the new
/// address; what mask and gateway it makes of them is its own affair. `before` is what the camera had when it
/// was last heard.
///
/// A camera may begin anew with each FORCEIP, and leave the network for some seconds while it changes. So
/// there are three at most, within the first second; then it is only looked for, for six seconds. One that
/// was there all the while, and that nobody holds as far as can be seen, may have missed them and gets them
/// once more.
///
/// To be found proves nothing of a camera that is asked to keep what it has. If such a one acknowledges
/// nothing, its control channel decides: when that is free, nothing stood in the way.
RZ_ERROR forceIp(Network& network, const gvcp::ForceIp& wanted, const base::IpSettings& before);

} // namespace sdk
