// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/EventReport.h"

#include "cli/text/DisplayText.h"
#include "cli/text/Json.h"

#include <initializer_list>
#include <utility>

namespace cli {
namespace {

using Kind = inventory::WatchEvent::Kind;

const char* nameOf(Kind kind)
{
    switch (kind) {
    case Kind::Present:
        return "present";
    case Kind::Appeared:
        return "appeared";
    case Kind::Gone:
        return "gone";
    case Kind::Address:
        return "address";
    case Kind::Status:
        return "status";
    case Kind::AsksForAddress:
        return "asks-for-address";
    }
    return nullptr;
}

const char* statusName(inventory::Status status)
{
    switch (status) {
    case inventory::Status::Free:
        return "Free";
    case inventory::Status::InUse:
        return "InUse";
    case inventory::Status::Unreachable:
        return "Unreachable";
    }
    return nullptr;
}

/// Each in a column of its own, at least that wide: what is to come is not known, so a longer text moves its
/// own line alone.
std::string columns(std::initializer_list<std::pair<std::string, int>> cells)
{
    std::string line;
    for (const auto& [text, width] : cells)
        line +=
            text + std::string(static_cast<std::size_t>(std::max(width - displayWidth(text), 0)), ' ') + "  ";
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

std::string line(const std::string& time, const std::string& event, const std::string& mac,
                 const std::string& address, const std::string& status, const std::string& model,
                 const std::string& userName, const std::string& adapter)
{
    return columns({{time, 29},
                    {event, 16},
                    {mac, 17},
                    {address, 15},
                    {status, 11},
                    {model, 12},
                    {userName, 15},
                    {adapter, 0}});
}

} // namespace

std::string eventHeader()
{
    return line("TIME", "EVENT", "MAC", "ADDRESS", "STATUS", "MODEL", "USER NAME", "ADAPTER");
}

std::string eventText(const inventory::WatchEvent& event, const std::string& time)
{
    const std::string unknown = "-";
    return line(time, nameOf(event.kind), event.mac.toText(),
                event.address ? event.address->toText() : unknown,
                !event.status                               ? unknown
                : *event.status == inventory::Status::InUse ? "In Use"
                                                            : statusName(*event.status),
                event.model ? displayText(*event.model) : unknown,
                event.userName ? displayText(*event.userName) : unknown,
                event.adapterName.empty() ? unknown : displayText(event.adapterName));
}

std::string eventJson(const inventory::WatchEvent& event, const std::string& time)
{
    const Json object{
        {"Time", time},
        {"Event", nameOf(event.kind)},
        {"GevMACAddress", event.mac.toText()},
        {"GevCurrentIPAddress", orNull(event.address)},
        {"Status", event.status ? Json(statusName(*event.status)) : Json()},
        {"AdapterName", orNull(event.adapterName)},
        {"DeviceModelName", orNull(event.model)},
        {"DeviceUserID", orNull(event.userName)},
    };
    return jsonLine(object);
}

} // namespace cli
