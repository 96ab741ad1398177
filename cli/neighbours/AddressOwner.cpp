// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/AddressOwner.h"

#include "cli/neighbours/NeighbourJudge.h"
#include "cli/neighbours/NeighbourWatch.h"
#include "cli/neighbours/Ping.h"

#include <array>
#include <net/if.h>
#include <system_error>

namespace cli {
namespace {

using namespace std::chrono_literals;
using Verdict = NeighbourJudge::Verdict;

constexpr auto TimeBetweenLooks = 100ms;

/// Longer than the kernel takes to doubt an entry, ask its owner, and then everybody twice.
constexpr auto Patience = 30s;

QString adapterName(int index)
{
    std::array<char, IF_NAMESIZE> name{};
    ::if_indextoname(static_cast<unsigned>(index), name.data());
    return QString::fromLocal8Bit(name.data());
}

/// Whether the kernel asks for the neighbour only when there is something to send to it.
bool needsProvocation(int state)
{
    return state == NUD_NONE || state == NUD_FAILED || state == NUD_STALE;
}

/// The kernel's ARP for one address, from the first look at what it knows already.
class ArpInquiry
{
public:
    explicit ArpInquiry(const OwnerQuestion& question)
        : m_watch(question.adapterIndex, question.address),
          m_judge(question.camera, question.otherCameras)
    {}

    Verdict proceed()
    {
        Verdict verdict = Verdict::Pending;
        for (const Neighbour& entry : m_watch.look()) {
            m_entry = entry;
            const auto age = std::chrono::steady_clock::now() - m_begin;
            verdict = m_judge.judge(entry, std::chrono::duration_cast<std::chrono::milliseconds>(age));
        }
        if (verdict == Verdict::Pending && needsProvocation(m_entry.state))
            m_watch.provoke();
        return verdict;
    }

    const Neighbour& entry() const { return m_entry; }

private:
    const std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    NeighbourWatch m_watch;
    NeighbourJudge m_judge;
    Neighbour m_entry;
};

/// Both ways of asking, side by side.
class OwnerSearch
{
public:
    explicit OwnerSearch(const OwnerQuestion& question) : m_question(question)
    {
        proceedByArp(); // What the kernel knows from before, it must tell before anybody is asked.
        m_ping.emplace(adapterName(question.adapterIndex), QString::fromStdString(question.address.toText()));
    }

    OwnerAnswer run()
    {
        const auto end = std::chrono::steady_clock::now() + Patience;
        while (!isDone()) {
            if (std::chrono::steady_clock::now() >= end) {
                m_answer.arpFailure = "the kernel comes to no end with its own questions";
                break;
            }
            m_ping->wait(TimeBetweenLooks);
            // In this order: whose answer to ping it was, the look after it tells.
            m_pinged = m_ping->outcome();
            proceedByArp();
        }
        if (m_pinged == Ping::Outcome::Failure)
            m_answer.pingFailure = m_ping->failure();
        return m_answer;
    }

private:
    void proceedByArp()
    {
        try {
            if (!m_arp)
                m_arp.emplace(m_question);
            if (m_answer.arpFailure.empty())
                m_verdict = m_arp->proceed();
        } catch (const std::system_error& error) {
            m_verdict = Verdict::Unknown;
            m_answer.arpFailure = error.what();
        }
    }

    /// Sets the owner when there is one.
    bool isDone()
    {
        const Neighbour entry = m_arp ? m_arp->entry() : Neighbour();
        if (m_pinged == Ping::Outcome::Answered) {
            if (entry.mac != m_question.camera)
                m_answer.owner = {entry.mac, true, {}};
            return true;
        }
        switch (m_verdict) {
        case Verdict::Owner:
            m_answer.owner = {entry.mac, false, {}};
            return true;
        case Verdict::PastOwner:
            m_answer.owner = {entry.mac, false, entry.sinceConfirmed};
            return true;
        case Verdict::Nobody:
        case Verdict::Unknown:
            return m_pinged != Ping::Outcome::Pending;
        case Verdict::Pending:
            break;
        }
        return false;
    }

    const OwnerQuestion& m_question;
    OwnerAnswer m_answer;
    std::optional<ArpInquiry> m_arp;
    std::optional<Ping> m_ping;
    Verdict m_verdict = Verdict::Pending;
    Ping::Outcome m_pinged = Ping::Outcome::Pending;
};

} // namespace

OwnerAnswer findAddressOwner(const OwnerQuestion& question)
{
    if (question.adapterIndex == 0) {
        constexpr const char* reason = "the adapter that heard the camera is gone";
        return {{}, reason, reason};
    }
    return OwnerSearch(question).run();
}

} // namespace cli
