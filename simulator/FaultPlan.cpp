// SPDX-License-Identifier: Apache-2.0
#include "simulator/FaultPlan.h"

namespace simulator {

void FaultPlan::add(Fault fault)
{
    // A cable is not pulled again when somebody has put it back.
    if (fault.action == FaultAction::Vanish && !fault.times)
        fault.times = 1;
    m_entries.push_back({fault, 0});
}

std::optional<Fault> FaultPlan::hit(Request request)
{
    std::optional<Fault> result;
    for (Entry& entry : m_entries) {
        if (!entry.fault.concerns(request))
            continue;
        ++entry.seen;
        if (result || !isDue(entry))
            continue;
        result = entry.fault;
        if (entry.fault.times)
            --*entry.fault.times;
    }
    return result;
}

bool FaultPlan::isDue(const Entry& entry)
{
    const Fault& fault = entry.fault;
    return fault.times != 0u && entry.seen > fault.after && (entry.seen - fault.after) % fault.every == 0;
}

} // namespace simulator
