// SPDX-License-Identifier: Apache-2.0
#include "cli/DeviceJson.h"

#include "cli/Cameras.h"
#include "cli/IpSettings.h"

#include <QObject>

#include <nlohmann/json.hpp>

namespace cli {
namespace {

const char* ipConfigurationOf(const QDevice& device)
{
    if (isStatic(device))
        return "PersistentIP";
    return device.m_strIpConfigType == QObject::tr("DHCP") ? "DHCP" : "LLA";
}

const char* statusOf(const QDevice& device)
{
    if (device.m_strStatus == QObject::tr("Free"))
        return "Free";
    return device.m_strStatus == QObject::tr("In Use") ? "InUse" : "Unreachable";
}

} // namespace

std::string deviceJson(const QVector<QDevice>& devices)
{
    auto array = nlohmann::ordered_json::array();
    for (const QDevice& device : devices) {
        array.push_back({
            {"DeviceModelName", device.m_strModelName.toStdString()},
            {"DeviceUserID", device.m_strUserDefinedName.toStdString()},
            {"DeviceSerialNumber", device.m_strSerialNumber.toStdString()},
            {"GevMACAddress", device.m_strMacAddress.toStdString()},
            {"GevIPConfigurationStatus", ipConfigurationOf(device)},
            {"GevCurrentIPAddress", device.m_strIpAddress.toStdString()},
            {"GevCurrentSubnetMask", device.m_strSubnetMask.toStdString()},
            {"GevCurrentDefaultGateway", device.m_strDefaultGateway.toStdString()},
            {"Status", statusOf(device)},
            {"AdapterAddress", dotted(device.m_nNetExport).toStdString()},
        });
    }
    // Escaped beyond ASCII: a terminal that shows it obeys nothing in it.
    return array.dump(2, ' ', true) + '\n';
}

} // namespace cli
