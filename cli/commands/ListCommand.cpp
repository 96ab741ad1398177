// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/CameraJson.h"
#include "cli/cameras/CameraTable.h"
#include "cli/cameras/Cameras.h"
#include "cli/cameras/ListenerHint.h"
#include "cli/commands/Command.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "device/CameraSearch.h"

#include <QHostAddress>

#include <cerrno>
#include <ifaddrs.h>
#include <map>
#include <memory>
#include <net/if.h>
#include <ostream>
#include <system_error>

namespace cli {
namespace {

struct Adapter
{
    unsigned flags = 0; ///< IFF_*
    QStringList addresses;
};

/// By their names. Not by QNetworkInterface, for which one without a cable is switched off.
std::map<QString, Adapter> hostAdapters()
{
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0)
        throw std::system_error(errno, std::generic_category(), "the network adapters");
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner(first, &::freeifaddrs);

    std::map<QString, Adapter> adapters;
    for (const ifaddrs* entry = first; entry; entry = entry->ifa_next) {
        // A further address can carry a label of its own, "eth0:1".
        Adapter& adapter = adapters[QString::fromLocal8Bit(entry->ifa_name).section(QLatin1Char(':'), 0, 0)];
        adapter.flags = entry->ifa_flags;
        if (entry->ifa_addr && entry->ifa_addr->sa_family == AF_INET)
            adapter.addresses += QHostAddress(entry->ifa_addr).toString();
    }
    return adapters;
}

/// What keeps it from hearing cameras; empty when nothing does.
QString faultOf(const Adapter& adapter)
{
    if ((adapter.flags & IFF_UP) == 0)
        return QStringLiteral("switched off");
    if ((adapter.flags & IFF_RUNNING) == 0)
        return QStringLiteral("no carrier: no cable, or what is at its other end is off");
    if (adapter.addresses.isEmpty())
        return QStringLiteral("no IPv4 address; any will do, but without one it cannot ask");
    return {};
}

/// This computer's network adapters, loopback left out, by whether cameras can be heard on them.
struct Adapters
{
    QStringList usableAddresses; ///< The IPv4 addresses of those that are ready.
    QStringList faults;          ///< "eth1: switched off", one for each of the others.
};

Adapters lookAtAdapters()
{
    Adapters result;
    for (const auto& [name, adapter] : hostAdapters()) {
        if ((adapter.flags & IFF_LOOPBACK) != 0)
            continue;
        const QString fault = faultOf(adapter);
        if (fault.isEmpty())
            result.usableAddresses += adapter.addresses;
        else
            result.faults += name + ": " + fault;
    }
    return result;
}

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
    const std::vector<Camera> cameras = findCameras();
    const SearchReport report = GetSearchReport();
    session.out << (arguments.has("--json") ? cameraJson(cameras) : cameraTable(cameras, session.coloured))
                << std::flush;
    session.err << listenerHint(GetListenerReport());
    if (report.nUnlisted > 0)
        session.err << noteOfUnlisted(report.nUnlisted);
    if (!report.strNotSearched.isEmpty())
        throw Failure(ExitStatus::Failed, "cameras may be missing, as not all networks were searched (" +
                                              displayText(report.strNotSearched) + ")");
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
