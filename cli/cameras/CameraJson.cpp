// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/CameraJson.h"

#include "cli/text/Json.h"

namespace cli {
namespace {

const char* ipConfigurationOf(const Camera& camera)
{
    return camera.isStatic() ? "PersistentIP" : camera.type == IpConfigType::Dhcp ? "DHCP" : "LLA";
}

const char* statusOf(const Camera& camera)
{
    return camera.status == CameraStatus::Free    ? "Free"
           : camera.status == CameraStatus::InUse ? "InUse"
                                                  : "Unreachable";
}

Json conflictsOf(const inventory::Camera& camera)
{
    auto array = Json::array();
    for (const inventory::Conflict& conflict : camera.conflicts)
        array.push_back(conflict.with == inventory::Conflict::With::ThisComputer ? "this computer"
                                                                                 : conflict.mac.toText());
    return array;
}

} // namespace

std::string cameraJson(const std::vector<ListedCamera>& cameras)
{
    auto array = Json::array();
    for (const auto& [camera, seen] : cameras) {
        const QDevice& device = camera.device;
        array.push_back({
            {"DeviceModelName", device.m_strModelName.toStdString()},
            {"DeviceUserID", device.m_strUserDefinedName.toStdString()},
            {"DeviceSerialNumber", device.m_strSerialNumber.toStdString()},
            {"GevMACAddress", device.m_strMacAddress.toStdString()},
            {"GevIPConfigurationStatus", ipConfigurationOf(camera)},
            {"GevCurrentIPAddress", device.m_strIpAddress.toStdString()},
            {"GevCurrentSubnetMask", device.m_strSubnetMask.toStdString()},
            {"GevCurrentDefaultGateway", device.m_strDefaultGateway.toStdString()},
            {"DeviceVendorName", seen.vendor},
            {"DeviceVersion", seen.version},
            {"Status", statusOf(camera)},
            {"AdapterAddress", camera.adapter.toText()},
            {"AdapterName", seen.adapterName},
            {"GevLinkSpeed", orNull(seen.linkSpeed)},
            {"Conflicts", conflictsOf(seen)},
        });
    }
    return jsonText(array);
}

} // namespace cli
