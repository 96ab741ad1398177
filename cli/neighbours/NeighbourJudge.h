// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/neighbours/NeighbourWatch.h"

#include <optional>
#include <set>

namespace cli {

/// Says from the kernel's neighbour table whether somebody has an address, while the kernel asks for it.
///
/// It asks by ARP three times, a second apart, then gives up; twice, as packets get lost. It asks nobody as
/// long as it is sure of an entry, for up to 45 seconds, and somebody else first about one that it doubts.
class NeighbourJudge
{
public:
    enum class Verdict
    {
        Pending,
        Nobody,    ///< Has answered.
        Owner,     ///< Has answered now.
        PastOwner, ///< Had it before; whether it has it still, the kernel does not ask.
        Unknown,   ///< The kernel asks nobody, and what it knows is no answer.
    };

    /// Old entries of the camera that gets the address, and of those that are elsewhere now, are no answer;
    /// of the former, new ones neither.
    NeighbourJudge(const base::MacAddress& camera, std::set<base::MacAddress> camerasElsewhere);

    /// What there is to say after the entry's next state, which it had that long after the judge's beginning;
    /// the first one from before the kernel was made to ask.
    Verdict judge(const Neighbour& entry, std::chrono::milliseconds now);

private:
    Verdict judgeReachable(const Neighbour& entry, std::chrono::milliseconds now) const;

    base::MacAddress m_camera;
    std::set<base::MacAddress> m_camerasElsewhere;
    std::optional<std::chrono::milliseconds> m_confirmedBefore; ///< When, as of the first entry.
    int m_previousState = NUD_NONE;
    int m_silences = 0; ///< How often the kernel asked everybody and gave up.
};

} // namespace cli
