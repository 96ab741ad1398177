// SPDX-License-Identifier: Apache-2.0
#include "cli/DeviceTable.h"

#include "cli/DisplayText.h"
#include "cli/IpSettings.h"
#include "cli/TextTable.h"

#include <QObject>

namespace cli {
namespace {

TextTable::Cell statusCell(const QDevice& device, bool coloured)
{
    constexpr const char* green = "\x1B[32m";
    constexpr const char* yellow = "\x1B[33m";
    constexpr const char* red = "\x1B[31m";
    const QString& status = device.m_strStatus;
    TextTable::Cell cell{displayText(status), {}};
    if (coloured)
        cell.colour = status == QObject::tr("Free") ? green : status == QObject::tr("In Use") ? yellow : red;
    return cell;
}

TextTable::Cell cell(const QString& text)
{
    return {displayText(text), {}};
}

TextTable::Row changeRow(const char* when, const QDevice& device, bool coloured)
{
    return {{when, {}},
            statusCell(device, coloured),
            cell(device.m_strUserDefinedName),
            cell(device.m_strIpConfigType),
            cell(device.m_strIpAddress),
            cell(device.m_strSubnetMask),
            cell(device.m_strDefaultGateway)};
}

TextTable::Row header(std::initializer_list<const char*> titles)
{
    TextTable::Row row;
    for (const char* title : titles)
        row.push_back({title, {}});
    return row;
}

} // namespace

std::string deviceTable(const QVector<QDevice>& devices, bool coloured)
{
    if (devices.isEmpty())
        return {};
    TextTable table;
    table.addRow(header({"STATUS", "MODEL", "USER NAME", "SERIAL", "MAC", "IP CONFIG", "ADDRESS", "MASK",
                         "GATEWAY", "ADAPTER"}));
    for (const QDevice& device : devices) {
        table.addRow({statusCell(device, coloured), cell(device.m_strModelName),
                      cell(device.m_strUserDefinedName), cell(device.m_strSerialNumber),
                      cell(device.m_strMacAddress), cell(device.m_strIpConfigType),
                      cell(device.m_strIpAddress), cell(device.m_strSubnetMask),
                      cell(device.m_strDefaultGateway), cell(dotted(device.m_nNetExport))});
    }
    return table.text();
}

std::string changeTable(const QDevice& before, const QDevice& after, bool coloured)
{
    TextTable table;
    table.addRow(header({"", "STATUS", "USER NAME", "IP CONFIG", "ADDRESS", "MASK", "GATEWAY"}));
    table.addRow(changeRow("before", before, coloured));
    table.addRow(changeRow("after", after, coloured));
    return table.text();
}

} // namespace cli
