// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace base {

/// By its first bytes, whatever its name says.
bool isZip(ByteView file);

/// The first file in a zip archive, or why there is none to be had.
struct Unzipped
{
    std::string fault; ///< Said of the archive ("is encrypted"); empty when nothing is wrong with it.
    std::string name;  ///< As the archive has it, folders included.
    std::uint64_t fileCount = 0; ///< How many files the archive holds.
    Bytes content;               ///< Whole, and as its checksum says; empty when there is a fault.
};

/// Unpacks in memory alone. A file of more than `maxSize` bytes is a fault, and no more than that is ever
/// kept: what the archive says about sizes is compared and not relied upon. Zeros behind the archive are no
/// fault: cameras fill up their memory.
Unzipped unzip(ByteView archive, std::size_t maxSize);

} // namespace base
