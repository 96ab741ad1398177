// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <optional>

namespace cli {

class Interruption;
struct Session;
struct SetRequest;

/// What was seen of a camera that was told to restart.
struct AwaitedCamera
{
    std::optional<QDevice> last; ///< As it reported last; no value when it did not answer then.
    bool wasAway = false;        ///< Whether it was silent for a while, as one is that restarts.
};

/// Waits until a camera that was told to restart is back and has the addressing that was asked for, and says
/// on session.err whenever what it hears of it changes. Any other camera is waited for until the end of
/// session.restartPatience; but with `mayRestartAgain` one that should have got another address, and has
/// answered from that of before for some fifteen seconds, no longer than that.
///
/// Throws a Failure when it is interrupted.
AwaitedCamera awaitRestart(const QDevice& before, const SetRequest& request, bool mayRestartAgain,
                           Interruption& interruption, const Session& session);

} // namespace cli
