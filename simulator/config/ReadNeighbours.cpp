// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadNeighbours.h"

#include "simulator/config/JsonObject.h"

namespace simulator {

namespace {

using Asks = NeighbourConfig::Asks;

constexpr std::pair<const char*, Asks> AllAsks[] = {
    {"dhcp", Asks::Dhcp},
    {"arp", Asks::ArpProbe},
    {"announce", Asks::Announcement},
};

// More often would be a flood.
constexpr std::uint32_t LeastTime = 10;      // ms
constexpr std::uint32_t LongestTime = 60000; // ms

} // namespace

NeighbourConfig readNeighbour(const nlohmann::json& value, std::size_t index)
{
    const std::string name = "neighbours[" + std::to_string(index) + "]";
    JsonObject object(value, name);
    const auto mac = object.mac("mac");
    if (!mac)
        object.fail("mac", "is missing");
    object.setName(name + " (" + mac->toText() + ")");

    NeighbourConfig neighbour;
    neighbour.mac = *mac;
    const auto address = object.address("address");
    neighbour.asks = object.choice<Asks>("asks", AllAsks).value_or(neighbour.asks);
    const auto every = object.milliseconds("every", LeastTime, LongestTime);
    object.rejectOthers();
    if (address && !address->canBeHost())
        object.fail("address", "must be one that a machine can have");
    if (neighbour.asks == Asks::Dhcp && address)
        object.fail("address", "cannot go with \"asks\": \"dhcp\", which is for who has none");
    if (neighbour.asks != Asks::Dhcp && !address)
        object.fail("address", "is missing");
    if (neighbour.asks == Asks::Nothing && every)
        object.fail("every", "needs \"asks\"");
    neighbour.address = address.value_or(neighbour.address);
    neighbour.every = every.value_or(neighbour.every);
    return neighbour;
}

} // namespace simulator
