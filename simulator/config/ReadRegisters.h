// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/CameraConfig.h"
#include "simulator/config/JsonObject.h"

namespace simulator {

/// Reads the members about the maker's own registers, the one that resets the camera among them. The name is
/// the camera's, for errors. Throws ConfigError.
void readRegisters(JsonObject& object, const std::string& name, CameraConfig& camera);

} // namespace simulator
