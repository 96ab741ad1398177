// SPDX-License-Identifier: Apache-2.0
#include "cli/Restart.h"

#include "cli/Cameras.h"
#include "cli/Failure.h"
#include "cli/Interruption.h"
#include "cli/Session.h"
#include "cli/SetRequest.h"
#include "cli/StoredSettings.h"

#include <ostream>

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

/// One alone may be the last answer of a camera that is slow to go down.
constexpr int AgreeingLooks = 2;

/// A camera that answers from where it was may have missed that it is to restart, or still be about to.
constexpr int LooksWhereItWas = 10;

/// A look takes its time, but none when the adapter is gone for as long as its only camera restarts.
constexpr std::chrono::milliseconds Pause{500};

std::string stateOf(const std::optional<QDevice>& camera, const SetRequest& request)
{
    if (!camera)
        return "The camera does not answer while it restarts ...";
    if (!addressingDifference(*camera, request).empty())
        return "The camera answers, not yet as asked: " + describeAddressing(*camera);
    return "The camera answers as asked: " + describeAddressing(*camera);
}

std::string interrupted(const std::optional<QDevice>& camera, const SetRequest& request)
{
    std::string text = ": interrupted while it restarts; it was given the new settings, but whether it comes "
                       "back with them was not seen";
    if (camera && request.addressing == SetRequest::Addressing::Static)
        if (const std::string stored = describeStored(*camera); !stored.empty())
            text += "; " + stored;
    return text;
}

} // namespace

AwaitedCamera awaitRestart(const QDevice& before, const SetRequest& request, bool mayRestartAgain,
                           Interruption& interruption, const Session& session)
{
    session.err << "Waiting for " << describe(before) << " to come back with " << describeAddressing(request)
                << ", for " << session.restartPatience.count() << " seconds at most ...\n"
                << std::flush;
    const auto end = Clock::now() + session.restartPatience;
    bool wasAway = false;
    std::string shown;
    for (int alike = 0;;) {
        const QVector<QDevice> cameras = findCameras();
        const QDevice* const found = cameraByMac(cameras, request.macAddress);
        auto camera = found ? std::optional(*found) : std::nullopt;
        const std::string state = stateOf(camera, request);
        if (state != shown)
            session.err << state << '\n' << std::flush;
        alike = state == shown ? alike + 1 : 1;
        shown = state;
        wasAway = wasAway || !camera;

        const bool isAsAsked = camera && addressingDifference(*camera, request).empty();
        const bool isWhereItWas =
            camera && mayLookForAddress(*camera, request) && camera->m_strIpAddress == before.m_strIpAddress;
        const bool mayBeUnmoved = isWhereItWas && !(isAsAsked && wasAway);
        const bool isConvincing = alike >= (mayBeUnmoved ? LooksWhereItWas : AgreeingLooks) &&
                                  (isAsAsked || (mayBeUnmoved && mayRestartAgain));
        if (isConvincing || (!isAsAsked && Clock::now() >= end))
            return {std::move(camera), wasAway};
        if (interruption.arrives(Pause))
            throw Failure(ExitStatus::Interrupted, describe(before) + interrupted(camera, request));
    }
}

} // namespace cli
