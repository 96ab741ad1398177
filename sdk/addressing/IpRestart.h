// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"
#include "sdk/network/Network.h"

namespace sdk {

class Session;

/// Has the camera run its stored IP configuration again (FORCEIP with the address 0.0.0.0), on the network's
/// first adapter. `before` is the address it has. Throws CameraError when the camera refuses or nothing can
/// be sent; silence is no refusal, since a camera may obey first and have no address from which to answer.
void restartIp(Network& network, const base::MacAddress& mac, base::Ipv4 before);

/// Closes the session and has its camera do that. Throws CameraError.
void closeWithIpRestart(Session& session);

} // namespace sdk
