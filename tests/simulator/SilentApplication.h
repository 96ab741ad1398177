// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <string>

namespace simulator_tests {

/// Takes control of the camera from `host` and says nothing more until the camera lets go, `count` times.
/// That is how a test lets a camera's heartbeat time-out pass, by the farm's clock and not by its own. Throws
/// when the camera cannot be taken, or does not let go.
void waitForTimeouts(int count, const lab::Namespace& host, const lab::Farm& farm, const std::string& mac);

} // namespace simulator_tests
