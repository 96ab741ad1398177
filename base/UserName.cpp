// SPDX-License-Identifier: Apache-2.0
#include "base/UserName.h"

#include "base/Utf8.h"

namespace base {

std::optional<Sentence> whyNoUserName(const std::string& what, const std::string& name)
{
    // Readers take a byte order mark in front for no part of the text.
    if (!isUtf8(name) || name.starts_with("\xEF\xBB\xBF"))
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is not UTF-8"), {what, name}};
    if (name.find('\0') != std::string::npos)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" has a NUL in it, which ends a camera's name"),
                        {what, name}};
    if (name.size() > MaxUserNameBytes)
        return Sentence{
            TRANSLATABLE("Sentence", "%1 \"%2\" is too long with %3 bytes of UTF-8; %4 are allowed"),
            {what, name, std::to_string(name.size()), std::to_string(MaxUserNameBytes)}};
    return std::nullopt;
}

} // namespace base
