// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>

namespace cli {

/// A camera's MAC address as the list shows it ("00:1A:2B:3C:4D:5E") from twelve hexadecimal digits, all
/// pairs separated by colons, by dashes, or by nothing. Throws a Failure (wrong arguments) for anything else,
/// and for what is nobody's address: all zeros, and groups.
QString parseMacAddress(const std::string& text);

} // namespace cli
