// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadFarm.h"

#include "simulator/config/JsonObject.h"
#include "simulator/config/ReadCameras.h"

#include <set>

namespace simulator {

FarmConfig readFarm(std::string_view json, const std::filesystem::path& directory)
{
    nlohmann::json root;
    try {
        root = nlohmann::json::parse(json);
    } catch (const nlohmann::json::exception& error) { // Also for a number too large to be read.
        throw ConfigError(std::string("not valid JSON: ") + error.what());
    }

    FarmConfig config;
    JsonObject object(root, "the configuration");
    config.seed = object.number("seed", 0, UINT32_MAX).value_or(config.seed);
    const nlohmann::json* const entries = object.array("cameras");
    object.rejectOthers();
    if (!entries || entries->empty())
        object.fail("cameras", "must list at least one camera");

    std::set<base::MacAddress> macs;
    for (std::size_t i = 0; i < entries->size(); ++i) {
        for (CameraConfig& camera : readCameras((*entries)[i], i, directory)) {
            if (!macs.insert(camera.mac).second)
                throw ConfigError("cameras[" + std::to_string(i) + "] (" + camera.mac.toText() +
                                  "): \"mac\" is another camera's already");
            config.cameras.push_back(std::move(camera));
        }
    }
    if (config.cameras.size() > FarmConfig::MaxCameras)
        throw ConfigError("the configuration lists " + std::to_string(config.cameras.size()) +
                          " cameras; one farm has at most " + std::to_string(FarmConfig::MaxCameras));
    return config;
}

} // namespace simulator
