// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "simulator/wire/Frame.h"
#include "simulator/wire/TimerQueue.h"

#include <optional>
#include <random>

namespace simulator {

/// Finds an address in 169.254.0.0/16 that nobody else on the network has, by asking for it (RFC 3927; the
/// times are shorter by choice, their proportions kept).
class LinkLocalClaim
{
public:
    using Done = std::function<void(const base::IpSettings&)>;

    static constexpr unsigned Probes = 3;

    /// `random` must outlive this.
    LinkLocalClaim(const base::MacAddress& mac, TimerQueue& timers, FrameSink send, std::mt19937& random);

    /// Begins with the preferred address, if there is one. `interval` lies between two probes. Calls `done`
    /// when an address has been found; to announce it is left to the caller.
    void start(std::chrono::milliseconds interval, std::optional<base::Ipv4> preferred, Done done);
    void stop();
    void heard(const ArpMessage& message);

private:
    void tryAddress(base::Ipv4 candidate);
    void probe(unsigned probesLeft);
    base::Ipv4 someAddress();

    base::MacAddress m_mac;
    Timeouts m_timeouts;
    FrameSink m_send;
    std::mt19937& m_random;
    std::chrono::milliseconds m_interval{0};
    std::optional<base::Ipv4> m_candidate; ///< While one is being claimed.
    Done m_done;
};

} // namespace simulator
