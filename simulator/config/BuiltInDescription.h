// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/DescriptionFile.h"

#include <vector>

namespace simulator {

/// What a camera's description may lack.
enum class DescribedFeature
{
    UserName,
    Reset,
    PersistentIpMode,
    DhcpMode,
    PersistentAddress ///< With its mask and gateway.
};

/// The farm's own description file: a camera with its texts and its network settings as features, but for
/// those that are to be missing.
DescriptionFile builtInDescription(const std::vector<DescribedFeature>& missing, std::uint32_t resetRegister);

} // namespace simulator
