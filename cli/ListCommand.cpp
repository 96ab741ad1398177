// SPDX-License-Identifier: Apache-2.0
#include "cli/Adapters.h"
#include "cli/Cameras.h"
#include "cli/Command.h"
#include "cli/DeviceJson.h"
#include "cli/DeviceTable.h"
#include "cli/DisplayText.h"
#include "cli/Failure.h"
#include "cli/Privileges.h"
#include "cli/Session.h"
#include "device/CameraSearch.h"

#include <ostream>

namespace cli {
namespace {

std::string nothingFound()
{
    const Adapters adapters = lookAtAdapters();
    std::string text =
        adapters.usableAddresses.isEmpty()
            ? "No camera found: no network adapter of this computer can hear one.\n"
            : "No camera answered on " + adapters.usableAddresses.join(QStringLiteral(", ")).toStdString() +
                  ". Check the cameras' power and cables, and that this computer is on the same network.\n";
    for (const QString& fault : adapters.faults)
        text += "    " + displayText(fault) + '\n';
    return text;
}

std::string noteOfUnlisted(unsigned count)
{
    return "note: " + std::to_string(count) + (count == 1 ? " more camera" : " more cameras") +
           " answered than there is room for in the list; to see all, list the networks one after the other "
           "(unplug the others meanwhile). The other commands find each camera by its MAC address all the "
           "same.\n";
}

void list(const Arguments& arguments, Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    const QVector<QDevice> cameras = findCameras();
    const SearchReport report = GetSearchReport();
    session.out << (arguments.has("--json") ? deviceJson(cameras) : deviceTable(cameras, session.coloured))
                << std::flush;
    if (!session.hasRawSockets)
        session.err << rawSocketHint(session.programPath);
    if (report.nUnlisted > 0)
        session.err << noteOfUnlisted(report.nUnlisted);
    if (!report.strNotSearched.isEmpty())
        throw Failure(ExitStatus::Failed, "cameras may be missing, as not all networks were searched (" +
                                              displayText(report.strNotSearched) + ")");
    if (cameras.isEmpty())
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
controlled by another application, "Unreachable" is in another subnet than the adapter that heard it. An adapter
hears cameras when it is switched on, has a cable with something at its other end, and has an IPv4 address; when no
camera answers, each that lacks one of these is named.

  --json    prints a JSON array with an object for each camera
)",
        {{}, {{"--json", {}}}},
        list,
    };
}

} // namespace cli
