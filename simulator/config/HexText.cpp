// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/HexText.h"

#include <charconv>
#include <cstdio>

namespace simulator {

namespace {

/// Nothing unless all of the text is digits of such a number.
template <typename T>
std::optional<T> parseDigits(std::string_view text)
{
    T number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, 16);
    return result.ec == std::errc{} && result.ptr == end ? std::optional(number) : std::nullopt;
}

} // namespace

std::string hexNumber(std::size_t number, Digits digits)
{
    char text[17];
    std::snprintf(text, sizeof text, digits == Digits::UpperCase ? "%zX" : "%zx", number);
    return text;
}

std::string hexWord(std::uint32_t word)
{
    char text[11];
    std::snprintf(text, sizeof text, "0x%08X", word);
    return text;
}

std::optional<std::uint32_t> parseHexWord(std::string_view text)
{
    return text.starts_with("0x") && text.size() <= 10 ? parseDigits<std::uint32_t>(text.substr(2))
                                                       : std::nullopt;
}

std::string hexPairs(std::string_view bytes)
{
    std::string text;
    for (const char each : bytes) {
        char pair[4];
        std::snprintf(pair, sizeof pair, " %02X", static_cast<std::uint8_t>(each));
        text += text.empty() ? pair + 1 : pair;
    }
    return text;
}

std::optional<std::string> parseHexPairs(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); at += 3) {
        const std::string_view pair = text.substr(at, 2);
        const auto byte = parseDigits<std::uint8_t>(pair);
        if (pair.size() != 2 || !byte || *byte == 0 || (at + 2 < text.size() && text[at + 2] != ' '))
            return std::nullopt;
        bytes += static_cast<char>(*byte);
    }
    // A blank stands between two bytes, never at the end.
    if (bytes.empty() || text.back() == ' ')
        return std::nullopt;
    return bytes;
}

} // namespace simulator
