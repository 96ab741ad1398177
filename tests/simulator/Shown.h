// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <nlohmann/json.hpp>
#include <string>

namespace simulator_tests {

/// What the farm shows of a camera.
nlohmann::json shown(const lab::Farm& farm, const std::string& mac);

/// The same as soon as the camera has booted; throws when it has not after 20 s.
nlohmann::json runningCamera(const lab::Farm& farm, const std::string& mac);

} // namespace simulator_tests
