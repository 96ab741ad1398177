// SPDX-License-Identifier: Apache-2.0
#include "sdk/description/DescriptionUrl.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>

namespace sdk {

namespace {

constexpr std::string_view Blanks = " \t\r\n";

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

char toLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool startsWith(std::string_view text, std::string_view lowerCasePrefix)
{
    return text.size() >= lowerCasePrefix.size() &&
           std::equal(lowerCasePrefix.begin(), lowerCasePrefix.end(), text.begin(),
                      [](char wanted, char c) { return wanted == toLower(c); });
}

std::optional<std::uint32_t> parseHex(std::string_view text)
{
    text = trimmed(text);
    if (startsWith(text, "0x"))
        text.remove_prefix(2);
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [parsedTo, error] = std::from_chars(text.data(), end, value, 16);
    if (error != std::errc() || parsedTo != end)
        return std::nullopt;
    return value;
}

/// Cuts the text at its last `separator` and gives what was behind it.
std::optional<std::string_view> takeLast(std::string_view& text, char separator)
{
    const auto at = text.rfind(separator);
    if (at == std::string_view::npos)
        return std::nullopt;
    const auto last = text.substr(at + 1);
    text = text.substr(0, at);
    return last;
}

} // namespace

std::optional<DescriptionUrl> parseDescriptionUrl(std::string_view text)
{
    text = trimmed(text.substr(0, text.find('\0')));
    for (const std::string_view elsewhere : {"file:", "http:", "https:", "ftp:"})
        if (startsWith(text, elsewhere))
            return DescriptionUrl{};
    if (!startsWith(text, "local:"))
        return std::nullopt;

    text = text.substr(0, text.find('?'));
    // The name may be anything, the two numbers come last.
    const auto lengthText = takeLast(text, ';');
    const auto addressText = takeLast(text, ';');
    if (!lengthText || !addressText)
        return std::nullopt;
    const auto address = parseHex(*addressText);
    const auto length = parseHex(*lengthText);
    if (!address || !length || *length == 0 || *length - 1 > UINT32_MAX - *address)
        return std::nullopt;
    return DescriptionUrl{.isLocal = true, .address = *address, .length = *length};
}

} // namespace sdk
