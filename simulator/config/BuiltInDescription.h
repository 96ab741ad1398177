// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

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

inline constexpr char BuiltInDescriptionName[] = "FarmCamera_1_0_0.xml";

/// The farm's own description file: a camera with its texts and its network settings as features, but for
/// those that are to be missing.
base::Bytes builtInDescription(const std::vector<DescribedFeature>& missing, std::uint32_t resetRegister);

} // namespace simulator
