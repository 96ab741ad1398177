// SPDX-License-Identifier: Apache-2.0
#include "site/Words.h"

#include <gmock/gmock.h>

using base::Ipv4;
using inventory::IpMethod;
using site::Action;
using site::Outcome;
using site::Plan;
using site::Result;
using site::Settings;
using site::Task;
using testing::ElementsAre;

namespace {

using namespace base::literals;

const base::IpSettings Ip{"192.168.10.21"_ip, "255.255.255.0"_ip, {}};

std::string settingsText(IpMethod method, const base::IpSettings& ip = {})
{
    return site::settingsInWords({method, ip, {}}).english();
}

Task task(const std::string& place)
{
    Task result;
    result.place.name = place;
    result.camera.emplace();
    result.camera->mac = *base::MacAddress::parse("02:00:00:00:00:01");
    result.before = {IpMethod::Dhcp, Ip, "before"};
    return result;
}

Outcome outcome(Result result)
{
    Outcome outcome;
    outcome.result = result;
    return outcome;
}

std::vector<std::string> summary(const Plan& plan, const std::vector<Outcome>& outcomes)
{
    std::vector<std::string> result;
    for (const base::Sentence& sentence : summaryOf(plan, outcomes))
        result.push_back(sentence.english());
    return result;
}

} // namespace

TEST(SiteWords, TellSettingsAsFarAsTheyAreKnown)
{
    EXPECT_EQ(settingsText(IpMethod::Static, Ip), "static 192.168.10.21/24");
    EXPECT_EQ(settingsText(IpMethod::Dhcp), "DHCP");
    EXPECT_EQ(settingsText(IpMethod::Dhcp, {Ip.address, Ip.mask, "192.168.10.1"_ip}),
              "DHCP 192.168.10.21/24 via 192.168.10.1");
    EXPECT_EQ(settingsText(IpMethod::LinkLocal, {"169.254.3.4"_ip, "255.255.0.0"_ip, {}}),
              "LLA 169.254.3.4/16");
    EXPECT_EQ(settingsText(IpMethod::Static, {Ip.address, "255.0.255.0"_ip, {}}),
              "static 192.168.10.21/255.0.255.0")
        << "no mask, but a camera has it";
}

TEST(SiteWords, TellWhatIsDone)
{
    const Settings after{IpMethod::Dhcp, Ip, "left"};
    EXPECT_EQ(actionInWords(Action::Force, after).english(), "force 192.168.10.21");
    EXPECT_EQ(actionInWords(Action::Store, after).english(), "store the address");
    EXPECT_EQ(actionInWords(Action::Configure, after).english(), "switch to DHCP");
    EXPECT_EQ(actionInWords(Action::Name, after).english(), "rename to left");
    EXPECT_EQ(actionInWords(Action::Name, {}).english(), "remove the name");
    EXPECT_EQ(actionInWords(Action::Restart, after).english(), "restart");
}

TEST(SiteWords, SayFirstWhichCameraIsNotAsItWas)
{
    const Plan plan{{task("left"), task("right"), task("top"), task("gone")}, {}, {}};
    std::vector<Outcome> outcomes{outcome(Result::Changed), outcome(Result::Failed), outcome(Result::Failed),
                                  outcome(Result::Missing)};
    outcomes[1].now = Settings{IpMethod::Static, Ip, "half"};
    EXPECT_THAT(summary(plan, outcomes),
                ElementsAre("right (02:00:00:00:00:01) was not put back; it is static now, 192.168.10.21/24, "
                            "name \"half\".",
                            "top (02:00:00:00:00:01) was not put back; what it has now is not known.",
                            "Failed: 2 of 4.", "Missing: 1 of 4.", "Changed: 1 of 4."));
}

TEST(SiteWords, SayThatNothingIsToBeDone)
{
    const Plan plan{{task("left"), task("right")}, {}, {}};
    EXPECT_THAT(summary(plan, {outcome(Result::Ok), outcome(Result::Ok)}),
                ElementsAre("All is as planned (2 of 2); nothing is to be done."));
    EXPECT_THAT(summary(plan, {outcome(Result::Ok), outcome(Result::WouldChange)}),
                ElementsAre("To be changed: 1 of 2."));
}

TEST(Foresight, TellsWhatWouldBecomeOfEachPlace)
{
    Task toChange = task("change");
    toChange.actions = {Action::Force, Action::Store};
    Task missing = task("missing");
    missing.camera.reset();
    const auto outcomes = foresee(Plan{{task("ok"), toChange, missing}, {}, {}});
    EXPECT_EQ(outcomes[0].result, Result::Ok);
    EXPECT_EQ(outcomes[0].now, toChange.before);
    EXPECT_EQ(outcomes[1].result, Result::WouldChange);
    EXPECT_EQ(outcomes[1].actions, toChange.actions);
    EXPECT_EQ(outcomes[1].now, toChange.before);
    EXPECT_EQ(outcomes[2].result, Result::Missing);
    EXPECT_FALSE(outcomes[2].now);
}

TEST(Foresight, BeginsNothingOfAPlanThatIsRefused)
{
    Task toChange = task("change");
    toChange.actions = {Action::Force};
    Task held = toChange;
    held.obstacles = {{"It is held.", {}}};
    const auto outcomes = foresee(Plan{{toChange, held, task("ok")}, {}, {}});
    EXPECT_EQ(outcomes[0].result, Result::NotBegun);
    EXPECT_FALSE(outcomes[0].reason.empty());
    EXPECT_TRUE(outcomes[0].actions.empty());
    EXPECT_EQ(outcomes[1].result, Result::NotBegun);
    EXPECT_EQ(outcomes[1].reason, held.obstacles);
    EXPECT_EQ(outcomes[2].result, Result::Ok);
    EXPECT_EQ(foresee(Plan{{toChange}, {{"An adapter is wrong.", {}}}, {}})[0].result, Result::NotBegun);
}
