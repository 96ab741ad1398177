// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <optional>

namespace sdk {

/// By its first bytes, whatever its name says.
bool isZip(base::ByteView file);

/// The first file in the archive, unpacked. Nothing when there is none, when it is damaged, or when it is
/// longer than `maxSize`: what the archive says about sizes is not relied upon.
std::optional<base::Bytes> unzip(base::ByteView archive, std::size_t maxSize);

} // namespace sdk
