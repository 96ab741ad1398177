// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "base/MacAddress.h"

#include <string>

namespace cli {

struct Arguments;

/// A camera's MAC address from twelve hexadecimal digits, all pairs separated by colons, by dashes, or by
/// nothing. Throws a Failure (wrong arguments) for anything else, and for what is nobody's address: all
/// zeros, and groups.
base::MacAddress parseMacAddress(const std::string& text);

/// --ip, --mask and --gateway (0.0.0.0 when it is not given) as settings that a camera can have. Throws a
/// Failure (wrong arguments) that names the option, what is wrong with its value and what is allowed:
/// - four decimal numbers from 0 to 255 without signs, spaces or leading zeros, joined by dots;
/// - a mask from 128.0.0.0 to 255.255.255.252, ones before zeros: a longer one has no room for two hosts;
/// - an address that a host can have, in general (neither 0.x, 127.x, multicast nor above) and in the subnet
///   (neither its first nor its last);
/// - a gateway of the same kind in the same subnet, other than the address; or 0.0.0.0.
base::IpSettings parseIpSettings(const Arguments& arguments);

} // namespace cli
