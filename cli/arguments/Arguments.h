// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

namespace cli {

/// An option that a command takes.
struct Option
{
    std::string name;  ///< "--mask"
    std::string value; ///< What help calls its value, such as "MASK"; empty for an option without one.
    bool required = false;
    bool repeatable = false;
};

/// What may follow a command's name.
struct Syntax
{
    std::vector<std::string> operands; ///< What help calls them, in their order.
    std::vector<Option> options;
    std::size_t optionalOperands = 0; ///< So many of the last operands may be missing.
};

/// What did follow it. Every required option and operand is there.
struct Arguments
{
    std::vector<std::string> operands;
    /// By name; the value is empty for an option without one, and the last of one that is repeated.
    std::map<std::string, std::string> options;
    std::map<std::string, std::vector<std::string>> repeated{}; ///< The values of those that may be, by name.

    bool has(const std::string& option) const { return options.count(option) != 0; }
};

/// Throws a Failure (wrong arguments): that sentence, and where help is.
[[noreturn]] void refuseArguments(const std::string& what);

/// Takes options before, between and after the operands, as "--mask M" or "--mask=M"; the second form also
/// for a value that begins with a dash. Throws a Failure that says which word is wrong and what is allowed.
Arguments parseArguments(const Syntax& syntax, const std::vector<std::string>& words);

} // namespace cli
