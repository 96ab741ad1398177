// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/network/Exchange.h"

#include <map>
#include <optional>
#include <utility>

namespace sdk {

/// Finds out which cameras could be opened for exclusive control now: those whose control channel privilege
/// register reads 0. Asks all of them at once. The owner passes it what the network receives and gives it the
/// time.
class AccessCheck
{
public:
    enum class Answer
    {
        Pending,
        Accessible,
        NotAccessible, ///< Taken by an application, or refused.
        Silent,        ///< To the end, or not asked.
    };

    AccessCheck(Network& network, RequestIds& ids) : m_network(network), m_ids(ids) {}

    /// Asks the camera, unless it has been asked before; whether it has not.
    bool ask(std::size_t adapter, base::Ipv4 source, base::Ipv4 camera);

    /// Takes note of the answer to one of the questions, on whichever adapter it comes in. An answer that
    /// comes after its question was given up still counts. Ignores all else.
    void take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge);

    /// Asks again where it is time to, and gives up on those that stay silent.
    void proceed();

    /// When proceed() has something to do next, if anything.
    Clock::time_point nextStep() const { return m_nextStep; }

    bool isPending() const;

    Answer answer(std::size_t adapter, base::Ipv4 camera) const;
    /// What the register says; nothing when the camera has not told.
    std::optional<std::uint32_t> privilege(std::size_t adapter, base::Ipv4 camera) const;
    /// It refused to tell, as one that is held exclusively does.
    bool isRefused(std::size_t adapter, base::Ipv4 camera) const;

private:
    using Key = std::pair<base::Ipv4, std::size_t>; ///< Camera and adapter.

    const Exchange* find(std::size_t adapter, base::Ipv4 camera) const;

    Network& m_network;
    RequestIds& m_ids;
    std::map<Key, Exchange> m_questions;
    Clock::time_point m_nextStep = Clock::time_point::max();
};

/// Asks one camera, on the network's first adapter, and waits for the answer.
bool isAccessible(Network& network, base::Ipv4 source, base::Ipv4 camera);

} // namespace sdk
