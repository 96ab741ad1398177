// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/Frame.h"
#include "simulator/IpSettings.h"
#include "simulator/Timeouts.h"

#include <optional>
#include <random>

namespace simulator {

/// Finds an address in 169.254.0.0/16 that nobody else on the network has, by asking for it (RFC 3927; the
/// times are shorter by choice, their proportions kept).
class LinkLocalClaim
{
public:
    using Done = std::function<void(const IpSettings&)>;

    static constexpr unsigned Probes = 3;

    /// `random` must outlive this.
    LinkLocalClaim(const gvcp::MacAddress& mac, TimerQueue& timers, FrameSink send, std::mt19937& random);

    static bool isLinkLocal(gvcp::Ipv4 address) { return gvcp::sameSubnet(address, Network, Mask); }

    /// Begins with the preferred address, if there is one. `interval` lies between two probes. Calls `done`
    /// when an address has been found; to announce it is left to the caller.
    void start(std::chrono::milliseconds interval, std::optional<gvcp::Ipv4> preferred, Done done);
    void stop();
    void heard(const ArpMessage& message);

private:
    static constexpr gvcp::Ipv4 Network = 0xA9FE0000;
    static constexpr gvcp::Ipv4 Mask = 0xFFFF0000;

    void tryAddress(gvcp::Ipv4 candidate);
    void probe(unsigned probesLeft);
    gvcp::Ipv4 someAddress();

    gvcp::MacAddress m_mac;
    Timeouts m_timeouts;
    FrameSink m_send;
    std::mt19937& m_random;
    std::chrono::milliseconds m_interval{0};
    std::optional<gvcp::Ipv4> m_candidate; ///< While one is being claimed.
    Done m_done;
};

} // namespace simulator
