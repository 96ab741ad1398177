// SPDX-License-Identifier: Apache-2.0
#include "cli/session/Privileges.h"

#include <linux/capability.h>
#include <sstream>

namespace cli {
namespace {

/// The word as a shell takes it for one.
std::string quoted(const std::string& word)
{
    constexpr const char* plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-+";
    if (word.find_first_not_of(plain) == std::string::npos)
        return word;
    std::string result = "'";
    for (const char each : word)
        result += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return result + "'";
}

} // namespace

bool hasRawSocketCapability(const std::string& processStatus)
{
    std::istringstream lines(processStatus);
    for (std::string name, value; lines >> name && std::getline(lines, value);)
        if (name == "CapEff:")
            return (std::stoull(value, nullptr, 16) >> CAP_NET_RAW & 1) != 0;
    return false;
}

std::string rawSocketHint(const std::string& programPath)
{
    return "note: cameras outside this computer's subnets may be missing, because the program lacks the "
           "privilege "
           "to hear them all. To give it:\n    sudo setcap cap_net_raw+ep " +
           quoted(programPath) + "\n";
}

} // namespace cli
