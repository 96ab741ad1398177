// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/arguments/Arguments.h"

#include <string>

namespace cli {

struct Session;

/// One thing that the program does.
struct Command
{
    std::string name;
    std::string synopsis; ///< What follows the name, for help.
    std::string summary;  ///< One line.
    std::string help;     ///< Whole lines: what it does, then its arguments.
    Syntax syntax;
    /// Returns when it is done and seen to be so; throws a Failure otherwise.
    void (*run)(const Arguments& arguments, Session& session);
};

Command listCommand();
Command forceCommand();
Command setCommand();
Command whoCommand();
Command doctorCommand();
Command watchCommand();
Command exportCommand();
Command applyCommand();
Command replaceCommand();

} // namespace cli
