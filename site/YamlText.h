// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace site {

/// As a value or a name that readYaml() takes for that text: as it is where a person would write it so, else
/// in double quotes. What a terminal could obey is escaped. Only UTF-8 can be told.
std::string yamlText(std::string_view utf8);

/// In double quotes, whatever it is.
std::string inDoubleQuotes(std::string_view utf8);

/// For a comment's line, with what a terminal could obey escaped; what is no UTF-8 becomes U+FFFD.
std::string commentText(std::string_view text);

} // namespace site
