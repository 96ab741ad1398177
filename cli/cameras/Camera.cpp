// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/Camera.h"

#include "cli/text/DisplayText.h"
#include "device/CameraAddress.h"

#include <algorithm>

namespace cli {
namespace {

base::Ipv4 ipv4(const QString& text)
{
    return base::Ipv4(QDevice::GetIP(text));
}

} // namespace

Camera::Camera(const QDevice& answered)
    : device(answered),
      mac(base::MacAddress::parse(answered.m_strMacAddress.toStdString()).value_or(base::MacAddress())),
      settings{ipv4(answered.m_strIpAddress), ipv4(answered.m_strSubnetMask),
               ipv4(answered.m_strDefaultGateway)},
      type(answered.ConfigType()),
      status(answered.Status()),
      adapter(answered.m_nNetExport)
{}

const Camera* cameraByMac(const std::vector<Camera>& cameras, const base::MacAddress& mac)
{
    const auto found = std::ranges::find(cameras, mac, &Camera::mac);
    return found == cameras.end() ? nullptr : &*found;
}

std::string describe(const Camera& camera)
{
    return displayText(camera.device.m_strModelName) + " (" + camera.mac.toText() + ")";
}

std::string describe(const base::IpSettings& settings)
{
    const std::string gateway =
        settings.gateway.isUnspecified() ? "no gateway" : "gateway " + settings.gateway.toText();
    return settings.address.toText() + ", mask " + settings.mask.toText() + ", " + gateway;
}

std::string describeAddressing(const Camera& camera)
{
    return displayText(camera.device.m_strIpConfigType) + ", " + describe(camera.settings);
}

std::string describeStored(const Camera& camera)
{
    const auto stored = ReadStoredAddress(camera.device);
    return stored ? "its stored address is " + describe(*stored) : std::string();
}

std::string describeStoredOrDoubt(const Camera& camera)
{
    const std::string stored = describeStored(camera);
    return stored.empty() ? "it may have stored some of the old settings and some of the new" : stored;
}

std::string withModels(const std::string& text, const std::vector<Camera>& cameras)
{
    QString result = QString::fromStdString(text);
    for (const Camera& camera : cameras)
        result.replace(camera.device.m_strMacAddress, QString::fromStdString(describe(camera)));
    return result.toStdString();
}

} // namespace cli
