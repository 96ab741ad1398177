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

AccessCheck::Answer meaningOf(const Exchange& question)
{
    if (question.isPending())
        return AccessCheck::Answer::Pending;
    const auto& answer = question.answer();
    if (!answer)
        return question.isHeard() ? AccessCheck::Answer::NotAccessible : AccessCheck::Answer::Silent;
    // Cameras exist whose acknowledges are longer than the value that was asked for.
    const bool isOpen = answer->status == gvcp::Status::Success && answer->payload.size() >= 4 &&
                        base::readU32(answer->payload, 0) == gvcp::Privilege::Open;
    return isOpen ? AccessCheck::Answer::Accessible : AccessCheck::Answer::NotAccessible;
}

} // namespace

bool AccessCheck::ask(std::size_t adapter, base::Ipv4 source, base::Ipv4 camera)
{
    if (find(adapter, camera))
        return false;
    m_questions.push_back({adapter, camera, questionFor(m_network, m_ids, adapter, source, camera)});
    Exchange& exchange = m_questions.back().exchange;
    exchange.proceed();
    m_nextStep = std::min(m_nextStep, exchange.nextStep());
    return true;
}

void AccessCheck::take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge)
{
    for (Question& question : m_questions) {
        if (!question.exchange.take(datagram, acknowledge))
            continue;
        m_nextStep = std::min(m_nextStep, question.exchange.nextStep());
        return;
    }
}

void AccessCheck::proceed()
{
    if (m_network.now() < m_nextStep)
        return;
    m_nextStep = Clock::time_point::max();
    for (Question& question : m_questions) {
        question.exchange.proceed();
        m_nextStep = std::min(m_nextStep, question.exchange.nextStep());
    }
}

bool AccessCheck::isPending() const
{
    return std::any_of(m_questions.begin(), m_questions.end(),
                       [](const Question& question) { return question.exchange.isPending(); });
}

AccessCheck::Answer AccessCheck::answer(std::size_t adapter, base::Ipv4 camera) const
{
    const Question* question = find(adapter, camera);
    return question ? meaningOf(question->exchange) : Answer::Silent;
}

const AccessCheck::Question* AccessCheck::find(std::size_t adapter, base::Ipv4 camera) const
{
    const auto found = std::find_if(m_questions.begin(), m_questions.end(), [=](const Question& question) {
        return question.adapter == adapter && question.camera == camera;
    });
    return found == m_questions.end() ? nullptr : &*found;
}

bool isAccessible(Network& network, base::Ipv4 source, base::Ipv4 camera)
{
    RequestIds ids;
    Exchange question = questionFor(network, ids, 0, source, camera);
    question.run();
    return meaningOf(question) == AccessCheck::Answer::Accessible;
}

} // namespace sdk
