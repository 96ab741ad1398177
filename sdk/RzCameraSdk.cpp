// SPDX-License-Identifier: Apache-2.0
#include "sdk/RzCameraSdk.h"

#include "sdk/AccessCheck.h"
#include "sdk/CancellationHold.h"
#include "sdk/Enumeration.h"
#include "sdk/ForceIpExchange.h"
#include "sdk/HandleTable.h"
#include "sdk/LinuxNetwork.h"
#include "sdk/RecordTable.h"

#include <algorithm>

using namespace sdk;

namespace {

/// The door of every call: no cancellation on the way, and no exception out of a C interface.
template <typename Result, typename Call>
Result guarded(Result onException, Call call) noexcept
{
    const CancellationHold hold;
    try {
        return call();
    } catch (...) { // No forced unwinding comes this way while cancellation is held off.
        return onException;
    }
}

/// The adapter that heard the camera, alone; empty when it is gone.
std::vector<Adapter> adapterOf(const RZ_GIGE_DEVICE_INFO& camera)
{
    const auto adapters = hostAdapters();
    const auto found = std::find_if(adapters.begin(), adapters.end(), [&camera](const Adapter& adapter) {
        if (camera.nNetExportIndex != 0)
            return adapter.index == camera.nNetExportIndex;
        return std::any_of(
            adapter.addresses.begin(), adapter.addresses.end(),
            [&camera](const AdapterAddress& own) { return own.address == camera.nNetExportIp; });
    });
    if (found == adapters.end())
        return {};
    return {*found};
}

bool isAccessibleNow(const RZ_GIGE_DEVICE_INFO& camera)
{
    LinuxNetwork network(adapterOf(camera));
    if (network.adapters().empty())
        return false;
    RequestIds ids;
    AccessCheck check(network, ids);
    check.ask(0, camera.nNetExportIp, camera.nDeviceIp);
    while (check.isPending()) {
        if (const auto datagram = network.receive(check.nextStep()))
            if (const auto acknowledge = gvcp::parseAcknowledge(datagram->payload))
                check.take(*datagram, *acknowledge);
        check.proceed();
    }
    return check.answer(0, camera.nDeviceIp) == AccessCheck::Answer::Accessible;
}

/// Not 0.x, not loopback, not multicast or above.
bool canBeCamera(gvcp::Ipv4 address)
{
    const auto first = address >> 24;
    return first >= 1 && first <= 223 && first != 127;
}

} // namespace

unsigned RZ_CC_EnumerateTls(void)
{
    return RZ_TL_GIGE;
}

int RZ_CC_EnumDevices(unsigned tlMask, RZ_CC_DEVICE_INFO_LIST* list)
{
    if (!list || (tlMask & RZ_TL_GIGE) == 0)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [list] {
        const auto adapters = hostAdapters();
        LinuxNetwork network(adapters);
        if (network.adapters().empty() && !adapters.empty())
            return RZ_ERROR_NETWORK;
        RecordTable& records = RecordTable::instance();
        const auto cameras =
            enumerateCameras(network, [&records](const gvcp::MacAddress& mac, const Adapter& adapter) {
                return records.knows(mac, adapter.index);
            });
        records.publish(cameras, network.adapters(), network.now(), *list);
        return RZ_OK;
    });
}

bool RZ_CC_IsDeviceAccessible(const RZ_CC_DEVICE_INFO* info, unsigned accessMode)
{
    if (!info || accessMode != RZ_ACCESS_EXCLUSIVE)
        return false;
    return guarded(false, [info] {
        const auto recent = RecordTable::instance().recentAccess(*info, Clock::now());
        return recent ? *recent : isAccessibleNow(info->stGigEInfo);
    });
}

int RZ_CC_CreateHandle(void** handle, const RZ_CC_DEVICE_INFO* info)
{
    if (!handle || !info)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        *handle = HandleTable::instance().create(*info);
        return RZ_OK;
    });
}

int RZ_CC_DestroyHandle(void* handle)
{
    return guarded<int>(RZ_ERROR_INTERNAL, [handle] {
        return HandleTable::instance().destroy(handle) ? RZ_OK : RZ_ERROR_HANDLE;
    });
}

int RZ_GIGE_ForceIpEx(void* handle, unsigned ip, unsigned subnetMask, unsigned gateway)
{
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        const auto info = HandleTable::instance().find(handle);
        if (!info)
            return RZ_ERROR_HANDLE;
        if (!canBeCamera(ip))
            return RZ_ERROR_PARAMETER;
        const RZ_GIGE_DEVICE_INFO& camera = info->stGigEInfo;
        LinuxNetwork network(adapterOf(camera));
        const auto mac = macOf(*info);
        return forceIp(network, {mac, ip, subnetMask, gateway},
                       {mac, camera.nDeviceIp, camera.nDeviceSubnetMask, camera.nDeviceGateway});
    });
}
