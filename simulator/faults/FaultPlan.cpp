// SPDX-License-Identifier: Apache-2.0
#include "simulator/faults/FaultPlan.h"

namespace simulator {

namespace {

bool isToChange(Request request)
{
    return request == Request::ForceIp || request == Request::WriteRegister ||
           request == Request::WriteMemory;
}

} // namespace

const std::vector<std::pair<const char*, Fault>>& faultsByName()
{
    static const auto all = [] {
        std::vector<std::pair<const char*, Fault>> faults;
        for (std::size_t i = 0; i < RequestNames.size(); ++i)
            faults.push_back({RequestNames[i].data(), {.request = Request{static_cast<int>(i)}}});
        faults.push_back({"ANY", {}});
        faults.push_back({"CHANGE", {.isOfChange = true}});
        return faults;
    }();
    return all;
}

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
    // A cable is not pulled again when somebody has put it back, and so on.
    const bool isEvent = fault.action == FaultAction::Vanish || fault.action == FaultAction::Reset ||
                         fault.action == FaultAction::Hold;
    if (isEvent && !fault.times)
        fault.times = 1;
    m_entries.push_back({fault, 0});
}

std::optional<Fault> FaultPlan::hit(Request request)
{
    std::optional<Fault> result;
    for (Entry& entry : m_entries) {
        if (!concerns(entry, request))
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

bool FaultPlan::concerns(const Entry& entry, Request request)
{
    if (entry.fault.request)
        return *entry.fault.request == request;
    if (request == Request::Arp || request == Request::Ping)
        return false;
    if (!entry.fault.isOfChange)
        return true;
    return request != Request::Discovery && (entry.seen > 0 || isToChange(request));
}

bool FaultPlan::isDue(const Entry& entry)
{
    const Fault& fault = entry.fault;
    return fault.times != 0u && entry.seen > fault.after && (entry.seen - fault.after) % fault.every == 0;
}

} // namespace simulator
