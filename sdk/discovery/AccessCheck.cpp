// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/AccessCheck.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"

#include <algorithm>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// A camera answers within 30 ms. Four tries in 600 ms also get through a network that loses a tenth each
/// way, and are over before the discovery window is, for every camera that answered promptly.
constexpr int Tries = 4;
constexpr auto TimeOfOneTry = 150ms;

/// Whether the next try may do better: a camera exists that answers BAD_ALIGNMENT once for nothing.
bool mayPass(gvcp::Status status)
{
    return status == gvcp::Status::Busy || status == gvcp::Status::BadAlignment;
}

} // namespace

bool AccessCheck::ask(std::size_t adapter, base::Ipv4 source, base::Ipv4 camera)
{
    if (find(adapter, camera))
        return false;
    m_questions.push_back({.adapter = adapter, .source = source, .camera = camera, .id = m_ids.next()});
    send(m_questions.back());
    m_nextStep = std::min(m_nextStep, m_questions.back().nextTry);
    return true;
}

void AccessCheck::take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge)
{
    if (acknowledge.command != gvcp::Command::ReadRegister)
        return;
    const auto question = std::find_if(m_questions.begin(), m_questions.end(), [&](const Question& asked) {
        return asked.id == acknowledge.id && asked.camera == datagram.source;
    });
    if (question == m_questions.end() || question->isAnswered)
        return;
    if (mayPass(acknowledge.status)) {
        question->isHeard = true;
        return;
    }
    // Cameras exist whose acknowledges are longer than the value that was asked for.
    const bool isOpen = acknowledge.status == gvcp::Status::Success && acknowledge.payload.size() >= 4 &&
                        base::readU32(acknowledge.payload, 0) == gvcp::Privilege::Open;
    question->answer = isOpen ? Answer::Accessible : Answer::NotAccessible;
    question->isAnswered = true;
}

void AccessCheck::proceed()
{
    const auto now = m_network.now();
    if (now < m_nextStep)
        return;
    m_nextStep = Clock::time_point::max();
    for (Question& question : m_questions) {
        if (question.answer == Answer::Pending && question.nextTry <= now)
            send(question);
        if (question.answer == Answer::Pending)
            m_nextStep = std::min(m_nextStep, question.nextTry);
    }
}

bool AccessCheck::isPending() const
{
    return std::any_of(m_questions.begin(), m_questions.end(),
                       [](const Question& question) { return question.answer == Answer::Pending; });
}

AccessCheck::Answer AccessCheck::answer(std::size_t adapter, base::Ipv4 camera) const
{
    const Question* question = find(adapter, camera);
    return question ? question->answer : Answer::Silent;
}

const AccessCheck::Question* AccessCheck::find(std::size_t adapter, base::Ipv4 camera) const
{
    const auto found = std::find_if(m_questions.begin(), m_questions.end(), [=](const Question& question) {
        return question.adapter == adapter && question.camera == camera;
    });
    return found == m_questions.end() ? nullptr : &*found;
}

void AccessCheck::send(Question& question)
{
    if (question.tries == Tries) {
        question.answer = question.isHeard ? Answer::NotAccessible : Answer::Silent;
        return;
    }
    ++question.tries;
    question.nextTry = m_network.now() + TimeOfOneTry;
    const auto payload = gvcp::encodeWords({gvcp::reg::ControlChannelPrivilege});
    m_network.send(
        question.adapter, question.source, question.camera,
        gvcp::encodeCommand(gvcp::Command::ReadRegister, gvcp::FlagAcknowledge, question.id, payload));
}

} // namespace sdk
