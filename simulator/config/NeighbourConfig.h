// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <chrono>

namespace simulator {

/// A machine on the cameras' network that is none: it answers no command and no ping.
struct NeighbourConfig
{
    /// What it does again and again.
    enum class Asks
    {
        Nothing,
        Dhcp,         ///< It looks for a server, and takes no offer.
        ArpProbe,     ///< Whether anybody has its address, which it does not take.
        Announcement, ///< It tells that it has it.
    };

    base::MacAddress mac;
    base::Ipv4 address; ///< 0.0.0.0 for one that has none and wants none of its own.
    Asks asks = Asks::Nothing;
    std::chrono::milliseconds every{2000};

    /// Whether the address is its own: whoever asks for it by ARP is answered.
    bool hasAddress() const { return asks == Asks::Nothing || asks == Asks::Announcement; }
};

} // namespace simulator
