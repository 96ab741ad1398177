// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/IpSettings.h"

#include <optional>

namespace gvcp {

/// FORCEIP: the camera with this MAC takes these addresses until its next reset, all others ignore the
/// command. Address 0.0.0.0 makes the camera run its stored IP configuration again. The acknowledge has no
/// payload.
struct ForceIp
{
    base::MacAddress mac;
    base::IpSettings ip;

    bool operator==(const ForceIp&) const = default;
};

base::Bytes encodeForceIp(const ForceIp& command);
std::optional<ForceIp> parseForceIp(base::ByteView payload);

} // namespace gvcp
