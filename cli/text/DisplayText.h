// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>

namespace cli {

/// Text that came from a device or a user, as UTF-8 that a terminal shows and never obeys: control and format
/// characters (those that turn the writing direction among them) and line separators become "\x1B" or
/// "\u202E", a backslash becomes two.
std::string displayText(const QString& text);

/// The same for UTF-8; what is none becomes U+FFFD.
std::string displayText(const std::string& utf8);

/// The columns that displayText()'s result takes on a terminal, whatever the locale: 2 for wide East Asian
/// characters, 0 for combining ones.
int displayWidth(const std::string& utf8);

} // namespace cli
