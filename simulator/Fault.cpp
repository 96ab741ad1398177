// SPDX-License-Identifier: Apache-2.0
#include "simulator/Fault.h"

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

} // namespace simulator
