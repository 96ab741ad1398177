// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Numbers.h"

#include "genapi/description/Vocabulary.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace genapi {
namespace {

constexpr double ExactInDouble = 9007199254740992; ///< 2^53: the engine keeps numbers in formulas as doubles.

bool isAll(std::from_chars_result result, std::string_view text)
{
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

std::optional<double> parseReal(std::string_view text)
{
    if (const auto whole = parseInteger(text))
        return static_cast<double>(*whole);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double number = 0;
    if (!isAll(std::from_chars(text.data(), text.data() + text.size(), number), text))
        return std::nullopt;
    return number;
}

/// The whole number that the text says, also as a real number with nothing but zeros behind its point.
std::optional<std::int64_t> wholePart(std::string_view text)
{
    if (const auto whole = parseInteger(text))
        return whole;
    const auto real = parseReal(text);
    if (!real || std::trunc(*real) != *real || std::abs(*real) >= ExactInDouble)
        return std::nullopt;
    return static_cast<std::int64_t>(*real);
}

/// As decimal digits without leading zeros. Empty when it is no whole number.
std::string plainInteger(std::string_view text, bool isMaximum)
{
    const auto number = parseInteger(text);
    if (!number)
        return {};
    // A maximum beyond the largest signed number bounds nothing.
    const bool isBeyond = isMaximum && *number < 0 && !text.starts_with('-');
    return std::to_string(isBeyond ? std::numeric_limits<std::int64_t>::max() : *number);
}

/// With a digit before the point, and without leading zeros, which would make it octal for the engine.
std::optional<std::string> realInFormula(std::string_view text)
{
    if (!parseReal(text))
        return std::nullopt;
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    const bool lacksDigit = text.empty() || text.front() < '0' || text.front() > '9';
    const std::string plain = (lacksDigit ? "0" : "") + std::string(text);
    return isNegative ? "(-" + plain + ")" : plain;
}

std::string isNo(std::string_view what, std::string_view text, std::string_view kind)
{
    constexpr std::size_t shown = 40;
    return "its " + std::string(what) + " is '" + std::string(text.substr(0, shown)) + "', which is " +
           std::string(kind);
}

std::string settleInteger(pugi::xml_node property)
{
    const std::string_view name = property.name();
    const std::string_view text = property.child_value();
    const auto plain = plainInteger(text, name == "Max");
    if (plain.empty())
        return isNo(name, text, "no whole number");
    if (plain != text)
        property.text().set(plain.c_str());
    return {};
}

/// Says what is wrong with a property whose number has its node's own type.
std::string settleOwnNumber(pugi::xml_node property, const NodeKind& kind)
{
    const std::string_view name = property.name();
    const std::string text = property.child_value();
    if (kind.role == Role::Text)
        return {};
    if (name == "Constant") {
        const auto number = formulaNumber(text, kind.isInteger);
        if (!number)
            return isNo(name, text, kind.isInteger ? "no whole number" : "no number");
        // The engine takes no sign and no formula for a constant.
        if (number->starts_with('('))
            property.set_name("Expression");
        property.text().set(number->c_str());
        return {};
    }
    if (kind.role == Role::Boolean && name == "Value" && (text == "true" || text == "false")) {
        property.text().set(text == "true" ? "1" : "0");
        return {};
    }
    const bool isWhole = kind.isInteger || kind.role == Role::Boolean || kind.name == "Command";
    if (!isWhole)
        return parseReal(text) ? std::string() : isNo(name, text, "no number");
    return settleInteger(property);
}

std::string settleProperty(pugi::xml_node property, const NodeKind& kind)
{
    const PropertyKind* known = findPropertyKind(property.name());
    if (!known)
        return {}; // A reference.
    const std::string_view text = property.child_value();
    switch (known->content) {
    case Content::Integer:
        return settleInteger(property);
    case Content::OwnNumber:
        return settleOwnNumber(property, kind);
    case Content::Word:
        if (text.empty() || std::find(known->words.begin(), known->words.end(), text) == known->words.end())
            return isNo(known->name, text, "not known");
        break;
    case Content::Text:
        break;
    }
    return {};
}

std::string settleAttributes(pugi::xml_node property)
{
    for (const char* name : {"Index", "Offset"}) {
        const auto attribute = property.attribute(name);
        if (!attribute)
            continue;
        const auto plain = plainInteger(attribute.value(), false);
        if (plain.empty())
            return isNo(name, attribute.value(), "no whole number");
        property.attribute(name).set_value(plain.c_str());
    }
    return {};
}

} // namespace

std::optional<std::int64_t> parseInteger(std::string_view text)
{
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex)
        text.remove_prefix(2);
    std::uint64_t size = 0;
    if (!isAll(std::from_chars(text.data(), text.data() + text.size(), size, isHex ? 16 : 10), text))
        return std::nullopt;
    constexpr std::uint64_t LargestNegative = std::uint64_t{1} << 63;
    if (isNegative && size > LargestNegative)
        return std::nullopt;
    return static_cast<std::int64_t>(isNegative ? 0 - size : size);
}

std::optional<std::string> formulaNumber(std::string_view text, bool isWhole)
{
    const auto number = isWhole ? wholePart(text) : parseInteger(text);
    if (!number)
        return isWhole ? std::nullopt : realInFormula(text);
    if (!isWhole || std::abs(static_cast<double>(*number)) < ExactInDouble)
        return *number < 0 ? "(" + std::to_string(*number) + ")" : std::to_string(*number);
    const std::int64_t high = *number >> 32;
    const std::int64_t low = *number & 0xFFFFFFFF;
    return "(((" + std::to_string(high) + ")<<32)|" + std::to_string(low) + ")";
}

std::string settleValues(pugi::xml_node node)
{
    const NodeKind& kind = *findNodeKind(node.name());
    for (auto property : node.children()) {
        if (!isProperty(property.name()))
            continue; // A node that stands inside of this one.
        auto fault = settleProperty(property, kind);
        if (fault.empty())
            fault = settleAttributes(property);
        if (!fault.empty())
            return fault;
    }
    return {};
}

} // namespace genapi
