// SPDX-License-Identifier: Apache-2.0
#include "device/HearingAdapter.h"

#include "device/QDevice.h"
#include "sdk/RzCameraSdk.h"

#include <QHostAddress>
#include <QNetworkInterface>

int HearingAdapterIndex(const QDevice& device)
{
    if (const RZ_CC_DEVICE_INFO* const record = device.m_pDeviceInfo) {
        // It may be updated on another thread, word by word.
        const auto nIndex = __atomic_load_n(&record->stGigEInfo.nNetExportIndex, __ATOMIC_RELAXED);
        if (nIndex != 0)
            return QNetworkInterface::interfaceFromIndex(static_cast<int>(nIndex)).index();
    }
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces())
        for (const QNetworkAddressEntry& entry : interface.addressEntries())
            if (entry.ip() == QHostAddress(device.m_nNetExport))
                return interface.index();
    return 0;
}
