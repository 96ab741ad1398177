// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"

#include <istream>
#include <map>
#include <string>
#include <vector>

namespace doctor {

/// Who has made the devices with these MACs, by the lines "00-1A-2B   (hex)   Maker" of the registry that is
/// read; those that are not in it are left out.
std::map<base::MacAddress, std::string> makersIn(std::istream& registry,
                                                 const std::vector<base::MacAddress>& macs);

/// The same by the registry of the package ieee-data; nothing where that is not installed.
std::map<base::MacAddress, std::string> findMakers(const std::vector<base::MacAddress>& macs);

} // namespace doctor
