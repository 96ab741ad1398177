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
/// FORCEIP goes out three times at most, all within the first second, because a camera may begin to change
/// its address anew with each, and leave the network for some seconds while it does. From then on the camera
/// is only looked for by DISCOVERY, until six seconds have passed since the first FORCEIP. If it answers from
/// where it was, a while after the last FORCEIP, and no application is known to control it, it has probably
/// missed all three; then the three are sent and the camera is looked for a second time.
///
/// A camera that is forced to the address that it has is found there whether it obeyed or not. When such a
/// camera acknowledges no FORCEIP, it is asked whether an application controls it, which would have made it
/// ignore FORCEIP: if none does, it counts as forced.
RZ_ERROR forceIp(Network& network, const gvcp::ForceIp& wanted, const base::IpSettings& before);

} // namespace sdk
