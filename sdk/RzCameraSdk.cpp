// SPDX-License-Identifier: Apache-2.0
#include "sdk/RzCameraSdk.h"

#include "gvcp/Registers.h"
#include "sdk/AccessCheck.h"
#include "sdk/CameraError.h"
#include "sdk/CancellationHold.h"
#include "sdk/Description.h"
#include "sdk/DescriptionCompletion.h"
#include "sdk/Enumeration.h"
#include "sdk/ForceIpExchange.h"
#include "sdk/HandleTable.h"
#include "sdk/LastingAddress.h"
#include "sdk/LinuxNetwork.h"
#include "sdk/RecordTable.h"
#include "sdk/ThreadEnd.h"

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

/// Passes the call the camera that the handle stands for.
template <typename Call>
int withCamera(void* handle, Call call) noexcept
{
    return guarded<int>(RZ_ERROR_INTERNAL, [&]() -> int {
        const auto camera = HandleTable::instance().find(handle);
        if (!camera)
            return RZ_ERROR_HANDLE;
        try {
            return call(*camera);
        } catch (const CameraError& error) {
            return error.code();
        }
    });
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

bool hasUserName(ControlChannel& channel)
{
    return (channel.findRegister(gvcp::reg::GvcpCapability).value_or(0) &
            gvcp::Capability::UserDefinedName) != 0;
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
        const RecordTable& records = RecordTable::instance();
        const RZ_CC_DEVICE_INFO camera = records.copyOf(*info);
        const auto recent = records.recentAccess(camera, Clock::now());
        return recent ? *recent : isAccessibleNow(camera.stGigEInfo);
    });
}

int RZ_CC_CreateHandle(void** handle, const RZ_CC_DEVICE_INFO* info)
{
    if (!handle || !info)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        *handle = HandleTable::instance().create(RecordTable::instance().copyOf(*info));
        return RZ_OK;
    });
}

int RZ_CC_DestroyHandle(void* handle)
{
    return guarded<int>(RZ_ERROR_INTERNAL, [handle] {
        return HandleTable::instance().destroy(handle) ? RZ_OK : RZ_ERROR_HANDLE;
    });
}

int RZ_CC_OpenDevice(void* handle, unsigned accessMode, unsigned short switchoverKey)
{
    if (accessMode != RZ_ACCESS_EXCLUSIVE || switchoverKey != 0)
        return RZ_ERROR_PARAMETER;
    return withCamera(handle, [](CameraHandle& camera) {
        const RZ_GIGE_DEVICE_INFO& info = camera.info().stGigEInfo;
        const auto adapters = adapterOf(info);
        if (!canBeCamera(info.nDeviceIp) ||
            std::any_of(adapters.begin(), adapters.end(),
                        [&info](const Adapter& each) { return each.isBroadcast(info.nDeviceIp); }))
            return RZ_ERROR_PARAMETER;
        HandleTable::instance().closeCamera(camera.mac());
        closeCamerasWhenThisThreadEnds();
        camera.open(std::make_unique<LinuxNetwork>(adapters, info.nDeviceIp));
        return RZ_OK;
    });
}

int RZ_XML_GetGenICamXML(void* handle, unsigned char* buffer, unsigned bufferSize, unsigned* dataLength)
{
    if (!buffer || !dataLength)
        return RZ_ERROR_PARAMETER;
    return withCamera(handle, [=](CameraHandle& camera) {
        *dataLength = 0;
        const auto session = camera.session();
        const auto file = completedDescription(fetchDescription(session->channel()),
                                               hasUserName(session->channel()), bufferSize);
        *dataLength = static_cast<unsigned>(file.size());
        if (file.size() > bufferSize)
            return RZ_ERROR_BUFFER;
        std::copy(file.begin(), file.end(), buffer);
        return RZ_OK;
    });
}

void* RZ_CC_GetTlProxy(void* handle)
{
    return guarded<void*>(nullptr, [handle]() -> void* {
        const auto camera = HandleTable::instance().find(handle);
        return camera ? camera->port() : nullptr;
    });
}

int RZ_GIGE_ForceIpEx(void* handle, unsigned ip, unsigned subnetMask, unsigned gateway)
{
    return withCamera(handle, [=](CameraHandle& camera) {
        if (!canBeCamera(ip))
            return RZ_ERROR_PARAMETER;
        // A camera under control ignores FORCEIP.
        HandleTable::instance().closeCamera(camera.mac());
        const RZ_GIGE_DEVICE_INFO& info = camera.info().stGigEInfo;
        auto network = std::make_unique<LinuxNetwork>(adapterOf(info));
        const gvcp::ForceIp wanted{camera.mac(), ip, subnetMask, gateway};
        const RZ_ERROR result = forceIp(
            *network, wanted, {wanted.mac, info.nDeviceIp, info.nDeviceSubnetMask, info.nDeviceGateway});
        if (result != RZ_OK)
            return result;
        return makeAddressLast(std::move(network), wanted, info.nIpConfigOptions, info.nIpConfigCurrent,
                               ForcedAddresses::instance());
    });
}
