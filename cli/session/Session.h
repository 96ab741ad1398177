// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <string>

namespace cli {

struct OwnerAnswer;
struct OwnerQuestion;

/// What a command works with on this computer. The streams outlive it.
struct Session
{
    std::ostream& out;        ///< Data.
    std::ostream& err;        ///< Everything else, in lines.
    bool coloured = false;    ///< Whether `out` shows colours.
    bool interactive = false; ///< Whether somebody watches `err`.
    std::function<OwnerAnswer(const OwnerQuestion&)> findOwner;
    /// How long a camera may take to come back from a restart: a minute to start, then a search for a DHCP
    /// server (15 s) and for a free link-local address (40 s).
    std::chrono::seconds restartPatience{120};
    int outDescriptor = -1; ///< Where `out` goes, if that is a file or a pipe.
    /// Has the user say yes to this question; empty when nobody can be asked.
    std::function<bool(const std::string& question)> ask{};
};

} // namespace cli
