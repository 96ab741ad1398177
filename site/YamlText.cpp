// SPDX-License-Identifier: Apache-2.0
#include "site/YamlText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <unictype.h>
#include <unistr.h>

namespace site {
namespace {

constexpr ucs4_t Replacement = 0xFFFD;

/// The first character, taken off the text; U+FFFD for what is none.
ucs4_t takeCharacter(std::string_view& text)
{
    ucs4_t character = Replacement;
    const int size = u8_mbtouc(&character, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    text.remove_prefix(static_cast<std::size_t>(size));
    return character;
}

void append(std::string& text, ucs4_t character)
{
    std::array<std::uint8_t, 6> bytes{};
    const int size = u8_uctomb(bytes.data(), character, bytes.size());
    text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(std::max(size, 0)));
}

bool isShown(ucs4_t character)
{
    return character == ' ' || uc_is_general_category_withtable(
                                   character, UC_CATEGORY_MASK_L | UC_CATEGORY_MASK_M | UC_CATEGORY_MASK_N |
                                                  UC_CATEGORY_MASK_P | UC_CATEGORY_MASK_S);
}

void appendShown(std::string& text, ucs4_t character)
{
    if (isShown(character))
        return append(text, character);
    char escape[11];
    std::snprintf(escape, sizeof escape,
                  character < 0x100     ? "\\x%02X"
                  : character < 0x10000 ? "\\u%04X"
                                        : "\\U%08X",
                  static_cast<unsigned>(character));
    text += escape;
}

/// What a reader of YAML could take for something else than a text, or did so once.
bool isWord(std::string_view text)
{
    std::string lower;
    for (const char c : text)
        lower += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    constexpr std::string_view words[] = {"null", "true", "false", "yes", "no", "on", "off", "y", "n"};
    return std::ranges::find(words, lower) != std::end(words);
}

/// Words of letters, digits, and what joins them.
bool isPlain(std::string_view text)
{
    const std::string_view whole = text;
    ucs4_t last = ' ';
    for (bool isFirst = true; !text.empty(); isFirst = false) {
        const ucs4_t next = takeCharacter(text);
        const bool isLetter = uc_is_general_category_withtable(next, UC_CATEGORY_MASK_L);
        const bool isJoint = next == '-' || next == '_' || next == '.' || (next >= '0' && next <= '9');
        if (!isLetter && (isFirst || (!isJoint && (next != ' ' || last == ' '))))
            return false;
        last = next;
    }
    return last != ' ' && !isWord(whole);
}

} // namespace

std::string inDoubleQuotes(std::string_view utf8)
{
    std::string result = "\"";
    while (!utf8.empty()) {
        const ucs4_t next = takeCharacter(utf8);
        if (next == '"' || next == '\\')
            result += '\\';
        appendShown(result, next);
    }
    return result + '"';
}

std::string yamlText(std::string_view utf8)
{
    return isPlain(utf8) ? std::string(utf8) : inDoubleQuotes(utf8);
}

std::string commentText(std::string_view text)
{
    std::string result;
    while (!text.empty())
        appendShown(result, takeCharacter(text));
    return result;
}

} // namespace site
