// SPDX-License-Identifier: Apache-2.0
#include "cli/commands/Restart.h"

#include "cli/cameras/Cameras.h"
#include "cli/commands/SetRequest.h"
#include "cli/session/Failure.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"

#include <ostream>

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

/// The camera counts as back when it has been seen twice in a row as it is: the first time it may not have
/// gone down yet.
constexpr int LooksAtMovedCamera = 2;

/// A camera that still answers from its old address may be about to restart, or may never have heard that it
/// shall. Only when it has not changed for this many looks is it believed to stay as it is.
constexpr int LooksAtUnmovedCamera = 10;

/// Between two looks. A look takes more than a second itself, but no time at all when this computer's only
/// adapter is down, as it is while the camera at the other end of its cable restarts.
constexpr std::chrono::milliseconds Pause{500};

std::string stateOf(const std::optional<Camera>& camera, const SetRequest& request)
{
    if (!camera)
        return "The camera does not answer while it restarts ...";
    if (!addressingDifference(*camera, request).empty())
        return "The camera answers, not yet as asked: " + describeAddressing(*camera);
    return "The camera answers as asked: " + describeAddressing(*camera);
}

/// Whether the camera is to look for an address, and answers from the one that it had before.
bool isUnmoved(const Camera& camera, const Camera& before, const SetRequest& request)
{
    return !request.isStatic() && camera.type == request.type &&
           camera.settings.address == before.settings.address;
}

std::string interrupted(const std::optional<Camera>& camera, const SetRequest& request)
{
    std::string text = ": interrupted while it restarts; it was given the new settings, but whether it comes "
                       "back with them was not seen";
    if (camera && request.isStatic())
        if (const std::string stored = describeStored(*camera); !stored.empty())
            text += "; " + stored;
    return text;
}

} // namespace

AwaitedCamera awaitRestart(const Camera& before, const SetRequest& request, bool mayRestartAgain,
                           Interruption& interruption, const Session& session)
{
    session.err << "Waiting for " << describe(before) << " to come back with " << describeAddressing(request)
                << ", for " << session.restartPatience.count() << " seconds at most ...\n"
                << std::flush;
    const auto end = Clock::now() + session.restartPatience;
    AwaitedCamera seen;
    std::string shown;
    for (int alike = 0;;) {
        seen.last = lookForCamera(request.mac);
        const std::optional<Camera>& camera = seen.last;
        seen.wasAway = seen.wasAway || !camera;
        const std::string state = stateOf(camera, request);
        if (state != shown)
            session.err << state << '\n' << std::flush;
        alike = state == shown ? alike + 1 : 1;
        shown = state;

        const bool isAsAsked = camera && addressingDifference(*camera, request).empty();
        // One that was away, and has what was asked, has restarted and been given its old address again.
        const bool mayBeUnmoved =
            camera && isUnmoved(*camera, before, request) && !(isAsAsked && seen.wasAway);
        const bool isFinal = isAsAsked || (mayBeUnmoved && mayRestartAgain);
        const bool isConvincing = alike >= (mayBeUnmoved ? LooksAtUnmovedCamera : LooksAtMovedCamera);
        if ((isFinal && isConvincing) || (!isAsAsked && Clock::now() >= end))
            return seen;
        if (interruption.arrives(Pause))
            throw Failure(ExitStatus::Interrupted, describe(before) + interrupted(camera, request));
    }
}

} // namespace cli
