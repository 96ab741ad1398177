// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/CameraTable.h"

#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "cli/text/TextTable.h"

#include <algorithm>
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

std::string ownerOf(const inventory::Conflict& conflict, const std::vector<ListedCamera>& cameras)
{
    switch (conflict.with) {
    case inventory::Conflict::With::ThisComputer:
        return "this computer";
    case inventory::Conflict::With::Machine:
        return "the device " + conflict.mac.toText();
    case inventory::Conflict::With::Camera:
        break;
    }
    const auto other =
        std::ranges::find(cameras, conflict.mac, [](const ListedCamera& each) { return each.camera.mac; });
    return other == cameras.end() ? "the camera " + conflict.mac.toText() : describe(other->camera);
}

/// "FC-1 (...) and of this computer"; of many, how many more there are.
std::string ownersOf(const inventory::Camera& camera, const std::vector<ListedCamera>& cameras)
{
    constexpr std::size_t enough = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(camera.conflicts.size(), enough); ++i)
        text += (i == 0 ? "" : " and of ") + ownerOf(camera.conflicts[i], cameras);
    if (camera.conflicts.size() > enough)
        text += " and of " + std::to_string(camera.conflicts.size() - enough) + " more";
    return text;
}

/// What the exclamation marks are about.
std::string remarks(const std::vector<ListedCamera>& cameras)
{
    std::string text;
    for (const auto& [camera, seen] : cameras) {
        const std::string owners = ownersOf(seen, cameras);
        if (!owners.empty())
            text += "! " + describe(camera) + ": " + camera.settings.address.toText() +
                    " is the address of " + owners + " as well.\n";
        if (camera.adapter.isUnspecified())
            text += "! " + describe(camera) + ": " + displayText(seen.adapterName) +
                    ", which hears it, has no IPv4 address.\n";
    }
    return text;
}

} // namespace

std::string cameraTable(const std::vector<ListedCamera>& cameras, bool coloured)
{
    if (cameras.empty())
        return {};
    TextTable table;
    table.addRow(header({"STATUS", "MODEL", "USER NAME", "SERIAL", "MAC", "IP CONFIG", "ADDRESS", "MASK",
                         "GATEWAY", "ADAPTER"}));
    for (const auto& [camera, seen] : cameras) {
        const QDevice& device = camera.device;
        table.addRow(
            {statusCell(camera, coloured),
             cell(device.m_strModelName),
             cell(device.m_strUserDefinedName),
             cell(device.m_strSerialNumber),
             cell(device.m_strMacAddress),
             cell(device.m_strIpConfigType),
             {displayText(device.m_strIpAddress) + (seen.conflicts.empty() ? "" : " !"), {}},
             cell(device.m_strSubnetMask),
             cell(device.m_strDefaultGateway),
             {camera.adapter.isUnspecified() ? displayText(seen.adapterName) + " !" : camera.adapter.toText(),
              {}}});
    }
    return table.text() + remarks(cameras);
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
