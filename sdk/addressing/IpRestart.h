// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"
#include "sdk/network/Exchange.h"

namespace sdk {

class Session;

/// The command for it, out of that adapter. Sending throws CameraError when the host cannot.
Exchange::Plan ipRestartPlan(Network& network, std::size_t adapter, const base::MacAddress& mac,
                             base::Ipv4 before);
/// Of an exchange with it that has ended: throws CameraError when the camera refused. No answer is none.
void requireRestarted(const Exchange& exchange, const base::MacAddress& mac);

/// Has the camera start its network anew as its stored IP configuration says, by a FORCEIP with the address
/// 0.0.0.0 on the network's first adapter. `before` is the address that it has. Throws CameraError when the
/// camera refuses or nothing can be sent. It is no error when the camera answers nothing: many obey before
/// they answer, and then have no address to answer from.
void restartIp(Network& network, const base::MacAddress& mac, base::Ipv4 before);

/// Closes the session, so that the camera is under nobody's control, and then restarts the camera's address
/// through the session's sockets. Throws CameraError.
void closeWithIpRestart(Session& session);

} // namespace sdk
