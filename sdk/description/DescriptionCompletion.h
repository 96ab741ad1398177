// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

namespace sdk {

/// Where the command is that has a camera run its stored IP configuration again: outside every camera's
/// address space, a register of the port's own.
inline constexpr std::uint64_t IpRestartAddress = 0x1'0000'0000;

/// The description with what it lacks of the features that every GigE Vision camera could have: the booleans
/// GevCurrentIPConfigurationPersistentIP and GevCurrentIPConfigurationDHCP on the standard's register,
/// DeviceUserID as string register if `hasUserName` says that the camera has one, and DeviceReset, which
/// writes to IpRestartAddress.
///
/// Two things are replaced: their nodes get other names, and new ones have theirs. A DeviceUserID that is a
/// String over a string register, which nobody could write as bytes, becomes that register, usable when all
/// on the way to it are. And for an `interface` above 0, which is the one that the camera was heard on, the
/// booleans are those of its own register, since a file is about the first one.
///
/// A file of which nothing changes comes back byte for byte, and so does one that is no description, cannot
/// be unpacked, or would be longer than `maxSize` afterwards. Otherwise the file's text is kept as it is but
/// for these names and NULs around it, with the new elements before its closing tag; a zipped one is then
/// unpacked.
base::Bytes completedDescription(base::Bytes file, bool hasUserName, unsigned interface, std::size_t maxSize);

} // namespace sdk
