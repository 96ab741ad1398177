// SPDX-License-Identifier: Apache-2.0
#include "device/QDeviceManager.h"

#include "sdk/RzCameraSdk.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace {

QVector<QDevice> withoutRepeats(const QVector<QDevice>& devices)
{
    QVector<QDevice> result;
    for (const QDevice& current : devices) {
        bool repeated = false;
        for (QDevice& kept : result) {
            if (kept.m_strMacAddress != current.m_strMacAddress)
                continue;
            repeated = true;
            if (current.Status() != CameraStatus::Unreachable && kept.Status() == CameraStatus::Unreachable)
                kept = current;
        }
        if (!repeated)
            result.append(current);
    }
    return result;
}

/// What a MAC address sorts by: the weighted sums of its halves.
struct SortKey
{
    int high;
    int low;
};

std::optional<SortKey> sortKey(const QString& macAddress)
{
    const QStringList parts = macAddress.split(QLatin1Char(':'));
    if (parts.size() != 6)
        return std::nullopt;
    return SortKey{parts[0].toInt() * 100 + parts[1].toInt() * 10 + parts[2].toInt(),
                   parts[3].toInt() * 100 + parts[4].toInt() * 10 + parts[5].toInt()};
}

} // namespace

QDeviceManager::QDeviceManager() : m_stDeviceList(std::make_unique<RZ_CC_DEVICE_INFO_LIST>()) {}

QDeviceManager::~QDeviceManager() = default;

void QDeviceManager::EnumGigEDevices()
{
    if (!(RZ_CC_EnumerateTls() & RZ_TL_GIGE))
        return;
    *m_stDeviceList = {};
    if (RZ_CC_EnumDevices(RZ_TL_GIGE, m_stDeviceList.get()) != RZ_OK)
        return;

    m_vecDevices.publish(AsShown(Decode(*m_stDeviceList)));
}

QVector<QDevice> QDeviceManager::AsShown(const QVector<QDevice>& vecDevices)
{
    QVector<QDevice> devices = withoutRepeats(vecDevices);
    QuickSort(devices, 0, devices.size() - 1);
    return devices;
}

void QDeviceManager::InitMyDeviceList(const RZ_CC_DEVICE_INFO_LIST* pDeviceList)
{
    if (pDeviceList)
        m_vecDevices.publish(Decode(*pDeviceList));
}

void QDeviceManager::FilterDevice()
{
    m_vecDevices.publish(withoutRepeats(m_vecDevices.read()));
}

void QDeviceManager::QuickSort(QVector<QDevice>& vec, int low, int high)
{
    if (low >= high)
        return;

    // Exactly these steps, no library's sort: they decide the order of devices that sort equally, and the
    // rows of the table must not change places.
    const QDevice pivot = vec[low];
    int i = low;
    int j = high;
    while (i < j) {
        while (j > i && CompareFunc(vec[j], pivot))
            --j;
        vec[i] = vec[j];
        while (i < j && !CompareFunc(vec[i], pivot))
            ++i;
        vec[j] = vec[i];
    }
    vec[i] = pivot;
    QuickSort(vec, low, i - 1);
    QuickSort(vec, i + 1, high);
}

bool QDeviceManager::CompareFunc(const QDevice& a, const QDevice& b)
{
    const auto keyA = sortKey(a.m_strMacAddress);
    const auto keyB = sortKey(b.m_strMacAddress);
    if (!keyA || !keyB)
        return false;
    return keyA->high != keyB->high ? keyA->high > keyB->high : keyA->low > keyB->low;
}

bool QDeviceManager::IsOurDevice(const QDevice* pDevice)
{
    return pDevice && pDevice->m_strModelName.startsWith(QLatin1String("RZ-"));
}

bool QDeviceManager::GetOneDevice(int index, QDevice& device)
{
    const QVector<QDevice> devices = m_vecDevices.read();
    if (index < 0 || index >= devices.size())
        return false;
    device = devices[index];
    m_operaDevice = device;
    return true;
}

int QDeviceManager::GetTheOperaDevice() const
{
    const QVector<QDevice> devices = m_vecDevices.read();
    for (int i = devices.size() - 1; i > 0; --i) {
        if (devices[i].m_strMacAddress == m_operaDevice.m_strMacAddress)
            return i;
    }
    return 0;
}

void QDeviceManager::GetAllDevices(QVector<QDevice>& vecDevices) const
{
    vecDevices = m_vecDevices.read();
}

QVector<QDevice> QDeviceManager::Decode(const RZ_CC_DEVICE_INFO_LIST& list)
{
    const int count = std::min(static_cast<int>(list.nDeviceCount), RZ_MAX_DEVICES);
    QVector<QDevice> devices;
    for (int i = 0; i < count; ++i) {
        m_scratchDevice.InitDeviceInfo(list.apDeviceInfo[i]);
        devices.append(m_scratchDevice);
    }
    return devices;
}
