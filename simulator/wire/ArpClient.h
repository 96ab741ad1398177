// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/wire/Frame.h"
#include "simulator/wire/TimerQueue.h"

#include <deque>
#include <map>
#include <optional>

namespace simulator {

/// Finds out which MAC address an IPv4 address belongs to, for one interface, and remembers it for a while.
class ArpClient
{
public:
    using Done = std::function<void(std::optional<base::MacAddress>)>;

    static constexpr unsigned Requests = 3;
    /// Between two requests, and after the last one.
    static constexpr std::chrono::seconds Interval{1};
    /// For the same address; the one that has waited longest makes way.
    static constexpr std::size_t MaxWaiting = 3;

    /// `lifetime` is how long an address is remembered.
    ArpClient(const base::MacAddress& mac, std::chrono::milliseconds lifetime, TimerQueue& timers,
              FrameSink send);
    ArpClient(const ArpClient&) = delete;
    ArpClient& operator=(const ArpClient&) = delete;

    /// Calls `done` once: at once if the address is known, else when somebody says whose it is. With nothing
    /// when nobody does within `patience`, at most the time of all requests, or when it has to make way.
    /// `own` is the asking interface's address.
    void resolve(base::Ipv4 own, base::Ipv4 wanted, Done done,
                 std::optional<std::chrono::milliseconds> patience = {});
    /// A message that the interface with the address `own` hears. It learns from that what RFC 826 says.
    void heard(base::Ipv4 own, const ArpMessage& message);
    /// Forgets all addresses; who waits for one goes on waiting.
    void forget() { m_known.clear(); }
    /// Likewise, and asks for none any more; who waits is never called.
    void stop();

private:
    struct Known
    {
        base::MacAddress mac;
        TimerQueue::Clock::time_point until;
    };

    struct Waiting
    {
        unsigned number; ///< Tells it from all others.
        Done done;
    };

    /// An address that is being asked for; somebody waits for it.
    struct Query
    {
        explicit Query(TimerQueue& timers) : timeouts(timers) {}

        Timeouts timeouts;
        std::deque<Waiting> waiting;
    };

    const Known* known(base::Ipv4 address) const;
    void ask(base::Ipv4 own, base::Ipv4 wanted, unsigned requestsLeft);
    void giveUp(base::Ipv4 wanted, unsigned number);
    void finish(base::Ipv4 wanted, std::optional<base::MacAddress> mac);

    base::MacAddress m_mac;
    std::chrono::milliseconds m_lifetime;
    TimerQueue& m_timers;
    FrameSink m_send;
    std::map<base::Ipv4, Known> m_known;
    std::map<base::Ipv4, Query> m_queries; ///< By the address that is asked for.
    unsigned m_lastNumber = 0;
};

} // namespace simulator
