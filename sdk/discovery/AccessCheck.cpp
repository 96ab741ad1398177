// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/AccessCheck.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"

#include <algorithm>

namespace sdk {

namespace {

using namespace std::chrono_literals;

Exchange questionFor(Network& network, RequestIds& ids, std::size_t adapter, base::Ipv4 source,
                     base::Ipv4 camera)
{
    // A camera answers within 30 ms. Four tries in 600 ms also get through a network that loses a tenth each
    // way, and are over before the discovery window is, for every camera that answered promptly.
    return {network,
            ids,
            {.command = gvcp::Command::ReadRegister,
             .payload = gvcp::encodeWords({gvcp::reg::ControlChannelPrivilege}),
             .tries = 4,
             .wait = 150ms,
             .send = [&network, adapter, source,
                      camera](auto packet) { network.send(adapter, source, camera, packet); },
             .isBelieved = [camera](const Datagram& datagram,
                                    const auto&) { return datagram.source == camera; }}};
}

/// The register's value, if that is what the camera answered.
std::optional<std::uint32_t> valueIn(const Exchange& question)
{
    const auto& answer = question.answer();
    // Cameras exist whose acknowledges are longer than the value that was asked for.
    if (!answer || answer->status != gvcp::Status::Success || answer->payload.size() < 4)
        return std::nullopt;
    return base::readU32(answer->payload, 0);
}

AccessCheck::Answer meaningOf(const Exchange& question)
{
    if (question.isPending())
        return AccessCheck::Answer::Pending;
    if (!question.answer() && !question.isHeard())
        return AccessCheck::Answer::Silent;
    return valueIn(question) == gvcp::Privilege::Open ? AccessCheck::Answer::Accessible
                                                      : AccessCheck::Answer::NotAccessible;
}

} // namespace

bool AccessCheck::ask(std::size_t adapter, base::Ipv4 source, base::Ipv4 camera)
{
    if (find(adapter, camera))
        return false;
    const auto added =
        m_questions.emplace(Key{camera, adapter}, questionFor(m_network, m_ids, adapter, source, camera));
    Exchange& exchange = added.first->second;
    exchange.proceed();
    m_nextStep = std::min(m_nextStep, exchange.nextStep());
    return true;
}

void AccessCheck::take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge)
{
    for (auto each = m_questions.lower_bound({datagram.source, 0});
         each != m_questions.end() && each->first.first == datagram.source; ++each) {
        if (!each->second.take(datagram, acknowledge))
            continue;
        m_nextStep = std::min(m_nextStep, each->second.nextStep());
        return;
    }
}

void AccessCheck::proceed()
{
    if (m_network.now() < m_nextStep)
        return;
    m_nextStep = Clock::time_point::max();
    for (auto& [key, exchange] : m_questions) {
        exchange.proceed();
        m_nextStep = std::min(m_nextStep, exchange.nextStep());
    }
}

bool AccessCheck::isPending() const
{
    return std::any_of(m_questions.begin(), m_questions.end(),
                       [](const auto& question) { return question.second.isPending(); });
}

AccessCheck::Answer AccessCheck::answer(std::size_t adapter, base::Ipv4 camera) const
{
    const Exchange* question = find(adapter, camera);
    return question ? meaningOf(*question) : Answer::Silent;
}

std::optional<std::uint32_t> AccessCheck::privilege(std::size_t adapter, base::Ipv4 camera) const
{
    const Exchange* question = find(adapter, camera);
    return question ? valueIn(*question) : std::nullopt;
}

bool AccessCheck::isRefused(std::size_t adapter, base::Ipv4 camera) const
{
    const Exchange* question = find(adapter, camera);
    return question && question->answer() && question->answer()->status == gvcp::Status::AccessDenied;
}

const Exchange* AccessCheck::find(std::size_t adapter, base::Ipv4 camera) const
{
    const auto found = m_questions.find({camera, adapter});
    return found == m_questions.end() ? nullptr : &found->second;
}

bool isAccessible(Network& network, base::Ipv4 source, base::Ipv4 camera)
{
    RequestIds ids;
    Exchange question = questionFor(network, ids, 0, source, camera);
    question.run();
    return meaningOf(question) == AccessCheck::Answer::Accessible;
}

} // namespace sdk
