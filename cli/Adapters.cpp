// SPDX-License-Identifier: Apache-2.0
#include "cli/Adapters.h"

#include <QHostAddress>

#include <cerrno>
#include <ifaddrs.h>
#include <map>
#include <memory>
#include <net/if.h>
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

} // namespace

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

} // namespace cli
