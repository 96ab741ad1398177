// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace cli {

class Interruption;
struct FoundCamera;
struct Session;
struct SetRequest;

/// How a save ended.
struct SaveOutcome
{
    bool restarts = false;             ///< The camera was told to restart.
    std::vector<std::string> failures; ///< What went wrong, in the worker's words, fit for a terminal.
    std::string reason;                ///< Why the SDK failed, likewise; empty when it has no more to say.
};

/// Runs the save worker, which writes to the camera what is asked, and passes its messages on to session.err
/// as they come. It restarts a camera whose type changes, so also one that is said here to have none.
///
/// On the thread of the QCoreApplication; returns when the worker's thread is gone and the camera is
/// nobody's. An interruption ends it early, between two steps of the worker, which take up to some seconds;
/// then a Failure is thrown, which says what the camera may have by now.
SaveOutcome save(FoundCamera found, const SetRequest& request, Interruption& interruption,
                 const Session& session);

} // namespace cli
