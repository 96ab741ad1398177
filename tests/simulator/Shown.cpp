// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Shown.h"

#include <chrono>
#include <stdexcept>

namespace simulator_tests {

nlohmann::json shown(const lab::Farm& farm, const std::string& mac)
{
    return nlohmann::json::parse(farm.control("show " + mac));
}

nlohmann::json runningCamera(const lab::Farm& farm, const std::string& mac)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::seconds(30);
    for (;;) {
        nlohmann::json camera = shown(farm, mac);
        if (camera.at("state") == "running")
            return camera;
        if (Clock::now() > deadline)
            throw std::runtime_error("the camera does not get an address: " + camera.dump());
    }
}

} // namespace simulator_tests
