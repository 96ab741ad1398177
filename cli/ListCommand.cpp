// SPDX-License-Identifier: Apache-2.0
#include "cli/Cameras.h"
#include "cli/Command.h"
#include "cli/DeviceJson.h"
#include "cli/DeviceTable.h"
#include "cli/Privileges.h"
#include "cli/Session.h"

#include <QNetworkInterface>
#include <QStringList>

#include <ostream>

namespace cli {
namespace {

/// Of the adapters that cameras are looked for on, which are not all that a device remembers, nor only those.
QStringList searchedAddresses()
{
    QStringList addresses;
    for (const QNetworkInterface& adapter : QNetworkInterface::allInterfaces()) {
        if (!adapter.flags().testFlag(QNetworkInterface::IsUp) ||
            adapter.flags().testFlag(QNetworkInterface::IsLoopBack))
            continue;
        for (const QNetworkAddressEntry& entry : adapter.addressEntries())
            if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
                addresses += entry.ip().toString();
    }
    return addresses;
}

std::string nothingFound()
{
    const QStringList addresses = searchedAddresses();
    if (addresses.isEmpty())
        return "No camera found: no network adapter of this computer is up and has an IPv4 address.\n";
    return "No camera answered on " + addresses.join(QStringLiteral(", ")).toStdString() +
           ". Check the cameras' power and cables, and that this computer is on the same network.\n";
}

void list(const Arguments& arguments, Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    const QVector<QDevice> cameras = findCameras();
    session.out << (arguments.has("--json") ? deviceJson(cameras) : deviceTable(cameras, session.coloured))
                << std::flush;
    if (cameras.isEmpty())
        session.err << nothingFound();
    if (!session.hasRawSockets)
        session.err << rawSocketHint(session.programPath);
}

} // namespace

Command listCommand()
{
    return {
        "list",
        "[--json]",
        "shows the cameras on all networks of this computer",
        R"(Shows the cameras that answer on the networks of this computer. Status: "Free" can be used, "In Use" is
controlled by another application, "Unreachable" is in another subnet than the adapter that heard it.

  --json    prints a JSON array with an object for each camera
)",
        {{}, {{"--json", {}}}},
        list,
    };
}

} // namespace cli
