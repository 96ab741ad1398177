// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace cli {

/// What --json prints; members stay in the order in which they are written.
using Json = nlohmann::ordered_json;

/// null for nothing; an address is its text.
template <typename Value>
Json orNull(const std::optional<Value>& value)
{
    if (!value)
        return nullptr;
    if constexpr (requires { value->toText(); })
        return value->toText();
    else
        return *value;
}

/// null for an empty text.
Json orNull(const std::string& text);

/// In ASCII, so that a terminal that shows it obeys nothing in it, with U+FFFD for what is no UTF-8: devices
/// and processes may have any name. With its newline.
std::string jsonText(const Json& json); ///< Indented.
std::string jsonLine(const Json& json); ///< In one line.

} // namespace cli
