// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/session/Failure.h"

#include <string>
#include <vector>

namespace cli {

struct Command;
struct Session;

/// All of the program's, in help's order.
const std::vector<Command>& commands();

/// The whole program: does what `words` (the command line without the program's name) ask for and reports
/// failures. That the data reached `session.out` is part of being done.
ExitStatus runProgram(const std::vector<std::string>& words, Session& session);

} // namespace cli
