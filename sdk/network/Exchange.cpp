// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/Exchange.h"

#include "gvcp/PendingAck.h"

#include <algorithm>
#include <utility>

namespace sdk {

namespace {

/// A camera that has said so often that it is busy has said enough.
constexpr int MaxBusy = 5;

} // namespace

Exchange::Exchange(Network& network, RequestIds& ids, Plan plan)
    : m_network(network),
      m_ids(ids),
      m_plan(std::move(plan)),
      m_id(ids.next()),
      m_nextStep(network.now()),
      m_end(m_nextStep + m_plan.mostTime)
{}

void Exchange::proceed()
{
    const auto now = m_network.now();
    if (!isPending() || now < m_nextStep)
        return;
    const bool isTimeUsedUp = m_plan.mostTime > Clock::duration::zero() && now >= m_end;
    if (m_tries == m_plan.tries || isTimeUsedUp) {
        m_isGivenUp = true;
        return;
    }
    ++m_tries;
    ++m_triesWithId;
    m_nextStep = now + m_plan.wait;
    m_plan.send(gvcp::encodeCommand(m_plan.command, m_plan.flags, m_id, m_plan.payload));
}

bool Exchange::take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge)
{
    const bool asksForTime = acknowledge.command == gvcp::PendingCommand;
    const bool fits = acknowledge.id == m_id && (asksForTime || acknowledge.command == m_plan.command);
    if (!fits || m_answer || !m_plan.isBelieved(datagram, acknowledge))
        return false;
    if (asksForTime) {
        if (const auto time = gvcp::parsePendingAck(acknowledge.payload))
            giveTime(*time);
        return true;
    }
    m_isHeard = true;
    if (!asksAnewAfter(acknowledge.status))
        m_answer = {acknowledge.status, {acknowledge.payload.begin(), acknowledge.payload.end()}};
    return true;
}

void Exchange::giveTime(std::chrono::milliseconds time)
{
    const auto wanted = std::min(m_end, m_network.now() + time + m_plan.wait);
    m_nextStep = std::max(m_nextStep, wanted);
}

/// If the next try may do better, prepares it.
bool Exchange::asksAnewAfter(gvcp::Status status)
{
    const auto now = m_network.now();
    if (status == gvcp::Status::Busy && ++m_busy < MaxBusy)
        m_nextStep = std::min(m_nextStep, now + m_plan.wait);
    else if (status == gvcp::Status::BadAlignment && !std::exchange(m_wasMisaligned, true))
        m_nextStep = now;
    else
        return false;
    m_id = m_ids.next();
    m_triesWithId = 0;
    if (m_plan.areRefusedTriesFree)
        --m_tries;
    return true;
}

const std::optional<Exchange::Answer>& Exchange::run()
{
    for (proceed(); isPending(); proceed()) {
        const auto datagram = m_network.receive(m_nextStep);
        if (const auto acknowledge = datagram ? gvcp::parseAcknowledge(datagram->payload) : std::nullopt)
            take(*datagram, *acknowledge);
    }
    return m_answer;
}

} // namespace sdk
