// SPDX-License-Identifier: Apache-2.0
#include "simulator/faults/FaultPlan.h"

namespace simulator {

std::optional<std::string> whyImpossible(const Fault& fault)
{
    const bool isSimple = fault.action == FaultAction::Drop || fault.action == FaultAction::Vanish;
    if ((fault.request == Request::Arp || fault.request == Request::Ping) && !isSimple)
        return "ARP and PING can only be met with drop and vanish";
    const bool takesTime = fault.action == FaultAction::Delay || fault.action == FaultAction::Pending;
    if (takesTime != (fault.time.count() > 0))
        return takesTime ? "delay and pending need a time" : "only delay and pending take a time";
    if (fault.time > MaxFaultTime)
        return "a time is at most " + std::to_string(MaxFaultTime.count()) + " ms";
    return std::nullopt;
}

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
