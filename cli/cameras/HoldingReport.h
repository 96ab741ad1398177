// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Holding.h"

#include <string>

namespace cli {

/// Who holds the camera, in lines for people, fit for a terminal.
std::string holdingText(const inventory::Camera& camera, const inventory::Holding& holding);

/// The same as a JSON object: GevMACAddress, Privilege ("none", "control", "exclusive", "unknown"),
/// HolderAddress, HolderPort, HeartbeatTimeout (ms), HeartbeatDisabled, StreamDestination ("address:port"),
/// Process (an object: Pid, Name, User, CommandLine) and Reason; null where it is not known. Plain ASCII;
/// ends in a newline.
std::string holdingJson(const inventory::Camera& camera, const inventory::Holding& holding);

} // namespace cli
