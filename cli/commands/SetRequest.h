// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/Camera.h"

namespace cli {

struct Arguments;

/// What is to change at one camera; at least one thing.
struct SetRequest
{
    base::MacAddress mac;
    std::optional<IpConfigType> type;
    base::IpSettings settings; ///< With IpConfigType::Static.
    std::optional<QString> userName;

    bool isStatic() const { return type == IpConfigType::Static; }
};

/// Throws a Failure (wrong arguments) also when they contradict each other, leave something open, or give a
/// name that is not UTF-8 or does not fit into a camera's 16 bytes with the NUL behind it.
SetRequest parseSetRequest(const Arguments& arguments);

/// The device as it should be.
QDevice changed(QDevice device, const SetRequest& request);

/// Compares the camera's IP configuration and address with the request's. Empty when they agree, else "asked
/// for ...; it reports ...". A camera that was set to DHCP may have any address but 0.0.0.0, one that was set
/// to link-local any that begins with 169.254.
std::string addressingDifference(const Camera& camera, const SetRequest& request);

/// Compares the camera's name with the request's, in the same way.
std::string nameDifference(const Camera& camera, const SetRequest& request);

/// Both, one behind the other.
std::string differences(const Camera& camera, const SetRequest& request);

/// "Static IP, 192.168.1.20, mask 255.255.255.0, no gateway", "DHCP with an address", "LLA with ..."; only
/// for a request that has a type.
std::string describeAddressing(const SetRequest& request);

} // namespace cli
