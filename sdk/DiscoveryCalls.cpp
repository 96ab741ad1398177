// SPDX-License-Identifier: Apache-2.0
// Which cameras there are, and which of them could be opened.
#include "sdk/Calls.h"
#include "sdk/discovery/AccessCheck.h"
#include "sdk/discovery/Enumeration.h"
#include "sdk/discovery/Record.h"
#include "sdk/discovery/RecordTable.h"
#include "sdk/network/LinuxNetwork.h"
#include "sdk/network/ListenerPath.h"

#include <iterator>
#include <system_error>

using namespace sdk;

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
            Reports::instance().setEnumeration({unlisted, joined(failures), network.listening()});
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

int RZ_CC_GetListener(unsigned* state, char* path, unsigned pathSize)
{
    if (!state)
        return RZ_ERROR_PARAMETER;
    return guarded<int>(RZ_ERROR_INTERNAL, [=] {
        *state = Reports::instance().enumeration().listener;
        return copyText(ListenerPath, path, pathSize);
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
        const auto network = networkOn(adaptersTowards(camera));
        return isAccessible(*network, base::Ipv4(camera.stGigEInfo.nNetExportIp), addressOf(camera));
    });
}
