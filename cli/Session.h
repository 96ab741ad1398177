// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Ping.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace cli {

/// What a command works with on this computer. The streams outlive it.
struct Session
{
    std::ostream& out;         ///< Data.
    std::ostream& err;         ///< Everything else, in lines.
    bool coloured = false;     ///< Whether `out` shows colours.
    bool interactive = false;  ///< Whether somebody watches `err`.
    bool hasRawSockets = true; ///< Whether cameras outside all subnets can be heard for certain.
    std::string programPath;   ///< This program's file.
    std::function<PingResult(const std::string& address)> ping;
};

} // namespace cli
