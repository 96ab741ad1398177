// SPDX-License-Identifier: Apache-2.0
#include "cli/Cameras.h"

#include "cli/DisplayText.h"
#include "cli/IpSettings.h"
#include "device/QDeviceManager.h"

#include <QObject>

#include <algorithm>

namespace cli {

QVector<QDevice> findCameras()
{
    // A new manager each time: it looks at the adapters anew, and has no old list to fall back on.
    QDeviceManager manager;
    manager.EnumGigEDevices();
    QVector<QDevice> cameras;
    manager.GetAllDevices(cameras);
    return cameras;
}

const QDevice* cameraByMac(const QVector<QDevice>& cameras, const QString& macAddress)
{
    const auto found = std::find_if(cameras.begin(), cameras.end(), [&macAddress](const QDevice& camera) {
        return camera.m_strMacAddress == macAddress;
    });
    return found == cameras.end() ? nullptr : found;
}

std::optional<QDevice> awaitSettings(const QString& macAddress, const IpSettings& wanted, int looks)
{
    std::optional<QDevice> last;
    for (int i = 0; i < looks; ++i) {
        const QVector<QDevice> cameras = findCameras();
        if (const QDevice* const camera = cameraByMac(cameras, macAddress)) {
            last = *camera;
            if (reports(*camera, wanted))
                break;
        }
    }
    return last;
}

bool reports(const QDevice& camera, const IpSettings& settings)
{
    return camera.m_strIpAddress == dotted(settings.address) &&
           camera.m_strSubnetMask == dotted(settings.mask) &&
           camera.m_strDefaultGateway == dotted(settings.gateway);
}

bool isStatic(const QDevice& camera)
{
    return camera.m_strIpConfigType == QObject::tr("Static IP");
}

std::string describe(const QDevice& camera)
{
    return displayText(camera.m_strModelName) + " (" + displayText(camera.m_strMacAddress) + ")";
}

} // namespace cli
