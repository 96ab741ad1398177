// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/HoldingReport.h"

#include "cli/cameras/SeenCamera.h"
#include "cli/text/DisplayText.h"
#include "cli/text/Json.h"
#include "cli/text/TextTable.h"

namespace cli {
namespace {

/// An application and not nobody, as far as the camera tells.
std::optional<inventory::Endpoint> somebody(const std::optional<inventory::Endpoint>& endpoint)
{
    return endpoint && !endpoint->address.isUnspecified() ? endpoint : std::nullopt;
}

std::string headline(const inventory::Camera& camera)
{
    if (!camera.privilege)
        return "may be held: it does not tell";
    switch (*camera.privilege) {
    case inventory::Privilege::None:
        return "is free";
    case inventory::Privilege::Control:
        return "is held by an application; others may read from it";
    case inventory::Privilege::Exclusive:
        return "is held exclusively by an application";
    }
    return {};
}

const char* privilegeName(const inventory::Camera& camera)
{
    if (!camera.privilege)
        return "unknown";
    switch (*camera.privilege) {
    case inventory::Privilege::None:
        return "none";
    case inventory::Privilege::Control:
        return "control";
    case inventory::Privilege::Exclusive:
        return "exclusive";
    }
    return nullptr;
}

std::string processText(const inventory::Holding& holding)
{
    const inventory::Process& process = *holding.process;
    return displayText(process.name) + ", process " + std::to_string(process.pid) + " of " +
           displayText(process.user) + (holding.isGuess ? " (a guess)" : "") + ": " +
           displayText(process.commandLine);
}

std::string endpointText(const inventory::Endpoint& endpoint)
{
    return endpoint.address.toText() + ":" + std::to_string(endpoint.port);
}

Json processJson(const inventory::Process& process)
{
    return {{"Pid", process.pid},
            {"Name", process.name},
            {"User", process.user},
            {"CommandLine", process.commandLine}};
}

} // namespace

std::string holdingText(const inventory::Camera& camera, const inventory::Holding& holding)
{
    std::string text = describe(camera) + ", " + camera.ip.address.toText() + ", " + headline(camera) + ".\n";
    TextTable facts;
    const auto add = [&facts](const char* name, const std::string& value) {
        facts.addRow({{name, {}}, {value, {}}});
    };
    if (const auto holder = somebody(camera.holder))
        add("  Holder", holder->address.toText() + ", port " + std::to_string(holder->port));
    if (holding.process)
        add("  Process", processText(holding));
    if (camera.heartbeatTimeout)
        add("  Heartbeat", camera.isHeartbeatOff.value_or(false)
                               ? "switched off"
                               : std::to_string(camera.heartbeatTimeout->count()) + " ms");
    if (const auto stream = somebody(camera.stream))
        add("  Stream to", endpointText(*stream));
    text += facts.text();
    return camera.privilege == inventory::Privilege::None
               ? text
               : text + displayText(base::english(holding.reason)) + '\n';
}

std::string holdingJson(const inventory::Camera& camera, const inventory::Holding& holding)
{
    const auto holder = somebody(camera.holder);
    const auto stream = somebody(camera.stream);
    const Json object{
        {"GevMACAddress", camera.mac.toText()},
        {"Privilege", privilegeName(camera)},
        {"HolderAddress", holder ? Json(holder->address.toText()) : Json()},
        {"HolderPort", holder ? Json(holder->port) : Json()},
        {"HeartbeatTimeout", camera.heartbeatTimeout ? Json(camera.heartbeatTimeout->count()) : Json()},
        {"HeartbeatDisabled", orNull(camera.isHeartbeatOff)},
        {"StreamDestination", stream ? Json(endpointText(*stream)) : Json()},
        {"Process", holding.process ? processJson(*holding.process) : Json()},
        {"Reason", base::english(holding.reason)},
    };
    return jsonText(object);
}

} // namespace cli
