// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace cli {

struct PingResult
{
    bool answered = false;
    std::string failure; ///< Why nobody could be asked; empty when somebody was.
};

/// Asks the address for one echo and waits for it for a second, by the system's ping program.
PingResult ping(const std::string& address);

} // namespace cli
