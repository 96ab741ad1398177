// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/NeighbourConfig.h"

#include <nlohmann/json_fwd.hpp>

namespace simulator {

/// Reads one entry of the configuration's list of neighbours. Throws ConfigError.
NeighbourConfig readNeighbour(const nlohmann::json& value, std::size_t index);

} // namespace simulator
