// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "sdk/RzCameraSdk.h"

#include <cstdint>
#include <string>

/// What a camera's settings say.
namespace sdk {

/// How it obtains its address, as a gvcp::IpConfig bit: the first that is switched on.
std::uint32_t methodOf(std::uint32_t ipConfig);
/// In a sentence: "static", "DHCP", "link-local".
std::string nameOf(std::uint32_t method);

/// The address that it has.
base::IpSettings addressOf(const RZ_CC_SETTINGS& settings);
base::IpSettings storedOf(const RZ_CC_SETTINGS& settings);
/// In a sentence: the address with mask and gateway.
std::string textOf(const base::IpSettings& ip);

bool haveSameName(const RZ_CC_SETTINGS& one, const RZ_CC_SETTINGS& other);

} // namespace sdk
