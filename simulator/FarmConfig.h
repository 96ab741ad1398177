// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/CameraConfig.h"

#include <filesystem>
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

/// Reads a JSON text as camera-farm(1) describes it; the files that it names relatively are in `directory`.
/// Throws ConfigError.
FarmConfig parseFarmConfig(std::string_view json, const std::filesystem::path& directory = {});

} // namespace simulator
