// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/ConfigError.h"
#include "simulator/config/FarmConfig.h"

#include <filesystem>
#include <string_view>

namespace simulator {

/// Reads a JSON text as camera-farm(1) describes it; the files that it names relatively are in `directory`.
/// Throws ConfigError.
FarmConfig readFarm(std::string_view json, const std::filesystem::path& directory = {});

} // namespace simulator
