// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/NeighbourJudge.h"

#include <algorithm>
#include <utility>

namespace cli {
namespace {

using namespace std::chrono_literals;

constexpr int EnoughSilences = 2;

/// Times come from two clocks, the kernel's in steps of some milliseconds.
constexpr auto Slack = 50ms;

/// So long an owner from before has to answer a ping, which says more of it than the table does.
constexpr auto PatienceWithPastOwner = 2s;

bool isGivenUp(int state)
{
    return state == NUD_NONE || state == NUD_FAILED;
}

} // namespace

NeighbourJudge::NeighbourJudge(const base::MacAddress& camera, std::set<base::MacAddress> camerasElsewhere)
    : m_camera(camera),
      m_camerasElsewhere(std::move(camerasElsewhere))
{}

NeighbourJudge::Verdict NeighbourJudge::judge(const Neighbour& entry, std::chrono::milliseconds now)
{
    if (!m_confirmedBefore)
        m_confirmedBefore = entry.state == NUD_NONE ? -2 * Slack : now - entry.sinceConfirmed;
    const int previousState = std::exchange(m_previousState, entry.state);
    if (previousState == NUD_INCOMPLETE && isGivenUp(entry.state))
        ++m_silences;

    if (entry.state == NUD_REACHABLE)
        return judgeReachable(entry, now);
    if ((entry.state & (NUD_PERMANENT | NUD_NOARP)) != 0)
        return Verdict::Unknown;
    return m_silences >= EnoughSilences ? Verdict::Nobody : Verdict::Pending;
}

NeighbourJudge::Verdict NeighbourJudge::judgeReachable(const Neighbour& entry,
                                                       std::chrono::milliseconds now) const
{
    if (entry.mac == m_camera)
        return Verdict::Unknown;
    if (now - entry.sinceConfirmed > *m_confirmedBefore + Slack)
        return Verdict::Owner;
    if (entry.mac && m_camerasElsewhere.contains(*entry.mac))
        return Verdict::Unknown;
    return now < PatienceWithPastOwner ? Verdict::Pending : Verdict::PastOwner;
}

} // namespace cli
