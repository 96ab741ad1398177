// SPDX-License-Identifier: Apache-2.0
#include "cli/Cameras.h"

#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/IpSettings.h"
#include "cli/Privileges.h"
#include "cli/Session.h"
#include "device/CameraSearch.h"
#include "device/QDeviceManager.h"

#include <QObject>

#include <algorithm>
#include <ostream>

namespace cli {

namespace {

constexpr int LooksForCamera = 3;
constexpr int LooksForChange = 5;

std::string notFound(const QString& macAddress, const QVector<QDevice>& cameras)
{
    const QString notSearched = GetSearchReport().strNotSearched;
    std::string text = notSearched.isEmpty()
                           ? "no camera has the MAC address " + macAddress.toStdString()
                           : "no camera that answered has the MAC address " + macAddress.toStdString() +
                                 ", but not all networks were searched (" + displayText(notSearched) + ")";
    if (cameras.isEmpty())
        return text + "; no camera answered at all";
    text += "; found:";
    for (const QDevice& camera : cameras)
        text += "\n    " + camera.m_strMacAddress.toStdString() + "  " + displayText(camera.m_strModelName) +
                "  " + camera.m_strIpAddress.toStdString();
    return text;
}

QVector<QDevice> findCameras(QDeviceManager& manager)
{
    manager.EnumGigEDevices();
    QVector<QDevice> cameras;
    manager.GetAllDevices(cameras);
    return cameras;
}

} // namespace

QVector<QDevice> findCameras()
{
    // A new manager each time: it looks at the adapters anew, and has no old list to fall back on.
    QDeviceManager manager;
    return findCameras(manager);
}

const QDevice* cameraByMac(const QVector<QDevice>& cameras, const QString& macAddress)
{
    const auto found = std::find_if(cameras.begin(), cameras.end(), [&macAddress](const QDevice& camera) {
        return camera.m_strMacAddress == macAddress;
    });
    return found == cameras.end() ? nullptr : found;
}

QVector<QDevice> findCamerasWith(const QString& macAddress, QDeviceManager& manager, const Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    ExpectCamera(macAddress);
    QVector<QDevice> cameras;
    for (int i = 0; i < LooksForCamera; ++i) {
        cameras = findCameras(manager);
        if (cameraByMac(cameras, macAddress))
            return cameras;
    }
    if (!session.hasRawSockets)
        session.err << rawSocketHint(session.programPath);
    throw Failure(ExitStatus::NoSuchCamera, notFound(macAddress, cameras));
}

std::optional<QDevice> awaitChange(const QString& macAddress,
                                   const std::function<bool(const QDevice&)>& isAsWanted)
{
    std::optional<QDevice> last;
    for (int i = 0; i < LooksForChange; ++i) {
        const QVector<QDevice> cameras = findCameras();
        if (const QDevice* const camera = cameraByMac(cameras, macAddress)) {
            last = *camera;
            if (isAsWanted(*camera))
                break;
        }
    }
    return last;
}

IpSettings settingsOf(const QDevice& camera)
{
    return {QDevice::GetIP(camera.m_strIpAddress), QDevice::GetIP(camera.m_strSubnetMask),
            QDevice::GetIP(camera.m_strDefaultGateway)};
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

std::string withModels(const std::string& text, const QVector<QDevice>& cameras)
{
    QString result = QString::fromStdString(text);
    for (const QDevice& camera : cameras)
        result.replace(camera.m_strMacAddress, QString::fromStdString(describe(camera)));
    return result.toStdString();
}

} // namespace cli
