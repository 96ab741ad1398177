// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"
#include "sdk/Network.h"

namespace sdk {

/// Has the camera run its stored IP configuration again (FORCEIP with the address 0.0.0.0), on the network's
/// first adapter. `before` is the address it has. Throws CameraError when the camera refuses or nothing can
/// be sent; silence is no refusal, since a camera may obey first and have no address from which to answer.
void restartIp(Network& network, const gvcp::MacAddress& mac, gvcp::Ipv4 before);

} // namespace sdk
