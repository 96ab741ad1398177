// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"
#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <vector>

namespace sdk {

/// Finds out which cameras could be opened for exclusive control now: those whose control channel privilege
/// register reads 0. Asks all of them at once, and each again while it is silent. The owner passes it what
/// the network receives and gives it the time.
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

    /// Takes note of an acknowledge that answers one of the questions, though it may have been given up by
    /// now, on whichever adapter it comes in; ignores all others.
    void take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge);

    /// Asks again where it is time to, and gives up on those that stay silent.
    void proceed();

    /// When proceed() has something to do next, if anything.
    Clock::time_point nextStep() const { return m_nextStep; }

    bool isPending() const;

    Answer answer(std::size_t adapter, base::Ipv4 camera) const;

private:
    struct Question
    {
        std::size_t adapter;
        base::Ipv4 source;
        base::Ipv4 camera;
        std::uint16_t id; ///< The same for all tries.
        int tries = 0;
        Clock::time_point nextTry{};
        Answer answer = Answer::Pending;
        bool isHeard = false;    ///< It has said at least that it is busy.
        bool isAnswered = false; ///< By the camera: no later datagram changes it.
    };

    const Question* find(std::size_t adapter, base::Ipv4 camera) const;
    void send(Question& question);

    Network& m_network;
    RequestIds& m_ids;
    std::vector<Question> m_questions;
    Clock::time_point m_nextStep = Clock::time_point::max();
};

} // namespace sdk
