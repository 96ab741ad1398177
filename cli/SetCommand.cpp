// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"
#include "cli/Cameras.h"
#include "cli/Command.h"
#include "cli/DeviceTable.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/Interruption.h"
#include "cli/Restart.h"
#include "cli/Save.h"
#include "cli/Session.h"
#include "cli/SetRequest.h"
#include "device/QDeviceManager.h"

#include <QObject>

#include <cctype>
#include <ostream>

namespace cli {
namespace {

using Addressing = SetRequest::Addressing;

/// What the camera reports other than asked; empty when nothing.
std::string differences(const QDevice& camera, const SetRequest& request)
{
    const std::string addressing = addressingDifference(camera, request);
    const std::string name = nameDifference(camera, request);
    return addressing + (addressing.empty() || name.empty() ? "" : "; ") + name;
}

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

/// Why a save that the camera does not restart after may have come to nothing.
std::string likelyCause(const QDevice& before, const QDevice& after, const SetRequest& request,
                        const SaveOutcome& outcome)
{
    if (after.m_strStatus == QObject::tr("In Use"))
        return "; another application controls it";
    if (after.m_strStatus == QObject::tr("Unreachable"))
        return "; from another subnet than this computer's adapter it may not be able to answer, so give it "
               "an "
               "address of that subnet first";
    if (!outcome.failures.empty())
        return {}; // They say it.
    if (request.addressing && before.m_strIpConfigType == changed(before, request).m_strIpConfigType)
        return "; its IP configuration was the right one before, so it was not restarted";
    return "; it may lack a usable description of its features, or refuse the setting";
}

/// Adds a sentence, or part of one, to a text that may end in either.
void append(std::string& text, std::string more)
{
    if (text.empty()) {
        text = std::move(more);
    } else if (text.back() == '.') {
        more[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(more[0])));
        text += ' ' + more;
    } else {
        text += "; " + more;
    }
}

/// Throws unless the camera reports all that was asked, and nothing went wrong on the way.
void requireDone(const QDevice& before, const std::optional<QDevice>& after, const SetRequest& request,
                 const SaveOutcome& outcome, const Session& session)
{
    std::string text;
    for (const std::string& failure : outcome.failures)
        append(text, failure);
    if (!after) {
        append(text, "it was not heard again");
        if (!session.hasRawSockets)
            text += "; without CAP_NET_RAW a camera outside the subnet may not be heard";
    } else if (const std::string difference = differences(*after, request); !difference.empty()) {
        append(text, difference);
        if (!outcome.restarts)
            text += likelyCause(before, *after, request, outcome);
    }
    if (!text.empty())
        throw Failure(ExitStatus::Failed, describe(before) + ": " + text);
}

void set(const Arguments& arguments, Session& session)
{
    const SetRequest request = parseSetRequest(arguments);

    auto manager = std::make_unique<QDeviceManager>();
    const QVector<QDevice> cameras = findCamerasWith(request.macAddress, *manager, session);
    const QDevice& before = *cameraByMac(cameras, request.macAddress);
    if (request.addressing == Addressing::Static)
        requireUnusedAddress(before, cameras, request.settings.address, session);

    if (differences(before, request).empty()) {
        session.err << "note: " << describe(before) << " reports all of this already";
        // Whether a static address is also stored, or another will be back at the next reset, is not
        // reported.
        if (request.addressing != Addressing::Static) {
            session.err << "; nothing was sent to it\n";
            session.out << changeTable(before, before, session.coloured);
            return;
        }
        session.err << "; it is sent again, so that it is sure to last\n";
    }
    announce(before, request, session.err);

    Interruption interruption;
    const SaveOutcome outcome =
        save(std::move(manager), before, changed(before, request), interruption, session);
    if (outcome.interrupted) {
        interruption.arrives({});
        throw Failure(ExitStatus::Interrupted,
                      describe(before) +
                          ": interrupted while the settings were being written; the camera is given back and "
                          "may have the old ones, the new ones or some of each");
    }
    const std::optional<QDevice> after =
        outcome.restarts ? awaitRestart(before, request, interruption, session)
                         : awaitChange(request.macAddress, [&request](const QDevice& each) {
                               return differences(each, request).empty();
                           });
    requireDone(before, after, request, outcome, session);
    if (request.addressing == Addressing::Dhcp && isLinkLocal(*after))
        session.err << "note: no DHCP server gave the camera an address, so it took a link-local one\n";
    session.out << changeTable(before, *after, session.coloured);
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
The address of --static must be free: no other camera's, not this computer's, and nobody may answer a ping to it.

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
