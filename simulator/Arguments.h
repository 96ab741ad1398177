// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace simulator {

/// Says which argument is wrong, and what is allowed.
class ArgumentError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// What the command line asks for. Either help, or a command to a running farm, or a farm to run.
struct Arguments
{
    bool wantsHelp = false;
    std::string interface;
    std::string configFile;
    std::string controlSocket; ///< May be empty for a farm to run.
    std::optional<std::string> command;
};

/// What --help prints.
extern const char Usage[];

/// `words` without the program's name; throws ArgumentError.
Arguments parseArguments(const std::vector<std::string>& words);

} // namespace simulator
