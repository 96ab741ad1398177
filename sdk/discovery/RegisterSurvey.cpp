// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/RegisterSurvey.h"

#include "gvcp/Memory.h"
#include "gvcp/Registers.h"

#include <algorithm>

namespace sdk {

namespace {

using namespace std::chrono_literals;
namespace reg = gvcp::reg;

/// A camera that has left so many questions unanswered gets no more of them.
constexpr int EnoughSilences = 2;
/// For an answer. Cameras take 1 to 30 ms.
constexpr auto Wait = 150ms;

constexpr std::uint32_t StoredAddress[] = {reg::PersistentIp, reg::PersistentSubnetMask,
                                           reg::PersistentGateway};

} // namespace

RegisterSurvey::RegisterSurvey(Network& network, RequestIds& ids, const Subject& subject,
                               unsigned lossQuestions)
    : m_network(network),
      m_ids(ids),
      m_subject(subject),
      m_mostLossQuestions(lossQuestions)
{}

void RegisterSurvey::expect(const base::MacAddress& mac, bool canStoreAddress)
{
    if (m_expected.insert({mac, canStoreAddress}).second)
        m_isSettled = m_subject.isRefusing;
}

/// What there is to ask next, given what is known.
std::vector<std::uint32_t> RegisterSurvey::wanted() const
{
    const auto capability = value(reg::GvcpCapability);
    if (!capability)
        return {reg::GvcpCapability};
    std::vector<std::uint32_t> all{reg::MacHigh, reg::MacLow, reg::HeartbeatTimeout, reg::StreamChannelCount};
    const auto add = [&all](bool isThere, std::initializer_list<std::uint32_t> registers) {
        if (isThere)
            all.insert(all.end(), registers);
    };
    add((*capability & gvcp::Capability::ApplicationInControl) != 0,
        {reg::ApplicationPort, reg::ApplicationAddress});
    add((*capability & gvcp::Capability::HeartbeatOff) != 0, {reg::GvcpConfiguration});
    add(value(reg::StreamChannelCount).value_or(0) > 0, {reg::StreamPort, reg::StreamAddress});
    for (const auto& [mac, canStoreAddress] : m_expected) {
        const auto interface = interfaceOf(mac);
        if (!interface) {
            // Not the first one's, if that is known.
            add(macOf(0).has_value(), {reg::InterfaceCount});
            const auto count = std::min(value(reg::InterfaceCount).value_or(1), gvcp::MaxInterfaces);
            for (unsigned other = 1; other < count; ++other)
                add(true, {reg::ofInterface(other, reg::MacHigh), reg::ofInterface(other, reg::MacLow)});
            continue;
        }
        add((*capability & gvcp::Capability::LinkSpeed) != 0, {reg::ofInterface(*interface, reg::LinkSpeed)});
        if (canStoreAddress)
            for (const std::uint32_t each : StoredAddress)
                add(true, {reg::ofInterface(*interface, each)});
    }
    std::erase_if(all, [this](std::uint32_t each) { return m_asked.contains(each); });
    return all;
}

std::optional<base::MacAddress> RegisterSurvey::macOf(unsigned interface) const
{
    const auto high = value(reg::ofInterface(interface, reg::MacHigh));
    const auto low = value(reg::ofInterface(interface, reg::MacLow));
    if (!high || !low)
        return std::nullopt;
    base::MacAddress mac;
    base::writeU16(mac.bytes, 0, static_cast<std::uint16_t>(*high));
    base::writeU32(mac.bytes, 2, *low);
    return mac;
}

std::optional<unsigned> RegisterSurvey::interfaceOf(const base::MacAddress& mac) const
{
    for (unsigned interface = 0; interface < gvcp::MaxInterfaces; ++interface)
        if (macOf(interface) == mac)
            return interface;
    return std::nullopt;
}

bool RegisterSurvey::isOther(const base::MacAddress& mac) const
{
    return macOf(0).has_value() && !interfaceOf(mac).has_value();
}

std::optional<std::uint32_t> RegisterSurvey::value(std::uint32_t address) const
{
    const auto found = m_values.find(address);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::uint32_t> RegisterSurvey::valueOf(const base::MacAddress& mac, std::uint32_t ofFirst) const
{
    const auto interface = interfaceOf(mac);
    return interface ? value(reg::ofInterface(*interface, ofFirst)) : std::nullopt;
}

bool RegisterSurvey::take(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge)
{
    if (m_exchange && m_exchange->take(datagram, acknowledge))
        return true;
    if (datagram.source != m_subject.camera || acknowledge.command != gvcp::Command::ReadRegister)
        return false;
    const auto found = std::ranges::find(m_lossQuestions, acknowledge.id, &LossQuestion::id);
    if (found == m_lossQuestions.end())
        return false;
    found->isAnswered = true;
    return true;
}

void RegisterSurvey::proceed()
{
    if (m_exchange) {
        m_exchange->proceed();
        if (m_exchange->isPending())
            return;
        takeAnswer();
        m_exchange.reset();
    }
    if (!m_isSettled)
        askNext();
    else if (m_network.now() >= nextStep())
        askForLoss();
}

void RegisterSurvey::takeAnswer()
{
    const auto& answer = m_exchange->answer();
    if (!answer) {
        m_silences += m_exchange->isHeard() ? 0 : 1;
        m_asked.insert(m_asking.begin(), m_asking.end());
        return;
    }
    const bool isTold =
        answer->status == gvcp::Status::Success && answer->payload.size() >= 4 * m_asking.size();
    for (std::size_t i = 0; isTold && i < m_asking.size(); ++i)
        m_values[m_asking[i]] = base::readU32(answer->payload, 4 * i);
    // One that it has not got, among several, spoils them all.
    if (!isTold && m_asking.size() > 1)
        m_asksSeveral = false;
    else
        m_asked.insert(m_asking.begin(), m_asking.end());
    if (const auto capability = value(reg::GvcpCapability);
        capability && m_asking.size() == 1 && m_asking.front() == reg::GvcpCapability)
        m_asksSeveral = (*capability & gvcp::Capability::Concatenation) != 0;
}

void RegisterSurvey::askNext()
{
    m_asking = wanted();
    const bool isMute = m_asked.contains(reg::GvcpCapability) && !value(reg::GvcpCapability);
    if (m_asking.empty() || isMute || m_silences >= EnoughSilences) {
        m_isSettled = true;
        return;
    }
    if (!m_asksSeveral)
        m_asking.resize(1);
    m_exchange.emplace(
        m_network, m_ids,
        Exchange::Plan{.command = gvcp::Command::ReadRegister,
                       .payload = gvcp::encodeWords(m_asking),
                       .tries = 3,
                       .wait = Wait,
                       .send =
                           [this](auto packet) {
                               m_network.send(m_subject.adapter, m_subject.source, m_subject.camera, packet);
                           },
                       .isBelieved = [this](const Datagram& datagram,
                                            const auto&) { return datagram.source == m_subject.camera; }});
    m_exchange->proceed();
}

void RegisterSurvey::askForLoss()
{
    m_lossQuestions.push_back({m_ids.next(), m_network.now(), false});
    m_network.send(m_subject.adapter, m_subject.source, m_subject.camera,
                   gvcp::encodeCommand(gvcp::Command::ReadRegister, gvcp::FlagAcknowledge,
                                       m_lossQuestions.back().id,
                                       gvcp::encodeWords({reg::ControlChannelPrivilege})));
}

Clock::time_point RegisterSurvey::nextStep() const
{
    constexpr Clock::time_point atOnce{};
    constexpr Clock::time_point never = Clock::time_point::max();
    if (m_exchange)
        return m_exchange->isPending() ? m_exchange->nextStep() : atOnce;
    if (!m_isSettled)
        return atOnce;
    if (m_lossQuestions.empty())
        return m_mostLossQuestions > 0 ? atOnce : never;
    const LossQuestion& last = m_lossQuestions.back();
    const auto end = last.time + Wait;
    if (m_lossQuestions.size() < m_mostLossQuestions)
        return last.isAnswered ? atOnce : end;
    return last.isAnswered || m_network.now() >= end ? never : end;
}

unsigned RegisterSurvey::lossQuestions() const
{
    const auto ended = [this](const LossQuestion& each) {
        return each.isAnswered || m_network.now() >= each.time + Wait;
    };
    return static_cast<unsigned>(std::ranges::count_if(m_lossQuestions, ended));
}

unsigned RegisterSurvey::lossReplies() const
{
    return static_cast<unsigned>(std::ranges::count_if(m_lossQuestions, &LossQuestion::isAnswered));
}

} // namespace sdk
