// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/Camera.h"

namespace cli {

class Interruption;
struct Session;
struct SetRequest;

/// What was seen of a camera that was told to restart.
struct AwaitedCamera
{
    std::optional<Camera> last; ///< As it reported last; no value when it did not answer then.
    bool wasAway = false;       ///< Whether it was silent for a while, as one is that restarts.
};

/// Waits until a camera that was told to restart is back and has the addressing that was asked for, and says
/// on session.err whenever what it hears of it changes. Gives up after session.restartPatience. With
/// `mayRestartAgain` it also gives up, after some fifteen seconds, on a camera that should look for a new
/// address and has answered from its old one all the while.
///
/// Throws a Failure when it is interrupted.
AwaitedCamera awaitRestart(const Camera& before, const SetRequest& request, bool mayRestartAgain,
                           Interruption& interruption, const Session& session);

} // namespace cli
