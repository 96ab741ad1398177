// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListedCamera.h"

#include "device/QDeviceManager.h"

#include <map>

namespace cli {

std::vector<ListedCamera> listedCameras(const inventory::Inventory& inventory)
{
    QDevice device; // One looks at the adapters; a copy does not.
    QVector<QDevice> devices;
    std::map<const RZ_CC_DEVICE_INFO*, const inventory::Camera*> seenByRecord;
    for (const inventory::Camera& camera : inventory.cameras) {
        device.InitDeviceInfo(camera.record);
        devices.append(device);
        seenByRecord[camera.record] = &camera;
    }
    std::vector<ListedCamera> listed;
    for (const QDevice& each : QDeviceManager::AsShown(devices))
        listed.push_back({Camera(each), *seenByRecord.at(each.m_pDeviceInfo)});
    return listed;
}

} // namespace cli
