// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/CameraConfig.h"
#include "simulator/config/JsonObject.h"

namespace simulator {

/// Reads how a camera of this name misbehaves. Throws ConfigError.
void readQuirks(JsonObject& object, const std::string& name, CameraConfig& camera);

} // namespace simulator
