// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadFarm.h"

#include "simulator/config/JsonObject.h"
#include "simulator/config/ReadCameras.h"
#include "simulator/config/ReadNeighbours.h"

#include <set>

namespace simulator {

namespace {

using Macs = std::set<base::MacAddress>;

void readCameraList(const nlohmann::json& entries, const std::filesystem::path& directory, Macs& macs,
                    FarmConfig& config)
{
    for (std::size_t i = 0; i < entries.size(); ++i) {
        for (CameraConfig& camera : readCameras(entries[i], i, directory)) {
            if (!macs.insert(camera.mac).second)
                throw ConfigError("cameras[" + std::to_string(i) + "] (" + camera.mac.toText() +
                                  "): \"mac\" is another camera's already");
            config.cameras.push_back(std::move(camera));
        }
    }
    if (config.cameras.size() > FarmConfig::MaxCameras)
        throw ConfigError("the configuration lists " + std::to_string(config.cameras.size()) +
                          " cameras; one farm has at most " + std::to_string(FarmConfig::MaxCameras));
}

void readNeighbourList(const nlohmann::json& entries, Macs& macs, FarmConfig& config)
{
    if (entries.size() > FarmConfig::MaxNeighbours)
        throw ConfigError("the configuration lists " + std::to_string(entries.size()) +
                          " neighbours; one farm has at most " + std::to_string(FarmConfig::MaxNeighbours));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        config.neighbours.push_back(readNeighbour(entries[i], i));
        const base::MacAddress& mac = config.neighbours.back().mac;
        if (!macs.insert(mac).second)
            throw ConfigError("neighbours[" + std::to_string(i) + "] (" + mac.toText() +
                              "): \"mac\" is another one's already");
    }
}

} // namespace

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
    const nlohmann::json* const cameras = object.array("cameras");
    const nlohmann::json* const neighbours = object.array("neighbours");
    object.rejectOthers();
    const auto isEmpty = [](const nlohmann::json* list) { return !list || list->empty(); };
    if (isEmpty(cameras) && isEmpty(neighbours))
        object.fail("cameras", "must list at least one camera where there are no neighbours");

    Macs macs;
    if (cameras)
        readCameraList(*cameras, directory, macs, config);
    if (neighbours)
        readNeighbourList(*neighbours, macs, config);
    return config;
}

} // namespace simulator
