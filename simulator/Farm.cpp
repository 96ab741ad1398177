// SPDX-License-Identifier: Apache-2.0
#include "simulator/Farm.h"

namespace simulator {

Farm::Farm(const FarmConfig& config, TimerQueue& timers, const FrameSink& send)
{
    for (const CameraConfig& camera : config.cameras) {
        m_stations.push_back(std::make_unique<Station>(camera, config.seed, timers, send));
        m_byMac.emplace(camera.mac, m_stations.back().get());
    }
}

void Farm::receive(const Frame& frame)
{
    const gvcp::MacAddress& destination = std::visit(
        [](const auto& message) -> const gvcp::MacAddress& { return message.destinationMac; }, frame);
    if (destination == BroadcastMac) {
        for (const auto& station : m_stations)
            station->receive(frame);
    } else if (Station* const station = find(destination)) {
        station->receive(frame);
    }
}

Station* Farm::find(const gvcp::MacAddress& mac) const
{
    const auto found = m_byMac.find(mac);
    return found == m_byMac.end() ? nullptr : found->second;
}

} // namespace simulator
