// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/Published.h"
#include "device/QDevice.h"

#include <memory>

struct RZ_CC_DEVICE_INFO_LIST;

/// The cameras of the host's networks: each once, in the order in which they are shown; and the one the user
/// works on.
///
/// One thread at a time enumerates (EnumGigEDevices, InitMyDeviceList, FilterDevice). Meanwhile the list may
/// be read on any thread: it is replaced in one step. The operated device belongs to the thread that calls
/// GetOneDevice.
class QDeviceManager
{
public:
    QDeviceManager();
    QDeviceManager(const QDeviceManager&) = delete;
    QDeviceManager& operator=(const QDeviceManager&) = delete;
    ~QDeviceManager();

    /// Makes the list anew, which takes a little more than a second. On any failure the old list stays.
    void EnumGigEDevices();

    /// Makes the list from the SDK's, one device for each entry; a null entry repeats the device before it. A
    /// null list changes nothing.
    void InitMyDeviceList(const RZ_CC_DEVICE_INFO_LIST* pDeviceList);

    /// Leaves one device of each MAC address, where the first one stood: the first that is reachable, or else
    /// the first.
    void FilterDevice();

    /// These devices as a list that is shown has them: each once, as by FilterDevice, and sorted by
    /// QuickSort.
    static QVector<QDevice> AsShown(const QVector<QDevice>& vecDevices);

    /// Sorts vec[low] to vec[high] by CompareFunc, ascending. Not stable.
    static void QuickSort(QVector<QDevice>& vec, int low, int high);

    /// Whether a sorts after b. The MAC's parts are read as decimal numbers (one with a letter counts 0) and
    /// weigh 100, 10 and 1 in each half. Nothing sorts after or before a text of other than six parts.
    static bool CompareFunc(const QDevice& a, const QDevice& b);

    /// Whether the model is one of the "RZ-" series.
    static bool IsOurDevice(const QDevice* pDevice);

    /// Hands out a device by its row and makes it the operated one; false, and nothing changed, without such
    /// a row.
    bool GetOneDevice(int index, QDevice& device);

    /// The row of the operated device's MAC address (the last one); 0 when there is none.
    int GetTheOperaDevice() const;

    void GetAllDevices(QVector<QDevice>& vecDevices) const;

private:
    QVector<QDevice> Decode(const RZ_CC_DEVICE_INFO_LIST& list);

    Published<QVector<QDevice>> m_vecDevices;
    QDevice m_operaDevice;
    std::unique_ptr<RZ_CC_DEVICE_INFO_LIST> m_stDeviceList; ///< The SDK's last answer.
    QDevice m_scratchDevice; ///< Each record is decoded into this one, which is not cleared in between.
};
