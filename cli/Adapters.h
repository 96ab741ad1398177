// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace cli {

/// This computer's network adapters, loopback left out, by whether cameras can be heard on them.
struct Adapters
{
    QStringList usableAddresses; ///< The IPv4 addresses of those that are ready.
    QStringList faults;          ///< "eth1: switched off", one for each of the others.
};

/// As they are now.
Adapters lookAtAdapters();

} // namespace cli
