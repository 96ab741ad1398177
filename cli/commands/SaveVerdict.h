// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/commands/Restart.h"
#include "cli/commands/Save.h"

namespace cli {

/// A change that was written, and what was seen of the camera then.
struct Change
{
    Camera sent; ///< The camera as the worker got it.
    SaveOutcome outcome;
    AwaitedCamera seen;
};

/// Throws a Failure unless the camera reports in the end all that was asked, has it stored as far as is
/// known, and nothing went wrong on the way. The cameras are those of before.
void requireDone(const Change& change, const SetRequest& request, const std::vector<Camera>& cameras);

} // namespace cli
