// SPDX-License-Identifier: Apache-2.0
#include "base/Utf8.h"

#include <cstdint>
#include <unistr.h>

namespace base {

bool isUtf8(std::string_view text)
{
    return u8_check(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()) == nullptr;
}

} // namespace base
