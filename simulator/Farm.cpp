// SPDX-License-Identifier: Apache-2.0
#include "simulator/Farm.h"

namespace simulator {

Farm::Farm(const FarmConfig& config, TimerQueue& timers, const FrameSink& send) : m_timeouts(timers)
{
    const FrameSink sendToAll = [this, send](const Frame& frame) {
        send(frame);
        // The interface does not give the farm's own frames back. Of what is sent here only ARP is meant for
        // others here; they hear it when whoever is sending has finished.
        if (std::holds_alternative<ArpMessage>(frame))
            m_timeouts.after(std::chrono::milliseconds{0}, [this, frame] { receive(frame); });
    };
    for (const CameraConfig& camera : config.cameras) {
        m_stations.push_back(std::make_unique<Station>(camera, config.seed, timers, sendToAll));
        m_byMac.emplace(camera.mac, m_stations.back().get());
    }
    for (const NeighbourConfig& neighbour : config.neighbours)
        m_neighbours.push_back(std::make_unique<Neighbour>(neighbour, timers, sendToAll));
}

void Farm::receive(const Frame& frame)
{
    using base::MacAddress;
    const MacAddress& source =
        std::visit([](const auto& message) -> const MacAddress& { return message.sourceMac; }, frame);
    const MacAddress& destination =
        std::visit([](const auto& message) -> const MacAddress& { return message.destinationMac; }, frame);
    for (const auto& neighbour : m_neighbours)
        if (neighbour->mac() == destination || (destination == BroadcastMac && neighbour->mac() != source))
            neighbour->receive(frame);
    if (destination == BroadcastMac) {
        for (const auto& station : m_stations)
            if (station->mac() != source)
                station->receive(frame);
    } else if (Station* const station = find(destination)) {
        station->receive(frame);
    }
}

Station* Farm::find(const base::MacAddress& mac) const
{
    const auto found = m_byMac.find(mac);
    return found == m_byMac.end() ? nullptr : found->second;
}

} // namespace simulator
