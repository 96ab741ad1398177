// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/CameraJson.h"

#include <nlohmann/json.hpp>

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

} // namespace

std::string cameraJson(const std::vector<Camera>& cameras)
{
    auto array = nlohmann::ordered_json::array();
    for (const Camera& camera : cameras) {
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
            {"Status", statusOf(camera)},
            {"AdapterAddress", camera.adapter.toText()},
        });
    }
    // Escaped beyond ASCII: a terminal that shows it obeys nothing in it.
    return array.dump(2, ' ', true) + '\n';
}

} // namespace cli
