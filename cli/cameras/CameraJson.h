// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/Camera.h"

#include <string>

namespace cli {

/// The cameras as a JSON array of objects whose members are texts, in this order: DeviceModelName,
/// DeviceUserID, DeviceSerialNumber, GevMACAddress, GevIPConfigurationStatus ("PersistentIP", "DHCP", "LLA"),
/// GevCurrentIPAddress, GevCurrentSubnetMask, GevCurrentDefaultGateway, Status ("Free", "InUse",
/// "Unreachable"), AdapterAddress. Plain ASCII; ends in a newline.
std::string cameraJson(const std::vector<Camera>& cameras);

} // namespace cli
