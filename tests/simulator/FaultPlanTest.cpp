// SPDX-License-Identifier: Apache-2.0
#include "simulator/faults/FaultPlan.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;

/// Which of that many requests of this kind are hit: "x" for a hit one, "." for another.
std::string hits(FaultPlan& plan, Request request, int requests)
{
    std::string pattern;
    for (int i = 0; i < requests; ++i)
        pattern += plan.hit(request) ? 'x' : '.';
    return pattern;
}

Fault dropOf(std::optional<Request> request)
{
    Fault fault;
    fault.request = request;
    return fault;
}

TEST(FaultPlan, HitsTheRequestsThatItsNumbersSay)
{
    const struct
    {
        const char* what;
        std::optional<unsigned> times;
        unsigned after;
        unsigned every;
        const char* pattern;
    } table[] = {
        {"until further notice", std::nullopt, 0, 1, "xxxxxxxxxx"},
        {"twice", 2, 0, 1, "xx........"},
        {"each third", std::nullopt, 0, 3, "..x..x..x."},
        {"after four", std::nullopt, 4, 1, "....xxxxxx"},
        {"once, after four", 1, 4, 1, "....x....."},
        {"each second after three, twice", 2, 3, 2, "....x.x..."},
    };
    for (const auto& each : table) {
        Fault fault = dropOf(Request::ReadRegister);
        fault.times = each.times;
        fault.after = each.after;
        fault.every = each.every;
        FaultPlan plan;
        plan.add(fault);
        EXPECT_EQ(hits(plan, Request::ReadRegister, 10), each.pattern) << each.what;
    }
}

TEST(FaultPlan, PullsACableOnceUnlessMoreIsAskedFor)
{
    Fault fault = dropOf(std::nullopt);
    fault.action = FaultAction::Vanish;
    fault.after = 2;
    FaultPlan once;
    once.add(fault);
    EXPECT_EQ(hits(once, Request::Discovery, 6), "..x...");
    fault.times = 2;
    FaultPlan twice;
    twice.add(fault);
    EXPECT_EQ(hits(twice, Request::Discovery, 6), "..xx..");
}

TEST(FaultPlan, HappensOnceUnlessMoreIsAskedFor)
{
    for (const FaultAction action : {FaultAction::Hold, FaultAction::Reset}) {
        Fault fault = dropOf(std::nullopt);
        fault.action = action;
        FaultPlan plan;
        plan.add(fault);
        EXPECT_EQ(hits(plan, Request::ReadRegister, 3), "x..");
    }
}

TEST(FaultPlan, CountsTheCommandsOfAChangeFromTheFirstThatIsToChangeTheCamera)
{
    for (const Request first : {Request::ForceIp, Request::WriteRegister, Request::WriteMemory}) {
        Fault fault;
        fault.isOfChange = true;
        fault.after = 1;
        FaultPlan plan;
        plan.add(fault);
        EXPECT_EQ(hits(plan, Request::ReadRegister, 3), "...");
        EXPECT_EQ(hits(plan, Request::ReadMemory, 3), "...");
        EXPECT_EQ(hits(plan, first, 1), ".");
        for (const Request other : {Request::Discovery, Request::Arp, Request::Ping})
            EXPECT_EQ(hits(plan, other, 2), "..");
        EXPECT_EQ(hits(plan, Request::ReadRegister, 2), "xx");
        EXPECT_EQ(hits(plan, Request::ReadMemory, 1), "x");
        EXPECT_EQ(hits(plan, first, 1), "x");
    }
}

TEST(FaultPlan, CountsOnlyTheRequestsThatAFaultConcerns)
{
    Fault fault = dropOf(Request::ReadRegister);
    fault.every = 2;
    FaultPlan plan;
    plan.add(fault);
    EXPECT_EQ(hits(plan, Request::WriteRegister, 3), "...");
    EXPECT_EQ(hits(plan, Request::ReadRegister, 2), ".x");
}

TEST(FaultPlan, TakesAnyForTheCommandsOfTheControlProtocol)
{
    FaultPlan plan;
    plan.add(dropOf(std::nullopt));
    for (const Request request : {Request::Discovery, Request::ForceIp, Request::WriteMemory})
        EXPECT_TRUE(plan.hit(request));
    EXPECT_FALSE(plan.hit(Request::Arp));
    EXPECT_FALSE(plan.hit(Request::Ping));
}

TEST(FaultPlan, LetsTheEarlierOfTwoFaultsGoFirst)
{
    FaultPlan plan;
    Fault busy = dropOf(Request::ReadRegister);
    busy.action = FaultAction::Busy;
    busy.times = 1;
    plan.add(busy);
    plan.add(dropOf(Request::ReadRegister));
    EXPECT_EQ(plan.hit(Request::ReadRegister)->action, FaultAction::Busy);
    EXPECT_EQ(plan.hit(Request::ReadRegister)->action, FaultAction::Drop);
    plan.clear();
    EXPECT_FALSE(plan.hit(Request::ReadRegister));
}

} // namespace
