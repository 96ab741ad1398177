// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <optional>

namespace cli {

class Interruption;
struct Session;
struct SetRequest;

/// Waits until a camera that was told to restart is back and has the addressing that was asked for, and says
/// on session.err whenever what it hears of it changes. Any other camera is waited for until the end of
/// session.restartPatience; but with `mayRestartAgain` one that should have got another address, and has
/// answered from that of before for some fifteen seconds, no longer than that.
///
/// Gives what the camera reported last; no value when it did not answer then. Throws a Failure when it is
/// interrupted.
std::optional<QDevice> awaitRestart(const QDevice& before, const SetRequest& request, bool mayRestartAgain,
                                    Interruption& interruption, const Session& session);

} // namespace cli
