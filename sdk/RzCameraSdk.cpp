// SPDX-License-Identifier: Apache-2.0
#include "sdk/RzCameraSdk.h"

#include "base/CancellationHold.h"
#include "gvcp/Registers.h"
#include "sdk/HandleTable.h"
#include "sdk/Reports.h"
#include "sdk/ThreadEnd.h"
#include "sdk/addressing/ForceIpExchange.h"
#include "sdk/addressing/LastingAddress.h"
#include "sdk/camera/Identity.h"
#include "sdk/description/Description.h"
#include "sdk/description/DescriptionCompletion.h"
#include "sdk/discovery/AccessCheck.h"
#include "sdk/discovery/Enumeration.h"
#include "sdk/discovery/RecordTable.h"
#include "sdk/network/CameraError.h"
#include "sdk/network/LinuxNetwork.h"

#include <algorithm>
#include <system_error>

using namespace sdk;

namespace {

/// The door of every call: no cancellation on the way, and no exception out of a C interface.
template <typename Result, typename Call>
Result guarded(Result onException, Call call) noexcept
{
    const base::CancellationHold hold;
    try {
        return call();
    } catch (...) { // No forced unwinding comes this way while cancellation is held off.
        return onException;
    }
}

/// Passes the call the camera that the handle stands for, and notes how it ended.
template <typename Call>
int withCamera(void* handle, Call call) noexcept
{
    return guarded<int>(RZ_ERROR_INTERNAL, [&]() -> int {
        const auto camera = HandleTable::instance().find(handle);
        if (!camera)
            return RZ_ERROR_HANDLE;
        try {
            const int result = call(*camera);
            Reports::instance().setFailure(camera->mac(), {});
            return result;
        } catch (const CameraError& error) {
            Reports::instance().setFailure(camera->mac(), error.what());
            return error.code();
        }
    });
}

int copyText(const std::string& text, char* buffer, unsigned bufferSize)
{
    if (!buffer || bufferSize == 0)
        return RZ_ERROR_PARAMETER;
    const std::size_t length = std::min<std::size_t>(text.size(), bufferSize - 1);
    std::copy_n(text.begin(), length, buffer);
    buffer[length] = '\0';
    return RZ_OK;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : "; ") + text;
    return all;
}

/// All adapters, first the one that heard the camera: commands go out on it, and answers may come in on any.
/// Throws CameraError when it is gone.
std::vector<Adapter> adaptersTowards(const RZ_GIGE_DEVICE_INFO& camera)
{
    auto adapters = hostAdapters();
    const auto found = std::find_if(adapters.begin(), adapters.end(), [&camera](const Adapter& adapter) {
        if (camera.nNetExportIndex != 0)
            return adapter.index == camera.nNetExportIndex;
        return std::any_of(
            adapter.addresses.begin(), adapter.addresses.end(),
            [&camera](const AdapterAddress& own) { return own.address.number() == camera.nNetExportIp; });
    });
    if (found == adapters.end())
        throw CameraError(RZ_ERROR_NETWORK, "the adapter that heard it is gone");
    std::rotate(adapters.begin(), found, found + 1);
    return adapters;
}

/// Throws CameraError when the first of the adapters cannot be used.
std::unique_ptr<Network> networkOn(const std::vector<Adapter>& adapters,
                                   std::optional<base::Ipv4> onlyCamera = std::nullopt)
{
    auto network = std::make_unique<LinuxNetwork>(adapters, onlyCamera);
    if (network->adapters().empty() || network->adapters().front().index != adapters.front().index)
        throw CameraError(RZ_ERROR_NETWORK, "its adapter cannot be used: " + joined(network->failures()));
    return network;
}

/// Not 0.x, not loopback, not multicast or above.
bool canBeCamera(base::Ipv4 address)
{
    const auto first = address.firstOctet();
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
    return guarded<int>(RZ_ERROR_INTERNAL, [list]() -> int {
        try {
            const auto adapters = hostAdapters();
            LinuxNetwork network(adapters);
            RecordTable& records = RecordTable::instance();
            auto found =
                enumerateCameras(network, [&records](const base::MacAddress& mac, const Adapter& adapter) {
                    return records.knows(mac, adapter.index);
                });
            auto failures = network.failures();
            std::move(found.failures.begin(), found.failures.end(), std::back_inserter(failures));
            const bool hasSearched = failures.size() < adapters.size() || adapters.empty();
            const unsigned unlisted =
                hasSearched ? records.publish(found.cameras, network.adapters(), network.now(), *list) : 0;
            Reports::instance().setEnumeration({unlisted, joined(failures)});
            return hasSearched ? RZ_OK : RZ_ERROR_NETWORK;
        } catch (const std::system_error& error) {
            Reports::instance().setEnumeration({0, error.what()});
            return RZ_ERROR_NETWORK;
        }
    });
}

int RZ_CC_GetEnumReport(unsigned* unlisted, char* buffer, unsigned bufferSize)
{
    if (!unlisted)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        const EnumReport report = Reports::instance().enumeration();
        *unlisted = report.unlisted;
        return copyText(report.notSearched, buffer, bufferSize);
    });
}

int RZ_CC_ExpectDevice(unsigned macHigh, unsigned macLow)
{
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        RZ_CC_DEVICE_INFO info{};
        info.nMacHigh = macHigh;
        info.nMacLow = macLow;
        RecordTable::instance().expect(macOf(info));
        return RZ_OK;
    });
}

int RZ_CC_GetErrorText(const RZ_CC_DEVICE_INFO* info, char* buffer, unsigned bufferSize)
{
    if (!info)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        const auto mac = macOf(RecordTable::instance().copyOf(*info));
        return copyText(Reports::instance().failureOf(mac), buffer, bufferSize);
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
        if (recent)
            return *recent;
        const auto network = networkOn(adaptersTowards(camera.stGigEInfo));
        return isAccessible(*network, base::Ipv4(camera.stGigEInfo.nNetExportIp), addressOf(camera));
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
        const base::Ipv4 address = addressOf(camera.info());
        if (!canBeCamera(address))
            return RZ_ERROR_PARAMETER;
        const auto adapters = adaptersTowards(camera.info().stGigEInfo);
        if (adapters.front().isBroadcast(address))
            return RZ_ERROR_PARAMETER;
        HandleTable::instance().closeCamera(camera.mac());
        closeCamerasWhenThisThreadEnds();
        camera.open(networkOn(adapters, address));
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
        const auto file =
            completedDescription(fetchDescription(session->channel()), hasUserName(session->channel()),
                                 session->interface(), bufferSize);
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
        const base::IpSettings wanted{base::Ipv4(ip), base::Ipv4(subnetMask), base::Ipv4(gateway)};
        if (!canBeCamera(wanted.address))
            return RZ_ERROR_PARAMETER;
        // A camera under control ignores FORCEIP.
        HandleTable::instance().closeCamera(camera.mac());
        const RZ_GIGE_DEVICE_INFO& info = camera.info().stGigEInfo;
        auto network = networkOn(adaptersTowards(info));
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
        const auto read = [=](ControlChannel& channel, unsigned interface) {
            const auto value = [&](std::uint32_t ofFirst) {
                return channel.readRegister(gvcp::reg::ofInterface(interface, ofFirst));
            };
            *ip = value(gvcp::reg::PersistentIp);
            *subnetMask = value(gvcp::reg::PersistentSubnetMask);
            *gateway = value(gvcp::reg::PersistentGateway);
            return RZ_OK;
        };
        if (camera.isOpen()) {
            const auto session = camera.session();
            return read(session->channel(), session->interface());
        }
        const base::Ipv4 address = addressOf(camera.info());
        ControlChannel channel(networkOn(adaptersTowards(camera.info().stGigEInfo), address), address);
        return read(channel, interfaceWith(channel, camera.mac()));
    });
}
