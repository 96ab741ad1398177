// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"
#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <functional>
#include <optional>

namespace sdk {

/// One command to a camera and what comes of it. It is sent again, with the same id, while nobody answers. A
/// camera that could not answer just then is asked anew, with another id, so that the refusal is not believed
/// twice when it is heard twice: one that is busy, at the next try's time; one that answers BAD_ALIGNMENT, at
/// once, as cameras exist that do so once for nothing.
///
/// Whoever has nothing else to do meanwhile calls run(). Who has several exchanges under way, or waits for
/// other things too, gives each the time (proceed) and what the network receives (take).
class Exchange
{
public:
    struct Plan
    {
        gvcp::Command command;
        std::uint8_t flags = gvcp::FlagAcknowledge;
        base::Bytes payload;
        int tries;            ///< How often it is sent at most.
        Clock::duration wait; ///< For an answer, after each try.
        /// Tries that the camera refuses so are not counted; but when it is busy the fifth time, that is its
        /// answer.
        bool areRefusedTriesFree = false;
        /// A camera that asks for more time (PENDING_ACK) gets it, up to so long after the first try.
        Clock::duration mostTime{};
        std::function<void(base::ByteView packet)> send;
        /// Whether an acknowledge of this command is to be believed, or a PENDING_ACK: the ids fit.
        std::function<bool(const Datagram&, const gvcp::AcknowledgePacket&)> isBelieved;
    };

    struct Answer
    {
        gvcp::Status status;
        base::Bytes payload;
    };

    Exchange(Network& network, RequestIds& ids, Plan plan);

    /// Sends what is due, or gives up.
    void proceed();
    /// When proceed() has something to do next; far in the future when that is never.
    Clock::time_point nextStep() const { return isPending() ? m_nextStep : Clock::time_point::max(); }
    /// Takes note of the answer, though the exchange may have been given up by now; ignores all else. Whether
    /// it was not ignored.
    bool take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge);

    /// Neither answered nor given up.
    bool isPending() const { return !m_answer && !m_isGivenUp; }
    const std::optional<Answer>& answer() const { return m_answer; }
    /// The camera has answered, or has at least refused for the time being.
    bool isHeard() const { return m_isHeard; }
    /// The answer came to a try that was not the first with that id.
    bool wasSilentAtFirst() const { return m_triesWithId > 1; }

    /// All of it, to its end.
    const std::optional<Answer>& run();

private:
    void giveTime(std::chrono::milliseconds time);
    bool asksAnewAfter(gvcp::Status status);

    Network& m_network;
    RequestIds& m_ids;
    Plan m_plan;
    std::uint16_t m_id;
    int m_tries = 0;
    int m_triesWithId = 0; ///< The present one.
    int m_busy = 0;
    bool m_wasMisaligned = false;
    bool m_isHeard = false;
    bool m_isGivenUp = false;
    Clock::time_point m_nextStep;
    Clock::time_point m_end; ///< Of the time that the camera may ask for.
    std::optional<Answer> m_answer;
};

} // namespace sdk
