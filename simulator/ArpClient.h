// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/Frame.h"
#include "simulator/TimerQueue.h"

#include <map>
#include <optional>
#include <vector>

namespace simulator {

/// Finds out which MAC address an IPv4 address belongs to, for one interface.
class ArpClient
{
public:
    using Done = std::function<void(std::optional<gvcp::MacAddress>)>;

    /// How long an answer is waited for.
    static constexpr std::chrono::milliseconds Patience{100};
    /// How long an answer is remembered.
    static constexpr std::chrono::seconds Lifetime{60};

    ArpClient(const gvcp::MacAddress& mac, TimerQueue& timers, FrameSink send);
    ArpClient(const ArpClient&) = delete;
    ArpClient& operator=(const ArpClient&) = delete;

    /// Calls `done` once: at once if the address is known, else when it has been asked for, with nothing when
    /// nobody answers. `own` is the asking interface's address.
    void resolve(gvcp::Ipv4 own, gvcp::Ipv4 wanted, Done done);
    void heard(const ArpMessage& message);

private:
    struct Known
    {
        gvcp::MacAddress mac;
        TimerQueue::Clock::time_point until;
    };

    void finish(gvcp::Ipv4 wanted, std::optional<gvcp::MacAddress> mac);

    gvcp::MacAddress m_mac;
    TimerQueue& m_timers;
    FrameSink m_send;
    std::map<gvcp::Ipv4, Known> m_known;
    std::map<gvcp::Ipv4, std::vector<Done>> m_waiting;
};

} // namespace simulator
