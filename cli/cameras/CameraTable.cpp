// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/CameraTable.h"

#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "cli/text/TextTable.h"

#include <ostream>

namespace cli {
namespace {

TextTable::Cell statusCell(const Camera& camera, bool coloured)
{
    constexpr const char* green = "\x1B[32m";
    constexpr const char* yellow = "\x1B[33m";
    constexpr const char* red = "\x1B[31m";
    TextTable::Cell cell{displayText(camera.device.m_strStatus), {}};
    if (coloured)
        cell.colour = camera.status == CameraStatus::Free    ? green
                      : camera.status == CameraStatus::InUse ? yellow
                                                             : red;
    return cell;
}

TextTable::Cell cell(const QString& text)
{
    return {displayText(text), {}};
}

TextTable::Row changeRow(const char* when, const Camera& camera, bool coloured)
{
    const QDevice& device = camera.device;
    return {{when, {}},
            statusCell(camera, coloured),
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

std::string cameraTable(const std::vector<Camera>& cameras, bool coloured)
{
    if (cameras.empty())
        return {};
    TextTable table;
    table.addRow(header({"STATUS", "MODEL", "USER NAME", "SERIAL", "MAC", "IP CONFIG", "ADDRESS", "MASK",
                         "GATEWAY", "ADAPTER"}));
    for (const Camera& camera : cameras) {
        const QDevice& device = camera.device;
        table.addRow({statusCell(camera, coloured),
                      cell(device.m_strModelName),
                      cell(device.m_strUserDefinedName),
                      cell(device.m_strSerialNumber),
                      cell(device.m_strMacAddress),
                      cell(device.m_strIpConfigType),
                      cell(device.m_strIpAddress),
                      cell(device.m_strSubnetMask),
                      cell(device.m_strDefaultGateway),
                      {camera.adapter.toText(), {}}});
    }
    return table.text();
}

void reportChange(const Camera& before, const Camera& after, const Session& session)
{
    TextTable table;
    table.addRow(header({"", "STATUS", "USER NAME", "IP CONFIG", "ADDRESS", "MASK", "GATEWAY"}));
    table.addRow(changeRow("before", before, session.coloured));
    table.addRow(changeRow("after", after, session.coloured));
    session.out << table.text() << std::flush;
    if (!session.out)
        throw Failure(ExitStatus::Failed,
                      describe(after) + " has what was asked for (user name \"" +
                          displayText(after.device.m_strUserDefinedName) + "\", " +
                          describeAddressing(after) +
                          "), as it was seen to report, but the report of it cannot be written: standard "
                          "output is closed or full");
}

} // namespace cli
