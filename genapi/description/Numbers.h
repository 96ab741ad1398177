// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace genapi {

/// What the text says as GenICam writes whole numbers: decimal, however many zeros lead, or hexadecimal
/// behind 0x, with or without a sign. Up to 64 bits; beyond the largest signed number they are those of a
/// negative one.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// A number in a formula so that the engine reads it as what it is: negative ones, and whole ones that a
/// double does not hold, become a formula in brackets. Nothing when it is no number, or, in a formula of
/// whole numbers, no whole one.
std::optional<std::string> formulaNumber(std::string_view text, bool isWhole);

/// Writes a node's numbers, but not those in its formulas, so that the engine reads them as what they are.
/// Says what is wrong with a number that is none, or a word that is none of those allowed ("its Length is
/// '4 bytes', which is no whole number"); empty when all is well.
std::string settleValues(pugi::xml_node node);

} // namespace genapi
