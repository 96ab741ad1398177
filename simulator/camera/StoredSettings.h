// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// What a network interface of a camera starts with.
struct StoredIp
{
    std::uint32_t ipConfig = 0; ///< The whole register, gvcp::IpConfig bits and those above them.
    base::IpSettings persistent;

    bool operator==(const StoredIp&) const = default;
};

/// What a camera still knows after a reset; all else begins anew.
struct StoredSettings
{
    std::vector<StoredIp> interfaces; ///< All of them, by their number.
    std::string userName;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> registers{}; ///< The maker's own: address and value.

    bool operator==(const StoredSettings&) const = default;
};

} // namespace simulator
