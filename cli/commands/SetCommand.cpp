// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/AddressConflict.h"
#include "cli/cameras/CameraTable.h"
#include "cli/cameras/Cameras.h"
#include "cli/commands/Command.h"
#include "cli/commands/SaveVerdict.h"
#include "cli/commands/SetRequest.h"
#include "cli/session/Interruption.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "device/CameraAddress.h"

#include <ostream>

namespace cli {
namespace {

/// Why a camera that has the type that was asked for, DHCP or link-local, has to start anew to get an
/// address: its address is none of that kind, as after a change that was interrupted before the restart.
/// Empty when it has not. Asks the camera for its stored address.
std::string reasonToRestart(const Camera& camera, const SetRequest& request)
{
    if (!request.type || request.isStatic() || camera.type != request.type)
        return {};
    if (request.type == IpConfigType::LinkLocal)
        return camera.settings.address.isLinkLocal()
                   ? ""
                   : "has no link-local address, as if it had not restarted since it was set to LLA";
    if (camera.settings.address.isLinkLocal())
        return "has a link-local address, as no DHCP server answered it";
    const auto stored = ReadStoredAddress(camera.device);
    return stored && stored->address == camera.settings.address
               ? "still has its stored address, as if it had not restarted since it was set to DHCP"
               : "";
}

/// Whether there is anything to write to the camera; says what there is to say of one that reports all that
/// was asked. The worker restarts a camera whose type changes. So one that has to restart though its type is
/// the right one loses it here.
bool prepare(Camera& camera, const SetRequest& request, std::ostream& err)
{
    const std::string reason = reasonToRestart(camera, request);
    if (!reason.empty()) {
        err << "note: " << describe(camera) << ' ' << reason
            << "; its IP configuration is written again, and it restarts\n";
        camera.type.reset();
        return true;
    }
    if (!differences(camera, request).empty())
        return true;
    err << "note: " << describe(camera) << " reports all of this already; "
        << (request.isStatic() ? "it is sent again, so that it is sure to last\n"
                               : "nothing was sent to it\n");
    return request.isStatic();
}

/// What the user should know of a change that is about to be made.
void announce(const Camera& camera, const SetRequest& request, std::ostream& err)
{
    if (request.type)
        err << describe(camera) << ": " << describeAddressing(camera) << " -> " << describeAddressing(request)
            << '\n';
    if (request.userName)
        err << describe(camera) << ": user name \"" << displayText(camera.device.m_strUserDefinedName)
            << "\" -> \"" << displayText(*request.userName) << "\"\n";
    if (request.isStatic())
        noteOutsideAdapterSubnet(camera, request.settings.address, err);
    err << "Writing the settings, which takes some seconds ...\n" << std::flush;
}

/// Writes what is asked and waits for the camera to show it. Throws a Failure when it is interrupted.
Change change(FoundCamera found, const SetRequest& request, bool mayRestartAgain, Interruption& interruption,
              const Session& session)
{
    const Camera sent = found.camera;
    const SaveOutcome outcome = save(std::move(found), request, interruption, session);
    if (outcome.restarts)
        return {sent, outcome, awaitRestart(sent, request, mayRestartAgain, interruption, session)};
    const auto isAsAsked = [&request](const Camera& each) { return differences(each, request).empty(); };
    return {sent, outcome, {awaitChange(request.mac, isAsAsked), false}};
}

/// Whether a camera that was told to restart to get another address still has the one of before, and the
/// reason to restart.
bool mayHaveMissedRestart(const Change& change, const SetRequest& request)
{
    const std::optional<Camera>& after = change.seen.last;
    return change.outcome.restarts && after && after->settings.address == change.sent.settings.address &&
           !reasonToRestart(*after, request).empty();
}

/// Gives a camera that may have missed its restart a second chance.
void restartMissed(Change& done, const SetRequest& request, Interruption& interruption,
                   const Session& session)
{
    // A server may have given a camera that was away the address of before.
    if ((request.type == IpConfigType::Dhcp && done.seen.wasAway) || !mayHaveMissedRestart(done, request))
        return;
    FoundCamera found = findCamera(request.mac, session);
    if (prepare(found.camera, request, session.err))
        done = change(std::move(found), request, false, interruption, session);
    else
        done.seen.last = found.camera;
}

/// What a camera that was set to DHCP does not tell of its address.
void noteDoubts(const Change& done, const SetRequest& request, std::ostream& err)
{
    if (request.type != IpConfigType::Dhcp)
        return;
    if (done.seen.last->settings.address.isLinkLocal())
        err << "note: no DHCP server gave the camera an address, so it took a link-local one\n";
    else if (mayHaveMissedRestart(done, request))
        err << "note: the camera has the same address as before, which it has stored; if the DHCP server is "
               "not to give it that one, run the command again, which restarts the camera\n";
}

void set(const Arguments& arguments, Session& session)
{
    const SetRequest request = parseSetRequest(arguments);

    FoundCamera found = findCamera(request.mac, session);
    const Camera before = found.camera;
    const std::vector<Camera> cameras = found.all;
    if (request.isStatic())
        requireUnusedAddress(found, request.settings.address, session);
    if (!prepare(found.camera, request, session.err))
        return reportChange(before, before, session);
    announce(before, request, session.err);

    Interruption interruption;
    Change done = change(std::move(found), request, true, interruption, session);
    restartMissed(done, request, interruption, session);
    requireDone(done, request, cameras);
    noteDoubts(done, request, session.err);
    reportChange(before, *done.seen.last, session);
}

} // namespace

Command setCommand()
{
    return {
        "set",
        "MAC [--static --ip ADDRESS --mask MASK [--gateway GATEWAY] | --dhcp | --lla] [--user-id NAME]",
        "changes for good how a camera gets its address, and its name",
        R"(Changes how the camera with this MAC address gets its address, or its user-defined name, or both, so that it
lasts. A camera whose IP configuration changes restarts, which takes up to a minute; with --dhcp it may look for a
server for 15 seconds, with --lla for a free address for 40. Done when the camera is found again with what was asked.
The address of --static must be free: no other camera's, not this computer's, and nobody may answer a ping or ARP to
it, which takes six seconds to find out.

  MAC                  as the list command shows it; colons, dashes or nothing between the pairs
  --static             the camera keeps the address of --ip
  --ip ADDRESS         the new address
  --mask MASK          the new subnet mask
  --gateway GATEWAY    the new default gateway; 0.0.0.0, none, when not given
  --dhcp               a DHCP server gives the camera its address
  --lla                the camera takes a free link-local address, 169.254.x.x
  --user-id NAME       the new name, of at most 15 bytes in UTF-8; --user-id= for none
)",
        {{"MAC"},
         {{"--static", {}},
          {"--ip", "ADDRESS"},
          {"--mask", "MASK"},
          {"--gateway", "GATEWAY"},
          {"--dhcp", {}},
          {"--lla", {}},
          {"--user-id", "NAME"}}},
        set,
    };
}

} // namespace cli
