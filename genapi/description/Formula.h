// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace genapi {

/// Longer formulas are refused, named expressions inserted (characters).
inline constexpr std::size_t MaxFormulaSize = 64 * 1024;

/// Brackets within brackets; more are refused.
inline constexpr std::size_t MaxBracketDepth = 64;

/// How deep brackets stand in each other anywhere in the text.
std::size_t bracketDepth(std::string_view formula);

/// The names of variables, constants, expressions and functions in the order they stand, repeated ones too.
std::vector<std::string_view> namesIn(std::string_view formula);

/// Writes a formula's numbers so that the engine reads them as what they are. Returns the first that is no
/// number (in a formula of whole numbers: no whole one), and then the formula is as it was; empty when all
/// are.
std::string settleNumbers(std::string& formula, bool isWhole);

/// The formula with every divisor changed so that it is never -1 when a division is made: the smallest 64-bit
/// number divided by -1 kills the process, and a camera decides about both. The value stays the same.
/// Nothing when it is unclear where a divisor ends, or when the result would be longer than MaxFormulaSize.
///
/// Brackets must be no deeper than MaxBracketDepth.
std::optional<std::string> guardDivisions(std::string_view formula);

} // namespace genapi
