// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/DiscoveryAck.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <functional>
#include <string>
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
    RZ_CC_SIGHTING sighting{};   ///< What only a look finds out; without the record.
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

/// What a look wants to know beyond the list.
struct LookPlan
{
    Clock::duration time{};     ///< How long it listens, if that is longer than the list takes.
    unsigned lossQuestions = 0; ///< To each camera in reach.
    std::function<void(const FoundCamera&)> onCamera; ///< As soon as it is known whether it is accessible,
                                                      ///< and what its registers tell.
    std::function<void(const Arrival&)> onArrival;
    std::function<bool()> isOver = [] { return false; }; ///< Whether to end at once, asked at each step.
};

/// The same, and asks the cameras in reach for their registers (RegisterSurvey). The ids go on from one look
/// to the next, so that no late answer to the one counts as an early one to the other.
FoundCameras lookForCameras(Network& network, RequestIds& ids, const IsKnown& isKnown, const LookPlan& plan);

} // namespace sdk
