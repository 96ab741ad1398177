// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/CameraConfig.h"
#include "simulator/config/JsonObject.h"

#include <filesystem>

namespace simulator {

/// Reads which description file a camera holds, and how its URLs are spelt. Relative file names start at
/// `directory`. Throws ConfigError.
void readDescription(JsonObject& object, const std::filesystem::path& directory, CameraConfig& camera);

} // namespace simulator
