// SPDX-License-Identifier: Apache-2.0
#include "cli/StoredSettings.h"

#include "cli/Cameras.h"
#include "cli/IpSettings.h"
#include "cli/SetRequest.h"
#include "device/CameraAddress.h"

namespace cli {

std::string reasonToRestart(const QDevice& camera, const SetRequest& request)
{
    if (!request.addressing || !mayLookForAddress(camera, request))
        return {};
    if (request.addressing == SetRequest::Addressing::LinkLocal)
        return isLinkLocal(camera)
                   ? ""
                   : "has no link-local address, as if it had not restarted since it was set to LLA";
    if (isLinkLocal(camera))
        return "has a link-local address, as no DHCP server answered it";
    const auto stored = ReadStoredAddress(camera);
    return stored && stored->nIp == settingsOf(camera).address
               ? "still has its stored address, as if it had not restarted since it was set to DHCP"
               : "";
}

std::string describeStored(const QDevice& camera)
{
    const auto stored = ReadStoredAddress(camera);
    if (!stored)
        return {};
    return "its stored address is " +
           describe(IpSettings{stored->nIp, stored->nSubnetMask, stored->nGateway});
}

std::string describeStoredOrDoubt(const QDevice& camera)
{
    const std::string stored = describeStored(camera);
    return stored.empty() ? "it may have stored some of the old settings and some of the new" : stored;
}

} // namespace cli
