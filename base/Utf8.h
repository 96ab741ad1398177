// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace base {

bool isUtf8(std::string_view text);

} // namespace base
