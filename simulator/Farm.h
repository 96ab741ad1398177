// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/FarmConfig.h"
#include "simulator/station/Neighbour.h"
#include "simulator/station/Station.h"

#include <map>
#include <memory>
#include <vector>

namespace simulator {

/// All cameras of one interface, and their neighbours. One thread.
class Farm
{
public:
    Farm(const FarmConfig& config, TimerQueue& timers, const FrameSink& send);

    /// A frame from the network.
    void receive(const Frame& frame);

    /// Null when it has no such camera.
    Station* find(const base::MacAddress& mac) const;
    const std::vector<std::unique_ptr<Station>>& stations() const { return m_stations; }

private:
    Timeouts m_timeouts;
    std::vector<std::unique_ptr<Station>> m_stations;
    std::map<base::MacAddress, Station*> m_byMac;
    std::vector<std::unique_ptr<Neighbour>> m_neighbours;
};

} // namespace simulator
