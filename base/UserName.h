// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"

#include <optional>
#include <string>

namespace base {

/// A camera's register for its name has 16 bytes, of which the last one is a NUL.
inline constexpr std::size_t MaxUserNameBytes = 15;

/// Why no camera can have that name; nothing when one can. `what` is what the user calls it: "--user-id".
std::optional<Sentence> whyNoUserName(const std::string& what, const std::string& name);

} // namespace base
