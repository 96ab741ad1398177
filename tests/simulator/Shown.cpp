// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Shown.h"

#include "tests/support/WaitUntil.h"

#include <stdexcept>

namespace simulator_tests {

nlohmann::json shown(const lab::Farm& farm, const std::string& mac)
{
    return nlohmann::json::parse(farm.control("show " + mac));
}

nlohmann::json runningCamera(const lab::Farm& farm, const std::string& mac)
{
    nlohmann::json camera;
    const auto isRunning = [&] {
        camera = shown(farm, mac);
        return camera.at("state") == "running";
    };
    if (!waitUntil(isRunning))
        throw std::runtime_error("the camera does not get an address: " + camera.dump());
    return camera;
}

} // namespace simulator_tests
