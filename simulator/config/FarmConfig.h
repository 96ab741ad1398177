// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/CameraConfig.h"
#include "simulator/config/NeighbourConfig.h"

#include <vector>

namespace simulator {

struct FarmConfig
{
    static constexpr std::size_t MaxCameras = 256;
    static constexpr std::size_t MaxNeighbours = 256;

    std::vector<CameraConfig> cameras; ///< Entries that stand for several are taken apart.
    std::vector<NeighbourConfig> neighbours;
    std::uint32_t seed = 1; ///< Of everything that happens by chance.
};

} // namespace simulator
