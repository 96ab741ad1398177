// SPDX-License-Identifier: Apache-2.0
#include "site/Apply.h"
#include "tests/site/Puzzle.h"
#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>
#include <system_error>

using inventory::IpMethod;
using puzzle::FirstFree;
using site::Action;
using site::Outcome;
using site::Plan;
using site::Result;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// The plan's cameras are the SDK double's.
class Apply : public testing::Test
{
protected:
    /// As of puzzle::plan(). The cameras are static, and called by their numbers.
    void plan(const std::vector<std::size_t>& from, const std::vector<std::size_t>& to)
    {
        m_plan = puzzle::plan(from, to);
        for (site::Task& task : m_plan.tasks) {
            RZ_CC_DEVICE_INFO* const record = sdk.record({.mac = task.camera->mac.toText(),
                                                          .ip = task.before.ip.address.toText(),
                                                          .mask = "255.0.0.0",
                                                          .userName = task.place.name,
                                                          .ipConfig = 5});
            sdk.listed.push_back(record);
            task.camera->record = record;
            task.camera->method = IpMethod::Static;
            task.camera->ip = task.before.ip;
            task.camera->stored = task.before.ip;
            task.camera->userName = task.before.userName = task.after.userName = task.place.name;
        }
    }

    site::Task& task(std::size_t number) { return m_plan.tasks[number]; }

    std::vector<Outcome> apply(const site::Policy& policy = {})
    {
        events.clear();
        site::Progress progress;
        progress.onAction = [this](std::size_t each, Action action) {
            events.push_back(std::to_string(each) + " action " + std::to_string(static_cast<int>(action)));
        };
        progress.onReturn = [this](std::size_t each) { events.push_back(std::to_string(each) + " return"); };
        progress.onOutcome = [this](std::size_t each, const Outcome& outcome) {
            events.push_back(std::to_string(each) + " " + nameOf(outcome.result));
        };
        progress.isInterrupted = isInterrupted;
        return site::apply(m_plan, policy, progress);
    }

    static std::string nameOf(Result result)
    {
        constexpr const char* names[] = {"ok",       "changed", "would change", "failed",
                                         "put back", "missing", "not begun"};
        return names[static_cast<std::size_t>(result)];
    }

    static std::vector<std::string> resultsOf(const std::vector<Outcome>& outcomes)
    {
        std::vector<std::string> names;
        for (const Outcome& each : outcomes)
            names.push_back(nameOf(each.result));
        return names;
    }

    /// Without the calls that open and close.
    std::vector<std::string> changes() const
    {
        std::vector<std::string> calls;
        for (const std::string& call : sdk.calls())
            if (call.rfind("BeginChange", 0) == 0)
                calls.push_back(call);
        return calls;
    }

    /// The changes of that camera, by their number from 1 on, end so; others are obeyed.
    void script(std::size_t number,
                std::function<std::optional<SdkDouble::ChangeEnd>(int, const RZ_CC_CHANGE&)> end)
    {
        sdk.change = [this, number, end = std::move(end),
                      count = 0](const RZ_CC_CHANGE& change) mutable -> std::optional<SdkDouble::ChangeEnd> {
            if ((change.stInfo.nMacLow & 0xFFFF) != number)
                return sdk.obey(change);
            return end(++count, change);
        };
    }

    /// A change that fails after the address was forced, and of which the camera is seen.
    SdkDouble::ChangeEnd halfDone(const RZ_CC_CHANGE& change)
    {
        SdkDouble::ChangeEnd end = sdk.obey(change);
        end.error = RZ_ERROR_REFUSED;
        end.text = "writing 0x0000064C: access denied (0x8006)";
        end.steps = RZ_STEP_FORCED;
        return end;
    }

    SdkDouble sdk;
    Plan m_plan;
    std::vector<std::string> events;
    std::function<bool()> isInterrupted = [] { return false; };
};

} // namespace

TEST_F(Apply, ChangesWhatIsNotAsPlannedAndTouchesNothingElse)
{
    plan({0, 1}, {0, FirstFree});
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("ok", "changed"));
    EXPECT_EQ(outcomes[1].now, task(1).after);
    EXPECT_THAT(outcomes[1].actions, ElementsAre(Action::Force, Action::Store));
    EXPECT_THAT(outcomes[1].reason, IsEmpty());
    EXPECT_THAT(changes(), ElementsAre("BeginChange(02:00:00:00:00:01, method 5, address 10.0.3.233 "
                                       "255.0.0.0 0.0.0.0, stored 10.0.3.233 255.0.0.0 0.0.0.0)"));
    EXPECT_THAT(events, ElementsAre("0 ok", "1 action 0", "1 action 1", "1 changed"));
}

TEST_F(Apply, OpensNoLineWhenThereIsNothingToDo)
{
    plan({0, 1}, {0, 1});
    task(1).camera.reset();
    EXPECT_THAT(resultsOf(apply()), ElementsAre("ok", "missing"));
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(Apply, LeavesTheAddressToACameraThatIsToFindOneItself)
{
    plan({0, 1}, {0, 1});
    task(0).after = {IpMethod::Dhcp, {}, "left"};
    task(0).actions = {Action::Configure, Action::Name, Action::Restart};
    task(1).after = {IpMethod::LinkLocal, {}, "1"};
    task(1).actions = {Action::Configure, Action::Restart};
    EXPECT_THAT(resultsOf(apply()), ElementsAre("changed", "changed"));
    EXPECT_THAT(changes(), ElementsAre("BeginChange(02:00:00:00:00:00, method 6, name left)",
                                       "BeginChange(02:00:00:00:00:01, method 4)"));
}

TEST_F(Apply, WarnsOfACameraThatNoDhcpServerAnswered)
{
    plan({0}, {0});
    task(0).after = {IpMethod::Dhcp, {}, "0"};
    task(0).actions = {Action::Configure, Action::Restart};
    sdk.change = [this](const RZ_CC_CHANGE& change) {
        SdkDouble::ChangeEnd end = sdk.obey(change);
        end.now.nIp = SdkDouble::address("169.254.3.4");
        return end;
    };
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("changed"));
    EXPECT_THAT(base::english(outcomes[0].reason), HasSubstr("No DHCP server"));
}

TEST_F(Apply, PutsBackWhatFailsAndTellsWhy)
{
    plan({0, 1}, {FirstFree, FirstFree + 1});
    script(0, [this](int count, const RZ_CC_CHANGE& change) {
        return count == 1 ? halfDone(change) : sdk.obey(change);
    });
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("put back", "not begun"));
    EXPECT_EQ(outcomes[0].now, task(0).before);
    EXPECT_EQ(base::english(outcomes[0].reason),
              "It could not be changed: writing 0x0000064C: access denied (0x8006).");
    EXPECT_EQ(outcomes[1].now, task(1).before);
    EXPECT_THAT(base::english(outcomes[1].reason), HasSubstr("failed before"));
    EXPECT_EQ(changes().back(), "BeginChange(02:00:00:00:00:00, method 5, address 10.0.0.1 255.0.0.0 "
                                "0.0.0.0, stored 10.0.0.1 255.0.0.0 0.0.0.0)");
    EXPECT_THAT(events, ElementsAre("0 action 0", "0 return", "0 put back", "1 not begun"));
}

TEST_F(Apply, TellsWhatACameraHasThatCouldNotBePutBack)
{
    plan({0}, {FirstFree});
    script(0, [this](int count, const RZ_CC_CHANGE& change) -> SdkDouble::ChangeEnd {
        if (count == 1)
            return halfDone(change);
        return {RZ_ERROR_NO_ANSWER, "it does not answer", RZ_STEP_FORCED, {}};
    });
    auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("failed"));
    EXPECT_FALSE(outcomes[0].now) << "nobody knows";
    EXPECT_THAT(base::english(outcomes[0].reason),
                HasSubstr("It could not be put back: it does not answer."));

    script(0, [this](int, const RZ_CC_CHANGE& change) { return halfDone(change); });
    sdk.listed[0]->stGigEInfo.nDeviceIp = puzzle::address(0).number();
    task(0).after.userName = "new";
    outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("failed"));
    ASSERT_TRUE(outcomes[0].now);
    EXPECT_EQ(outcomes[0].now->ip, task(0).before.ip);
    EXPECT_EQ(outcomes[0].now->userName, "new") << "the name did not go back";
}

TEST_F(Apply, SendsNothingMoreToACameraToWhichNothingWasDone)
{
    plan({0}, {FirstFree});
    SdkDouble::ChangeEnd refusal{RZ_ERROR_ACCESS_DENIED, "another application controls it", 0, {}};
    refusal.now.nParts = RZ_SETTING_METHOD | RZ_SETTING_ADDRESS;
    refusal.now.nIpConfig = 5;
    refusal.now.nIp = task(0).before.ip.address.number();
    refusal.now.nSubnetMask = task(0).before.ip.mask.number();
    script(0, [&refusal](int, const RZ_CC_CHANGE&) { return refusal; });
    EXPECT_THAT(resultsOf(apply()), ElementsAre("put back"));
    EXPECT_EQ(changes().size(), 1U);

    refusal.now = {};
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("failed")) << "it was not seen to be as it was";
    EXPECT_THAT(base::english(outcomes[0].reason), HasSubstr("Nothing was done to it."));
}

TEST_F(Apply, HasAStaticCameraThatDidNotTellWhatItStoredStoreTheAddressThatItHad)
{
    plan({0}, {FirstFree});
    task(0).camera->stored.reset();
    const auto backAfter = [this](unsigned steps) {
        script(0, [this, steps](int count, const RZ_CC_CHANGE& change) {
            SdkDouble::ChangeEnd end = count == 1 ? halfDone(change) : sdk.obey(change);
            end.steps = steps;
            return end;
        });
        apply();
        return changes().back();
    };
    EXPECT_THAT(backAfter(RZ_STEP_FORCED | RZ_STEP_STORED), HasSubstr("stored 10.0.0.1 255.0.0.0 0.0.0.0"));
    EXPECT_THAT(backAfter(RZ_STEP_FORCED), testing::Not(HasSubstr("stored")));
}

TEST_F(Apply, GivesADhcpCameraItsAddressBackOrHasItFindOneAnew)
{
    plan({0}, {FirstFree});
    task(0).before.method = task(0).camera->method = IpMethod::Dhcp;
    task(0).camera->stored.reset();
    sdk.listed[0]->stGigEInfo.nIpConfigCurrent = 6;
    const auto backAfter = [this](unsigned steps) {
        script(0, [this, steps](int count, const RZ_CC_CHANGE& change) {
            SdkDouble::ChangeEnd end = count == 1 ? halfDone(change) : sdk.obey(change);
            end.steps = steps;
            return end;
        });
        EXPECT_THAT(resultsOf(apply()), ElementsAre("put back"));
        return changes().back();
    };
    EXPECT_EQ(backAfter(RZ_STEP_FORCED),
              "BeginChange(02:00:00:00:00:00, method 6, address 10.0.0.1 255.0.0.0 0.0.0.0)");
    sdk.listed[0]->stGigEInfo.nIpConfigCurrent = 6;
    EXPECT_EQ(backAfter(RZ_STEP_FORCED | RZ_STEP_CONFIGURED), "BeginChange(02:00:00:00:00:00, method 6)");
}

TEST_F(Apply, GivesTheNameBackOnlyWhenItWasTouched)
{
    plan({0}, {0});
    task(0).after.userName = "new";
    task(0).actions = {Action::Name};
    script(0, [this](int count, const RZ_CC_CHANGE& change) {
        SdkDouble::ChangeEnd end = sdk.obey(change);
        if (count == 1)
            end.error = RZ_ERROR_REFUSED;
        return end;
    });
    EXPECT_THAT(resultsOf(apply()), ElementsAre("put back"));
    EXPECT_THAT(changes().back(), HasSubstr("name 0"));
}

TEST_F(Apply, SwapsAddressesOverAFreeOne)
{
    plan({0, 1, 2}, {1, 0, FirstFree});
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("changed", "changed", "changed"));
    EXPECT_EQ(sdk.listed[0]->stGigEInfo.nDeviceIp, puzzle::address(1).number());
    EXPECT_EQ(sdk.listed[1]->stGigEInfo.nDeviceIp, puzzle::address(0).number());
    ASSERT_EQ(changes().size(), 4U);
    EXPECT_EQ(changes()[0], "BeginChange(02:00:00:00:00:00, address 10.0.7.209 255.0.0.0 0.0.0.0)");
}

TEST_F(Apply, PutsAllOfACircleBackWhenOneFails)
{
    plan({0, 1}, {1, 0});
    script(0, [this](int count, const RZ_CC_CHANGE& change) {
        return count == 2 ? halfDone(change) : sdk.obey(change);
    });
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("put back", "put back"));
    EXPECT_THAT(base::english(outcomes[1].reason), HasSubstr("exchanges addresses"));
    EXPECT_EQ(outcomes[0].now, task(0).before);
    EXPECT_EQ(outcomes[1].now, task(1).before);
    EXPECT_THAT(events, testing::Not(testing::Contains("1 changed")));
}

TEST_F(Apply, LeavesACameraOnItsDetourRatherThanRiskAnAddressTwice)
{
    plan({0, 1}, {1, 0});
    script(1, [](int, const RZ_CC_CHANGE&) -> SdkDouble::ChangeEnd {
        return {RZ_ERROR_NO_ANSWER, "it does not answer", RZ_STEP_FORCED, {}};
    });
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("failed", "failed"));
    ASSERT_TRUE(outcomes[0].now);
    EXPECT_EQ(outcomes[0].now->ip, *task(0).detour);
    EXPECT_THAT(base::english(outcomes[0].reason), HasSubstr("left at 10.0.7.209"));
}

TEST_F(Apply, KeepsGoingButNotWithThoseThatWaitForTheOneThatFailed)
{
    plan({0, 1, 2}, {FirstFree, 0, FirstFree + 2});
    task(0).place.name = "left";
    script(0, [this](int count, const RZ_CC_CHANGE& change) {
        return count == 1 ? halfDone(change) : sdk.obey(change);
    });
    const auto outcomes = apply({.keepsGoing = true});
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("put back", "not begun", "changed"));
    EXPECT_EQ(base::english(outcomes[1].reason), "It is to get the address of left, which was not changed.");
}

TEST_F(Apply, BeginsNothingMoreWhenItIsInterruptedAndEndsWhatHasBegun)
{
    plan({0, 1, 2}, {FirstFree, FirstFree + 1, FirstFree + 2});
    int asked = 0;
    isInterrupted = [&asked] { return ++asked == 2; };
    script(0,
           [this, turn = 0](int, const RZ_CC_CHANGE& change) mutable -> std::optional<SdkDouble::ChangeEnd> {
               return ++turn < 5 ? std::nullopt : std::optional(sdk.obey(change));
           });
    const auto outcomes = apply();
    EXPECT_THAT(resultsOf(outcomes), ElementsAre("changed", "not begun", "not begun"));
    EXPECT_THAT(base::english(outcomes[1].reason), HasSubstr("interrupted"));
    EXPECT_EQ(changes().size(), 1U);
}

TEST_F(Apply, ThrowsWhenTheAdaptersCannotBeUsed)
{
    plan({0}, {FirstFree});
    sdk.openLine = [] { return RZ_ERROR_NETWORK; };
    EXPECT_THROW(apply(), std::system_error);
}

TEST_F(Apply, NamesTheCameraByWhatTheLookSawAndNotByAnOlderRecord)
{
    plan({0}, {FirstFree});
    task(0).camera->ip.address = task(0).before.ip.address = puzzle::address(77);
    sdk.change = [](const RZ_CC_CHANGE& change) -> SdkDouble::ChangeEnd {
        EXPECT_EQ(change.stInfo.stGigEInfo.nDeviceIp, puzzle::address(77).number());
        EXPECT_EQ(change.nPatience, 7000U);
        return {};
    };
    apply({.patience = std::chrono::seconds(7)});
}
