// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/ListedCamera.h"

#include <string>

namespace cli {

/// The cameras as a JSON array of objects with these members, in this order, texts where nothing else is
/// said: DeviceModelName, DeviceUserID, DeviceSerialNumber, GevMACAddress, GevIPConfigurationStatus
/// ("PersistentIP", "DHCP", "LLA"), GevCurrentIPAddress, GevCurrentSubnetMask, GevCurrentDefaultGateway,
/// DeviceVendorName, DeviceVersion, Status ("Free", "InUse", "Unreachable"), AdapterAddress, AdapterName,
/// GevLinkSpeed (a number, Mbit/s, or null), Conflicts (an array of texts: the MAC addresses of others that
/// have its address, and "this computer"). Plain ASCII; ends in a newline.
std::string cameraJson(const std::vector<ListedCamera>& cameras);

} // namespace cli
