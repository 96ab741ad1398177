// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/config/NeighbourConfig.h"
#include "simulator/wire/Frame.h"
#include "simulator/wire/TimerQueue.h"

namespace simulator {

/// A machine on the wire that is no camera. The timer queue must outlive this. One thread.
class Neighbour
{
public:
    Neighbour(const NeighbourConfig& config, TimerQueue& timers, FrameSink send);

    const base::MacAddress& mac() const { return m_config.mac; }
    /// A frame for its MAC, or for all.
    void receive(const Frame& frame);

private:
    void askAgain();
    Frame question();

    NeighbourConfig m_config;
    FrameSink m_send;
    Timeouts m_timeouts;
    std::uint32_t m_transaction; ///< Of its latest question for a DHCP server.
};

} // namespace simulator
