// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "inventory/Inventory.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace inventory {

/// A program of this computer. The texts are its own and may be anything.
struct Process
{
    int pid = 0;
    std::string name;
    std::string user; ///< Whose it is: the name, or the number of one without a name.
    std::string commandLine;
};

/// Who holds a camera, beyond what the camera itself says (Camera::holder).
struct Holding
{
    std::optional<Process> process; ///< Of this computer, if it is one that may be seen.
    bool isGuess = false;           ///< Nothing proves that it is that process.
    /// What is known and how, what cannot be known and why, and what to do.
    std::vector<base::Sentence> reason;
};

/// Looks among the sockets of this computer, in the calling thread's network: root sees whose they all are,
/// others their own. Asks the camera nothing. Any thread.
Holding whoHolds(const Camera& camera, const std::vector<Adapter>& adapters);

/// The same of all cameras that are meant: this computer is looked at once, and not at all when there is
/// none.
std::map<base::MacAddress, Holding> holdingsOf(const Inventory& inventory,
                                               const std::function<bool(const Camera&)>& isMeant);

} // namespace inventory
