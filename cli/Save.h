// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

class QDevice;
class QDeviceManager;

namespace cli {

class Interruption;
struct Session;

/// How a save ended.
struct SaveOutcome
{
    bool restarts = false;             ///< The camera was told to restart.
    std::vector<std::string> failures; ///< What went wrong, in the worker's words, fit for a terminal.
    std::string reason;                ///< Why the SDK failed, likewise; empty when it has no more to say.
    bool interrupted = false;          ///< By a signal, some time before the worker's end.
};

/// Runs the save worker for one change of one camera and passes its messages on to session.err as they come.
/// The manager's list has the camera and its neighbours.
///
/// On the thread of the QCoreApplication; returns when the worker's thread is gone and the camera is
/// nobody's. An interruption ends it early: between two steps of the worker, which take up to some seconds.
SaveOutcome save(std::unique_ptr<QDeviceManager> manager, const QDevice& current, const QDevice& wanted,
                 const Interruption& interruption, const Session& session);

} // namespace cli
