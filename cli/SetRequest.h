// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/IpSettings.h"

#include <optional>

class QDevice;

namespace cli {

struct Arguments;

/// What is to change at one camera; at least one thing.
struct SetRequest
{
    enum class Addressing
    {
        Static,
        Dhcp,
        LinkLocal
    };

    QString macAddress;
    std::optional<Addressing> addressing;
    IpSettings settings; ///< With Addressing::Static.
    std::optional<QString> userName;
};

/// Throws a Failure (wrong arguments) also when they contradict each other, leave something open, or give a
/// name that is not UTF-8 or does not fit into a camera's 16 bytes with the NUL behind it.
SetRequest parseSetRequest(const Arguments& arguments);

/// The camera as it should be.
QDevice changed(QDevice camera, const SetRequest& request);

/// What the camera reports other than asked of the way it gets its address and of where it is, as "asked for
/// ...; it reports ..."; empty when nothing. After DHCP any address is as asked, after link-local one of
/// those.
std::string addressingDifference(const QDevice& camera, const SetRequest& request);

/// Likewise of its name.
std::string nameDifference(const QDevice& camera, const SetRequest& request);

/// Whether the camera has the IP configuration that was asked for and may still be looking for an address by
/// it.
bool mayLookForAddress(const QDevice& camera, const SetRequest& request);

/// "DHCP, 192.168.1.20, mask 255.255.255.0, no gateway"
std::string describeAddressing(const QDevice& camera);

/// "Static IP, 192.168.1.20, mask 255.255.255.0, no gateway", "DHCP with an address", "LLA with ..."; only
/// with an addressing.
std::string describeAddressing(const SetRequest& request);

bool isLinkLocal(const QDevice& camera);

} // namespace cli
