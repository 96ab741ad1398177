// SPDX-License-Identifier: Apache-2.0
// Who holds a camera, where real programs of this computer do.
#include "tests/cli/AtOnce.h"
#include "tests/network/Site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* Mac = "02:00:00:00:01:01";       // Says who holds it;
constexpr const char* SecretMac = "02:00:00:00:01:02"; // does not.

/// A computer with two adapters, and two cameras behind the first.
class HolderTest : public testing::Test
{
protected:
    HolderTest()
    {
        site.addAdapter("eth1", "10.0.0.5/8");
        farm = &site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
            {"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "heartbeatTimeout": 60000},
            {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "heartbeatTimeout": 60000, "tellsHolder": false},
            {"mac": "02:00:00:00:01:03", "address": "192.168.1.22", "heldBy": "192.168.1.77",
             "heldPrivilege": "control", "heldPort": 40000, "heartbeatOff": true, "stream": "192.168.1.78:50020"},
            {"mac": "02:00:00:00:01:04", "address": "192.168.1.23", "heldBy": "192.168.1.77"})");
    }

    lab::Process hold(std::vector<std::string> arguments, std::vector<std::string> asUser = {})
    {
        asUser.emplace_back(HOLDER);
        asUser.insert(asUser.end(), arguments.begin(), arguments.end());
        lab::Process process = site.host().start(asUser);
        EXPECT_EQ(process.readLine(), "held");
        return process;
    }

    json who(const std::string& mac, std::vector<std::string> asUser = {})
    {
        for (const std::string& word : {std::string(PROGRAM), std::string("who"), mac, std::string("--json")})
            asUser.push_back(word);
        const lab::Output output = site.host().execute(asUser);
        EXPECT_EQ(output.status, 0) << output.standardError;
        return json::parse(output.standardOutput);
    }

    const std::vector<std::string> Nobody{"setpriv", "--reuid=65534", "--clear-groups"};
    Site site;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(HolderTest, IsTheProgramWhoseSocketTheCameraNames)
{
    const lab::Process other = hold({"192.168.1.21", "2", "192.168.1.5"});
    const lab::Process holder = hold({"192.168.1.20", "2", "192.168.1.5"});
    const json seen = who(Mac);
    EXPECT_EQ(seen["Privilege"], "control");
    EXPECT_EQ(seen["HolderAddress"], "192.168.1.5");
    EXPECT_GT(seen["HolderPort"], 0);
    EXPECT_EQ(seen["HeartbeatTimeout"], 60000);
    EXPECT_EQ(seen["HeartbeatDisabled"], false);
    EXPECT_TRUE(seen["StreamDestination"].is_null());
    EXPECT_EQ(seen["Process"]["Pid"], holder.id());
    EXPECT_EQ(seen["Process"]["Name"], "hold_camera");
    EXPECT_EQ(seen["Process"]["User"], "root");
    EXPECT_THAT(seen["Process"]["CommandLine"], EndsWith("hold_camera 192.168.1.20 2 192.168.1.5"));
    EXPECT_THAT(seen["Reason"], Not(HasSubstr("guess")));
}

TEST_F(HolderTest, IsTheProgramThatIsConnectedToACameraThatDoesNotTell)
{
    const lab::Process other = hold({"192.168.1.20", "2", "192.168.1.5"});
    const lab::Process holder = hold({"192.168.1.21", "1", "connected"});
    const json seen = who(SecretMac);
    EXPECT_EQ(seen["Privilege"], "exclusive");
    EXPECT_TRUE(seen["HolderAddress"].is_null());
    EXPECT_EQ(seen["Process"]["Pid"], holder.id());
    EXPECT_THAT(seen["Reason"], Not(HasSubstr("guess")));
}

TEST_F(HolderTest, IsGuessedWhenTheCameraDoesNotTell)
{
    for (const char* address : {"192.168.1.5", ""}) {
        for (const char* privilege : {"1", "2"}) {
            const lab::Process holder =
                hold(*address ? std::vector<std::string>{"192.168.1.21", privilege, address}
                              : std::vector<std::string>{"192.168.1.21", privilege});
            const json seen = who(SecretMac);
            EXPECT_EQ(seen["Privilege"], *privilege == '1' ? "exclusive" : "control");
            EXPECT_EQ(seen["Process"]["Pid"], holder.id());
            EXPECT_THAT(seen["Reason"], HasSubstr("A guess: it may be hold_camera"));
            const auto outputs = runAtOnce(site.host(), {{PROGRAM, "who", SecretMac}});
            EXPECT_THAT(outputs[0].standardOutput, HasSubstr("(a guess)"));
            farm->control(std::string("release ") + SecretMac);
        }
    }
}

TEST_F(HolderTest, IsNotGuessedAmongTwo)
{
    const lab::Process holder = hold({"192.168.1.21", "1", "192.168.1.5"});
    const lab::Process other = hold({"192.168.1.20", "1", "192.168.1.5"});
    const json seen = who(SecretMac);
    EXPECT_TRUE(seen["Process"].is_null());
    for (const pid_t pid : {holder.id(), other.id()})
        EXPECT_THAT(seen["Reason"], HasSubstr("process " + std::to_string(pid)));
}

TEST_F(HolderTest, OfAnotherUserIsSeenByRootAndOfItsOwnByAnyone)
{
    const lab::Process roots = hold({"192.168.1.20", "2", "192.168.1.5"});
    const lab::Process nobodys = hold({"192.168.1.21", "2", "connected"}, Nobody);
    EXPECT_EQ(who(SecretMac)["Process"]["User"], "nobody");
    EXPECT_EQ(who(SecretMac, Nobody)["Process"]["Pid"], nobodys.id());
    const json hidden = who(Mac, Nobody);
    EXPECT_TRUE(hidden["Process"].is_null());
    EXPECT_THAT(hidden["Reason"], AllOf(HasSubstr("a program of root"), HasSubstr("only root may see")));
}

TEST_F(HolderTest, ThatHasBeenKilledIsToldFromOneElsewhere)
{
    {
        const lab::Process holder = hold({"192.168.1.20", "2", "192.168.1.5"});
    }
    const json seen = who(Mac);
    EXPECT_EQ(seen["Privilege"], "control");
    EXPECT_TRUE(seen["Process"].is_null());
    EXPECT_THAT(seen["Reason"], AllOf(HasSubstr("no program has that socket"), HasSubstr("60000 ms")));
}

TEST_F(HolderTest, ElsewhereIsToldByItsAddress)
{
    const json seen = who("02:00:00:00:01:03");
    EXPECT_EQ(seen["Privilege"], "control");
    EXPECT_EQ(seen["HolderAddress"], "192.168.1.77");
    EXPECT_EQ(seen["HolderPort"], 40000);
    EXPECT_EQ(seen["HeartbeatDisabled"], true);
    EXPECT_EQ(seen["StreamDestination"], "192.168.1.78:50020");
    EXPECT_TRUE(seen["Process"].is_null());
    EXPECT_THAT(seen["Reason"],
                AllOf(HasSubstr("another computer, 192.168.1.77"), HasSubstr("cut the camera's power")));

    const json exclusive = who("02:00:00:00:01:04");
    EXPECT_EQ(exclusive["Privilege"], "exclusive");
    EXPECT_TRUE(exclusive["HolderAddress"].is_null());
    EXPECT_THAT(exclusive["Reason"], HasSubstr("probably held by another computer"));
}

TEST_F(HolderTest, OfAFreeCameraIsNobody)
{
    const json seen = who(Mac);
    EXPECT_EQ(seen["Privilege"], "none");
    EXPECT_TRUE(seen["HolderAddress"].is_null());
    EXPECT_TRUE(seen["Process"].is_null());
}
