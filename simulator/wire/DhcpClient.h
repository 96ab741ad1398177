// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "simulator/wire/Frame.h"
#include "simulator/wire/TimerQueue.h"

#include <optional>
#include <random>

namespace simulator {

/// Obtains a lease for an interface without an address. The lease is kept for good: cameras here are reset
/// long before it would have to be renewed.
class DhcpClient
{
public:
    using Done = std::function<void(std::optional<base::IpSettings>)>;

    static constexpr std::uint16_t Port = 68;

    /// A client's first message: whether there is a server.
    static UdpDatagram discover(const base::MacAddress& mac, std::uint32_t transaction);

    /// `random` must outlive this.
    DhcpClient(const base::MacAddress& mac, TimerQueue& timers, FrameSink send, std::mt19937& random);

    /// Tries for that long at the most, then calls `done` with nothing. What was under way is given up.
    void start(std::chrono::milliseconds patience, Done done);
    void stop();
    /// A datagram for the client's port.
    void receive(const UdpDatagram& datagram);

private:
    enum class State
    {
        Idle,
        Selecting,
        Requesting
    };
    struct Offer
    {
        base::Ipv4 address;
        base::Ipv4 server;
    };

    void tryAgain(std::chrono::milliseconds pause);
    void sendMessage();
    void finish(const std::optional<base::IpSettings>& lease);

    base::MacAddress m_mac;
    Timeouts m_timeouts;
    FrameSink m_send;
    std::mt19937& m_random;
    State m_state = State::Idle;
    std::uint32_t m_transaction = 0;
    Offer m_offer;
    Done m_done;
};

} // namespace simulator
