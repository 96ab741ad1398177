// SPDX-License-Identifier: Apache-2.0
#include "simulator/FaultPlan.h"

namespace simulator {

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
