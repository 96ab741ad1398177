// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace cli {

/// Whether a process may open raw sockets (CAP_NET_RAW in effect), by its /proc/PID/status.
bool hasRawSocketCapability(const std::string& processStatus);

/// Says that cameras outside the computer's subnets may be missing, and the command that changes it.
std::string rawSocketHint(const std::string& programPath);

} // namespace cli
