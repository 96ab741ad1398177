// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"
#include "cli/cameras/AddressConflict.h"
#include "cli/cameras/CameraTable.h"
#include "cli/cameras/Cameras.h"
#include "cli/cameras/ListenerHint.h"
#include "cli/commands/Command.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "device/CameraAddress.h"

#include <ostream>

namespace cli {
namespace {

/// What failed, unless the SDK has more to say of it, and what may be done.
struct Sentence
{
    std::string what;
    std::string advice;
};

Sentence sentenceFor(AddressError error)
{
    switch (error) {
    case AddressError::BadAddress:
        return {"the SDK takes no such address", "check address, mask and gateway"};
    case AddressError::Network:
        return {"the network adapter that heard the camera cannot be used",
                "check that it is up and has an address"};
    case AddressError::NoAnswer:
        return {"the camera did not answer", "check its cable and power, and try again"};
    case AddressError::InUse:
        return {"another application controls the camera", "close that application and try again"};
    case AddressError::Refused:
        return {"the camera answered with an error", "switch it off and on, and try again"};
    case AddressError::NotStored:
        return {"the camera did not store the address", "try again"};
    case AddressError::OtherCamera:
        return {"another camera answers at its address", "give one of the two another address first"};
    default:
        return {"the SDK failed (error " + std::to_string(static_cast<int>(error)) + ")", "try again"};
    }
}

std::string reasonFor(AddressError error, const Camera& camera, const std::vector<Camera>& cameras)
{
    const auto [what, advice] = sentenceFor(error);
    const std::string known = displayText(GetCameraError(camera.device));
    return withModels((known.empty() ? what : known) + "; " + advice, cameras);
}

/// What the user should know of a change that is about to be made.
void announce(const Camera& camera, const base::IpSettings& wanted, std::ostream& err)
{
    err << describe(camera) << ": " << describe(camera.settings) << " -> " << describe(wanted) << '\n';
    noteOutsideAdapterSubnet(camera, wanted.address, err);
    if (!camera.isStatic())
        err << "note: the address holds until the camera's next reset, as its IP configuration is "
            << displayText(camera.device.m_strIpConfigType) << '\n';
    err << std::flush;
}

/// What a failed change may have left in a camera that starts with its stored address.
std::string storedAfterFailure(const Camera& camera)
{
    return camera.isStatic() ? "; " + describeStoredOrDoubt(camera) : std::string();
}

void requireAddress(const Camera& after, const base::IpSettings& wanted)
{
    if (after.settings.address != wanted.address)
        throw Failure(ExitStatus::Failed, describe(after) +
                                              " took the address but reports another: asked for " +
                                              describe(wanted) + "; it reports " + describe(after.settings) +
                                              storedAfterFailure(after));
}

/// Has an address stored that could not be when it was forced.
void requireStored(const Camera& after, const std::vector<Camera>& cameras)
{
    if (!IsForcedAddressWaiting(after.device))
        return;
    const AddressError error = StoreForcedAddress(after.device);
    if (error == AddressError::None)
        return;
    // Before the camera is asked for anything else, which may fail for another reason.
    const std::string reason = reasonFor(error, after, cameras);
    throw Failure(ExitStatus::Failed,
                  describe(after) +
                      " took the address but has not stored it, or not all of it, and starts with what it "
                      "has stored after its next reset: " +
                      reason + storedAfterFailure(after));
}

void noteOtherMaskOrGateway(const base::IpSettings& reported, const base::IpSettings& wanted,
                            std::ostream& err)
{
    if (reported.mask != wanted.mask)
        err << "note: the camera uses the mask " << reported.mask << " instead of " << wanted.mask << '\n';
    if (reported.gateway != wanted.gateway)
        err << "note: the camera uses the gateway " << reported.gateway << " instead of " << wanted.gateway
            << '\n';
}

void force(const Arguments& arguments, Session& session)
{
    const base::MacAddress mac = parseMacAddress(arguments.operands[0]);
    const base::IpSettings wanted = parseIpSettings(arguments);

    const FoundCamera found = findCamera(mac, session);
    const Camera& camera = found.camera;
    requireUnusedAddress(found, wanted.address, session);

    announce(camera, wanted, session.err);
    if (const AddressError error = ForceAddress(camera.device, wanted); error != AddressError::None)
        throw Failure(ExitStatus::Failed, describe(camera) + ": " + reasonFor(error, camera, found.all));

    const std::optional<Camera> after =
        awaitChange(mac, [&wanted](const Camera& each) { return each.settings == wanted; });
    if (!after) {
        const std::string doubt = listenerDoubt(GetListenerReport());
        throw Failure(ExitStatus::Failed, describe(camera) + " took the address and was not heard again" +
                                              (doubt.empty() ? "" : "; " + doubt) +
                                              storedAfterFailure(camera));
    }
    requireAddress(*after, wanted);
    requireStored(*after, found.all);
    noteOtherMaskOrGateway(after->settings, wanted, session.err);
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
