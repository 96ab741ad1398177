// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"
#include "cli/Cameras.h"
#include "cli/ChangeReport.h"
#include "cli/Command.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/Interruption.h"
#include "cli/Restart.h"
#include "cli/Save.h"
#include "cli/SaveVerdict.h"
#include "cli/Session.h"
#include "cli/SetRequest.h"
#include "cli/StoredSettings.h"
#include "device/QDeviceManager.h"

#include <ostream>

namespace cli {
namespace {

using Addressing = SetRequest::Addressing;

/// What the user should know of a change that is about to be made.
void announce(const QDevice& camera, const SetRequest& request, std::ostream& err)
{
    if (request.addressing)
        err << describe(camera) << ": " << describeAddressing(camera) << " -> " << describeAddressing(request)
            << '\n';
    if (request.userName)
        err << describe(camera) << ": user name \"" << displayText(camera.m_strUserDefinedName) << "\" -> \""
            << displayText(*request.userName) << "\"\n";
    if (request.addressing == Addressing::Static)
        noteOutsideAdapterSubnet(camera, request.settings.address, err);
    err << "Writing the settings, which takes some seconds ...\n" << std::flush;
}

/// The camera for the worker, which restarts one whose kind of address changes: one that has to restart for
/// another reason has none. Says what there is to say of one that reports all that was asked.
QDevice asFound(QDevice camera, const SetRequest& request, std::ostream& err)
{
    const std::string reason = reasonToRestart(camera, request);
    if (!reason.empty()) {
        err << "note: " << describe(camera) << ' ' << reason
            << "; its IP configuration is written again, and it restarts\n";
        camera.m_strIpConfigType.clear();
    } else if (differences(camera, request).empty()) {
        err << "note: " << describe(camera) << " reports all of this already; "
            << (request.addressing == Addressing::Static ? "it is sent again, so that it is sure to last\n"
                                                         : "nothing was sent to it\n");
    }
    return camera;
}

/// Whether there is nothing to do for the worker.
bool isSettled(const QDevice& found, const SetRequest& request)
{
    return request.addressing != Addressing::Static && differences(found, request).empty();
}

/// What an interruption while the settings were being written left in the camera.
std::string leftBehind(const SetRequest& request)
{
    std::string stored;
    if (request.addressing == Addressing::Static) {
        const QVector<QDevice> cameras = findCameras();
        if (const QDevice* const camera = cameraByMac(cameras, request.macAddress))
            stored = describeStored(*camera);
    }
    return stored.empty() ? " and may have the old ones, the new ones or some of each" : "; " + stored;
}

/// A change that was written, and what the camera reported then.
struct Change
{
    QDevice sent; ///< The camera as the worker got it.
    SaveOutcome outcome;
    std::optional<QDevice> after;
    bool wasAway; ///< Meanwhile, as a camera is that restarts.
};

/// Writes what is asked, to a camera that the manager lists, and waits for the camera to show it. Throws a
/// Failure when it is interrupted.
Change change(const QDevice& sent, std::unique_ptr<QDeviceManager> manager, const SetRequest& request,
              bool mayRestartAgain, Interruption& interruption, const Session& session)
{
    const SaveOutcome outcome = save(std::move(manager), sent, changed(sent, request), interruption, session);
    if (outcome.interrupted) {
        interruption.arrives({});
        throw Failure(ExitStatus::Interrupted,
                      describe(sent) +
                          ": interrupted while the settings were being written; the camera is given back" +
                          leftBehind(request));
    }
    if (outcome.restarts) {
        const auto [after, wasAway] = awaitRestart(sent, request, mayRestartAgain, interruption, session);
        return {sent, outcome, after, wasAway};
    }
    const auto isAsAsked = [&request](const QDevice& each) { return differences(each, request).empty(); };
    return {sent, outcome, awaitChange(request.macAddress, isAsAsked), false};
}

/// Whether a camera that was told to restart to get another address still has the one of before, and the
/// reason to restart.
bool mayHaveMissedRestart(const Change& change, const SetRequest& request)
{
    return change.outcome.restarts && change.after &&
           change.after->m_strIpAddress == change.sent.m_strIpAddress &&
           !reasonToRestart(*change.after, request).empty();
}

/// What a camera that was set to DHCP does not tell of its address.
void noteDoubts(const Change& done, const SetRequest& request, std::ostream& err)
{
    if (request.addressing != Addressing::Dhcp)
        return;
    if (isLinkLocal(*done.after))
        err << "note: no DHCP server gave the camera an address, so it took a link-local one\n";
    else if (mayHaveMissedRestart(done, request))
        err << "note: the camera has the same address as before, which it has stored; if the DHCP server is "
               "not to give it that one, run the command again, which restarts the camera\n";
}

void set(const Arguments& arguments, Session& session)
{
    const SetRequest request = parseSetRequest(arguments);

    auto manager = std::make_unique<QDeviceManager>();
    const QVector<QDevice> cameras = findCamerasWith(request.macAddress, *manager, session);
    const QDevice& before = *cameraByMac(cameras, request.macAddress);
    if (request.addressing == Addressing::Static)
        requireUnusedAddress(before, cameras, request.settings.address, session);
    const QDevice found = asFound(before, request, session.err);
    if (isSettled(found, request))
        return reportChange(before, before, session);
    announce(before, request, session.err);

    Interruption interruption;
    Change done = change(found, std::move(manager), request, true, interruption, session);
    // A server may give a camera that was away the address of before.
    const bool isDoubtful = request.addressing == Addressing::Dhcp && done.wasAway;
    if (!isDoubtful && mayHaveMissedRestart(done, request)) {
        manager = std::make_unique<QDeviceManager>();
        const QVector<QDevice> now = findCamerasWith(request.macAddress, *manager, session);
        const QDevice again = asFound(*cameraByMac(now, request.macAddress), request, session.err);
        if (isSettled(again, request))
            done.after = again;
        else
            done = change(again, std::move(manager), request, false, interruption, session);
    }
    requireDone(done.sent, done.after, request, done.outcome, cameras, session);
    noteDoubts(done, request, session.err);
    reportChange(before, *done.after, session);
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
