// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "inventory/Inventory.h"

#include <optional>
#include <string>
#include <vector>

namespace doctor {

/// Why the listener does not hear what it could, and what changes that.
struct ListenerFault
{
    base::Sentence reason;
    base::Sentence purpose; ///< What the commands are for, part of a sentence: "To give it". Empty without.
    std::vector<std::string> repair; ///< Commands for root.
};

/// Looks at the program's file, as the calling user. Nothing when all is heard.
std::optional<ListenerFault> findListenerFault(inventory::Listener listener, const std::string& program);

} // namespace doctor
