// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/engine/Faults.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace genapi {

/// Larger descriptions are refused, plain or unpacked (bytes). Real ones have at most 1.3 million.
inline constexpr std::size_t MaxDescriptionSize = 8 * 1024 * 1024;

/// A description's text: the data itself, or what is in it when it is a zip, which then must hold exactly one
/// plain file. Works in memory alone. Throws a GenICam::RuntimeException.
std::string unpackDescription(std::string_view data);

/// A description that is safe to evaluate.
struct CheckedDescription
{
    std::string text; ///< Written anew, with nothing in it but what evaluation needs.
    Faults faults;
};

/// Checks a plain description. Throws a GenICam::RuntimeException for what is none, has a document type (and
/// so entities), or is larger or deeper than any real one.
CheckedDescription checkDescription(std::string text);

} // namespace genapi
