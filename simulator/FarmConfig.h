// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/CameraConfig.h"

#include <stdexcept>
#include <string_view>
#include <vector>

namespace simulator {

/// Says which camera and member is wrong, and what is allowed there.
class ConfigError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

struct FarmConfig
{
    static constexpr std::size_t MaxCameras = 256;

    std::vector<CameraConfig> cameras; ///< Entries that stand for several are taken apart.
    std::uint32_t seed = 1;            ///< Of everything that happens by chance.
};

/// Reads a JSON text as camera-farm(1) describes it; throws ConfigError.
FarmConfig parseFarmConfig(std::string_view json);

} // namespace simulator
