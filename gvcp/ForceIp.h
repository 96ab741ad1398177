// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"
#include "gvcp/Bytes.h"

#include <optional>

namespace gvcp {

/// FORCEIP: the camera with this MAC takes these addresses until its next reset, all others ignore the
/// command. Address 0.0.0.0 makes the camera run its stored IP configuration again. The acknowledge has no
/// payload.
struct ForceIp
{
    MacAddress mac;
    Ipv4 ip = 0;
    Ipv4 subnetMask = 0;
    Ipv4 gateway = 0;

    bool operator==(const ForceIp&) const = default;
};

Bytes encodeForceIp(const ForceIp& command);
std::optional<ForceIp> parseForceIp(ByteView payload);

} // namespace gvcp
