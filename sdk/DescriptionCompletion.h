// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Bytes.h"

namespace sdk {

/// Where the command is that has a camera run its stored IP configuration again: outside every camera's
/// address space, a register of the port's own.
inline constexpr std::uint64_t IpRestartAddress = 0x1'0000'0000;

/// The description with what it lacks of the features that every GigE Vision camera could have: the booleans
/// GevCurrentIPConfigurationPersistentIP and GevCurrentIPConfigurationDHCP on the standard's register,
/// DeviceUserID as string register if `hasUserName` says that the camera has one, and DeviceReset, which
/// writes to IpRestartAddress.
///
/// A file that lacks nothing comes back byte for byte, and so does one that is no description, cannot be
/// unpacked, or would be longer than `maxSize` afterwards. Otherwise the file's text is kept as it is, with
/// the new elements before its closing tag; a zipped one is then unpacked.
gvcp::Bytes completedDescription(gvcp::Bytes file, bool hasUserName, std::size_t maxSize);

} // namespace sdk
