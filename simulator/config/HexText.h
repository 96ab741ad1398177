// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers and bytes in hexadecimal digits, as configuration files, description files and answers have them.
namespace simulator {

enum class Digits
{
    LowerCase,
    UpperCase
};
/// No more digits than the number needs: "c0a00000".
std::string hexNumber(std::size_t number, Digits digits);

/// As registers and their addresses are written: "0x00010000".
std::string hexWord(std::uint32_t word);
/// Likewise; 0x and one to eight digits.
std::optional<std::uint32_t> parseHexWord(std::string_view text);

/// "E9 74 E9".
std::string hexPairs(std::string_view bytes);
/// Likewise; nothing for an empty text, and for one with a byte that is 0.
std::optional<std::string> parseHexPairs(std::string_view text);

} // namespace simulator
