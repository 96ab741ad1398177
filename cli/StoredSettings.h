// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

class QDevice;

namespace cli {

struct SetRequest;

/// Why a camera that is set to DHCP or link-local addresses, as asked, has to start anew to get one: its
/// address is none of that kind, as after a change that was interrupted before the restart. Empty when it has
/// not. Asks the camera for its stored address.
std::string reasonToRestart(const QDevice& camera, const SetRequest& request);

/// "its stored address is 192.168.1.20, mask 255.255.255.0, no gateway", or empty when the camera does not
/// tell.
std::string describeStored(const QDevice& camera);

/// The same, or that it may be some of the old and some of the new.
std::string describeStoredOrDoubt(const QDevice& camera);

} // namespace cli
