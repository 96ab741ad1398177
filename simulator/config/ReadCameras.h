// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/CameraConfig.h"

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <vector>

namespace simulator {

/// Reads one entry of the configuration's list; gives the cameras that it stands for, at least one. Relative
/// file names start at `directory`. Throws ConfigError.
std::vector<CameraConfig> readCameras(const nlohmann::json& value, std::size_t index,
                                      const std::filesystem::path& directory);

} // namespace simulator
