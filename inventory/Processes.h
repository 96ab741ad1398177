// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Holding.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace inventory {

/// The processes of this computer, as far as the user may see into them.
class Processes
{
public:
    /// `proc` is where the kernel tells of them.
    explicit Processes(std::filesystem::path proc = "/proc") : m_proc(std::move(proc)) {}

    /// The numbers of the processes that have sockets open, by the sockets' inodes; those that the user may
    /// not see into are left out.
    std::map<std::uint64_t, std::vector<int>> bySocket() const;

    /// Nothing when it has ended. Its texts are cut where they are too long to be of use.
    std::optional<Process> process(int pid) const;

    /// The number of the process that started it; 0 when it is not known.
    int parentOf(int pid) const;

private:
    /// The rest of the line that begins so in the process's status; empty when there is none.
    std::string status(int pid, const std::string& label) const;

    std::filesystem::path m_proc;
};

/// "alice", or the number of a user without a name.
std::string userName(unsigned userId);

} // namespace inventory
