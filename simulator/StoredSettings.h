// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/IpSettings.h"

#include <string>

namespace simulator {

/// What a camera still knows after a reset; all else begins anew.
struct StoredSettings
{
    std::uint32_t ipConfig = 0; ///< The whole register, gvcp::IpConfig bits and those above them.
    IpSettings persistent;
    std::string userName;

    bool operator==(const StoredSettings&) const = default;
};

} // namespace simulator
