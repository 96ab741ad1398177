// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/DiscoveryAck.h"
#include "sdk/network/Network.h"

#include <functional>
#include <vector>

namespace sdk {

/// One camera as one adapter heard it.
struct FoundCamera
{
    gvcp::DiscoveryAck identity; ///< All of it from one packet, the latest.
    std::size_t adapter = 0;     ///< Index of Network::adapters().
    base::Ipv4 adapterAddress;   ///< The adapter's address in the camera's subnet, else its first one.
    bool isReachable = false;    ///< The camera is in the adapter's subnet.
    bool isAccessible = false;   ///< Reachable, and its control channel is free.
    bool isProven = false;       ///< Somebody answered commands at its address.
    bool isConsistent = false;   ///< The answer came from the address that it names.
};

struct FoundCameras
{
    std::vector<FoundCamera> cameras;
    std::vector<std::string> failures; ///< "eth1: nothing could be sent" for each adapter where that is so.
};

using IsKnown = std::function<bool(const base::MacAddress&, const Adapter&)>;

/// Asks for cameras on all adapters at once, several times, and listens for as long as a camera may hold its
/// answer back; asks the reachable ones meanwhile whether they are accessible. One entry for each camera and
/// adapter, by MAC and adapter in a lasting order. What `isKnown` names is never crowded out by floods of
/// other answers, nor are answers that come from the address that they name by those that do not.
FoundCameras enumerateCameras(Network& network, const IsKnown& isKnown);

} // namespace sdk
