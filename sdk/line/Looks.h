// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/DiscoveryAck.h"
#include "gvcp/Packet.h"
#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <map>
#include <optional>

namespace sdk {

/// A camera as it answered, and where.
struct Sighting
{
    gvcp::DiscoveryAck identity;
    std::size_t adapter = 0; ///< Index of Network::adapters().
    Clock::time_point asked; ///< It answered a question of then.
};

/// Asks all cameras who they are, for all who wait for one to appear: one question serves them together,
/// since every camera answers it.
class Looks
{
public:
    Looks(Network& network, RequestIds& ids) : m_network(network), m_ids(ids) {}

    /// Asks, if that is due for somebody who has been waiting since then.
    void proceed(Clock::time_point since);
    Clock::time_point nextStep(Clock::time_point since) const;

    /// The camera that answers one of the questions; nothing for another acknowledge.
    std::optional<Sighting> sightingIn(const Datagram& datagram,
                                       const gvcp::AcknowledgePacket& acknowledge) const;

private:
    Network& m_network;
    RequestIds& m_ids;
    std::optional<Clock::time_point> m_last;
    std::map<std::uint16_t, Clock::time_point> m_times; ///< Of those that may still be answered.
};

} // namespace sdk
