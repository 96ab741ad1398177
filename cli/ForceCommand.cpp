// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"
#include "cli/Cameras.h"
#include "cli/ChangeReport.h"
#include "cli/Command.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/IpSettings.h"
#include "cli/MacAddress.h"
#include "cli/Session.h"
#include "cli/StoredSettings.h"
#include "device/CameraAddress.h"
#include "device/QDeviceManager.h"

#include <ostream>

namespace cli {
namespace {

/// What the user should know of a change that is about to be made.
void announce(const QDevice& camera, const IpSettings& wanted, std::ostream& err)
{
    err << describe(camera) << ": " << describe(settingsOf(camera)) << " -> " << describe(wanted) << '\n';
    noteOutsideAdapterSubnet(camera, wanted.address, err);
    if (!isStatic(camera))
        err << "note: the address holds until the camera's next reset, as its IP configuration is "
            << displayText(camera.m_strIpConfigType) << '\n';
    err << std::flush;
}

/// What a failed change may have left in a camera that starts with its stored address.
std::string storedAfterFailure(const QDevice& camera)
{
    return isStatic(camera) ? "; " + describeStoredOrDoubt(camera) : std::string();
}

void requireAddress(const QDevice& after, const IpSettings& wanted)
{
    if (settingsOf(after).address != wanted.address)
        throw Failure(ExitStatus::Failed, describe(after) +
                                              " took the address but reports another: asked for " +
                                              describe(wanted) + "; it reports " +
                                              describe(settingsOf(after)) + storedAfterFailure(after));
}

/// Has an address stored that could not be when it was forced.
void requireStored(const QDevice& after, const QVector<QDevice>& cameras)
{
    if (!IsForcedAddressWaiting(after))
        return;
    const QString failure = StoreForcedAddress(after);
    if (!failure.isEmpty())
        throw Failure(
            ExitStatus::Failed,
            describe(after) +
                " took the address but has not stored it, or not all of it, and starts with what it "
                "has stored after its next reset: " +
                withModels(displayText(failure), cameras) + storedAfterFailure(after));
}

void noteOtherMaskOrGateway(const IpSettings& reported, const IpSettings& wanted, std::ostream& err)
{
    if (reported.mask != wanted.mask)
        err << "note: the camera uses the mask " << dotted(reported.mask).toStdString() << " instead of "
            << dotted(wanted.mask).toStdString() << '\n';
    if (reported.gateway != wanted.gateway)
        err << "note: the camera uses the gateway " << dotted(reported.gateway).toStdString()
            << " instead of " << dotted(wanted.gateway).toStdString() << '\n';
}

void force(const Arguments& arguments, Session& session)
{
    const QString macAddress = parseMacAddress(arguments.operands[0]);
    const IpSettings wanted =
        parseIpSettings(arguments.options.at("--ip"), arguments.options.at("--mask"),
                        arguments.has("--gateway") ? arguments.options.at("--gateway") : "0.0.0.0");

    QDeviceManager manager;
    const QVector<QDevice> cameras = findCamerasWith(macAddress, manager, session);
    const QDevice& camera = *cameraByMac(cameras, macAddress);
    requireUnusedAddress(camera, cameras, wanted.address, session);

    announce(camera, wanted, session.err);
    const QString failure = ForceAddress(camera, wanted.address, wanted.mask, wanted.gateway);
    if (!failure.isEmpty())
        throw Failure(ExitStatus::Failed,
                      describe(camera) + ": " + withModels(displayText(failure), cameras));

    const std::optional<QDevice> after =
        awaitChange(macAddress, [&wanted](const QDevice& each) { return reports(each, wanted); });
    if (!after)
        throw Failure(ExitStatus::Failed,
                      describe(camera) + " took the address and was not heard again" +
                          (session.hasRawSockets
                               ? std::string()
                               : "; without CAP_NET_RAW a camera outside the subnet may not be heard") +
                          storedAfterFailure(camera));
    requireAddress(*after, wanted);
    requireStored(*after, cameras);
    noteOtherMaskOrGateway(settingsOf(*after), wanted, session.err);
    reportChange(camera, *after, session);
}

} // namespace

Command forceCommand()
{
    return {
        "force",
        "MAC --ip ADDRESS --mask MASK [--gateway GATEWAY]",
        "gives a camera an address, even one that is out of reach",
        R"(Gives the camera with this MAC address an IPv4 address, also when it is in another subnet and cannot be reached
otherwise. The address must be free: no other camera's, not this computer's, and nobody may answer a ping or ARP to
it, which takes six seconds to find out. Done when the camera is found again with the address, which holds until its
next reset; that of a camera with a static address stays, and must have been stored.

  MAC                  as the list command shows it; colons, dashes or nothing between the pairs
  --ip ADDRESS         the new address
  --mask MASK          the new subnet mask
  --gateway GATEWAY    the new default gateway; 0.0.0.0, none, when not given
)",
        {{"MAC"}, {{"--ip", "ADDRESS", true}, {"--mask", "MASK", true}, {"--gateway", "GATEWAY"}}},
        force,
    };
}

} // namespace cli
