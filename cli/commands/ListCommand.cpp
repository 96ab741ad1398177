// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/CameraJson.h"
#include "cli/cameras/CameraTable.h"
#include "cli/cameras/ListedCamera.h"
#include "cli/cameras/ListenerHint.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/commands/Command.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "inventory/Look.h"

#include <ostream>
#include <system_error>

namespace cli {
namespace {

/// What keeps it from hearing cameras; empty when nothing does.
std::string faultOf(const inventory::Adapter& adapter)
{
    if (!adapter.isUp)
        return "switched off";
    if (!adapter.hasCarrier)
        return "no carrier: no cable, or what is at its other end is off";
    if (adapter.addresses.empty() && adapter.master == 0)
        return "no IPv4 address; any will do, but without one only cameras that answer by broadcast are "
               "heard";
    return {};
}

/// The adapters as they are now, after the look: one that has just been switched on may not have had its
/// carrier before.
std::string nothingFound()
{
    std::string usable;
    std::string faults;
    for (const inventory::Adapter& adapter : inventory::hostAdapters()) {
        const std::string fault = faultOf(adapter);
        if (!fault.empty())
            faults += "    " + displayText(adapter.name) + ": " + fault + '\n';
        else
            for (const inventory::AdapterAddress& each : adapter.addresses)
                usable += (usable.empty() ? "" : ", ") + each.address.toText();
    }
    return (usable.empty() ? "No camera found: no network adapter of this computer can hear one.\n"
                           : "No camera answered on " + usable +
                                 ". Check the cameras' power and cables, and that this computer is on the "
                                 "same network.\n") +
           faults + "What may be wrong: ip-configurator-cli doctor\n";
}

/// With the reason in place of the cameras when nothing can be looked at.
inventory::Inventory look()
{
    try {
        return inventory::Look().once({});
    } catch (const std::system_error& error) {
        inventory::Inventory nothing;
        nothing.notSearched = error.what();
        return nothing;
    }
}

std::string noteOfUnlisted(unsigned count)
{
    return "note: " + std::to_string(count) + (count == 1 ? " more camera" : " more cameras") +
           " answered than can be told from a flood of forged answers.\n";
}

void list(const Arguments& arguments, Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    const inventory::Inventory inventory = look();
    const std::vector<ListedCamera> cameras = listedCameras(inventory);
    session.out << (arguments.has("--json") ? cameraJson(cameras) : cameraTable(cameras, session.coloured))
                << std::flush;
    session.err << listenerHint(listenerReport(inventory));
    if (inventory.unlisted > 0)
        session.err << noteOfUnlisted(inventory.unlisted);
    if (!inventory.notSearched.empty())
        throw Failure(ExitStatus::Failed, "cameras may be missing, as not all networks were searched (" +
                                              displayText(inventory.notSearched) + ")");
    if (cameras.empty())
        session.err << nothingFound();
}

} // namespace

Command listCommand()
{
    return {
        "list",
        "[--json]",
        "shows the cameras on all networks of this computer",
        R"(Shows the cameras that answer on the networks of this computer. Status: "Free" can be used, "In Use" is
controlled by another application, "Unreachable" is in another subnet than the adapter that heard it. An address with
an exclamation mark is somebody else's too; whose, is told below the table. An adapter hears cameras when it is switched
on, has a cable with something at its other end, and has an IPv4 address; when no camera answers, each that lacks one of
these is named.

  --json    prints a JSON array with an object for each camera
)",
        {{}, {{"--json", {}}}},
        list,
    };
}

} // namespace cli
