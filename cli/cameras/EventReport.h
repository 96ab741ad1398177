// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Watch.h"

#include <string>

namespace cli {

/// What stands above the lines for people.
std::string eventHeader();

/// One line for people, fit for a terminal, in the header's columns. `time` is when it happened.
std::string eventText(const inventory::WatchEvent& event, const std::string& time);

/// One line with a JSON object in plain ASCII: Time, Event ("present", "appeared", "gone", "address",
/// "status", "asks-for-address"), GevMACAddress, GevCurrentIPAddress, Status ("Free", "InUse",
/// "Unreachable"), AdapterName, DeviceModelName, DeviceUserID; null where it is not known.
std::string eventJson(const inventory::WatchEvent& event, const std::string& time);

} // namespace cli
