// SPDX-License-Identifier: Apache-2.0
// A camera's addresses: the one that it has, and the one that it starts with.
#include "sdk/Calls.h"
#include "sdk/addressing/ForceIpExchange.h"
#include "sdk/addressing/LastingAddress.h"
#include "sdk/camera/Identity.h"
#include "sdk/discovery/Record.h"
#include "sdk/discovery/RecordTable.h"

using namespace sdk;

int RZ_GIGE_ForceIpEx(void* handle, unsigned ip, unsigned subnetMask, unsigned gateway)
{
    return withCamera(handle, [=](CameraHandle& camera) {
        const base::IpSettings wanted{base::Ipv4(ip), base::Ipv4(subnetMask), base::Ipv4(gateway)};
        if (!wanted.address.canBeHost())
            return RZ_ERROR_PARAMETER;
        // A camera under control ignores FORCEIP.
        HandleTable::instance().closeCamera(camera.mac());
        const RZ_GIGE_DEVICE_INFO& info = camera.info().stGigEInfo;
        auto network = networkOn(adaptersTowards(camera.info()));
        const RZ_ERROR result = forceIp(*network, {camera.mac(), wanted}, ipSettingsOf(camera.info()));
        if (result != RZ_OK)
            return result;
        ForcedAddresses::instance().keep(camera.mac(), wanted, network->now());
        makeAddressLast(std::move(network), camera.mac(), wanted, info.nIpConfigOptions,
                        info.nIpConfigCurrent, ForcedAddresses::instance());
        return RZ_OK;
    });
}

bool RZ_GIGE_IsForcedIpWaiting(const RZ_CC_DEVICE_INFO* info)
{
    return info && guarded(false, [info] {
               return ForcedAddresses::instance().isWaiting(macOf(RecordTable::instance().copyOf(*info)));
           });
}

int RZ_GIGE_GetPersistentIp(void* handle, unsigned* ip, unsigned* subnetMask, unsigned* gateway)
{
    if (!ip || !subnetMask || !gateway)
        return RZ_ERROR_PARAMETER;
    return withCamera(handle, [=](CameraHandle& camera) {
        base::IpSettings stored;
        if (camera.isOpen()) {
            const auto session = camera.session();
            stored = storedAddress(session->channel(), session->interface());
        } else {
            ControlChannel channel(networkOn(adaptersTowards(camera.info()), camera.address()),
                                   camera.address());
            stored = storedAddress(channel, interfaceWith(channel, camera.mac()));
        }
        *ip = stored.address.number();
        *subnetMask = stored.mask.number();
        *gateway = stored.gateway.number();
        return RZ_OK;
    });
}
