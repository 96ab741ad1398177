// SPDX-License-Identifier: Apache-2.0
#include "tests/network/Site.h"
#include "tests/simulator/DhcpServer.h"
#include "tests/simulator/Shown.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string Mac = "02:00:00:00:01:01";
const std::string Neighbour = "02:00:00:00:01:02";

/// The program as a user starts it, with a camera of this kind and a neighbour of it that nobody asked to
/// change.
class SettingCameras : public testing::Test
{
protected:
    /// `camera` are its members besides the MAC address.
    void addCamera(const std::string& camera)
    {
        farm = &site.addCameras(lan, R"({"mac": ")" + Mac + R"(", "model": "FC-1", )" + camera + R"(},
            {"mac": ")" + Neighbour + R"(", "address": "192.168.1.99", "userName": "Neighbour"})");
    }

    lab::Output set(const std::vector<std::string>& options,
                    const std::string& environment = "LC_ALL=C") const
    {
        std::vector<std::string> words{"env", environment, PROGRAM, "set", Mac};
        words.insert(words.end(), options.begin(), options.end());
        return site.host().execute(words);
    }

    json camera() const { return shown(*farm, Mac); }

    void expectNeighbourUntouched() const
    {
        const json neighbour = shown(*farm, Neighbour);
        EXPECT_EQ(neighbour["address"], "192.168.1.99");
        EXPECT_EQ(neighbour["userName"], "Neighbour");
        EXPECT_EQ(neighbour["resets"], 0);
        EXPECT_EQ(neighbour["received"]["WRITEREG"], 0);
        EXPECT_EQ(neighbour["received"]["WRITEMEM"], 0);
    }

    const std::vector<std::string> fixed{"--static",      "--ip",      "192.168.1.50", "--mask",
                                         "255.255.255.0", "--gateway", "192.168.1.1"};
    Site site;
    lab::Switch& lan = site.addAdapter("eth0", "192.168.1.5/24");
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(SettingCameras, MakesADhcpCameraKeepAnAddressThroughAPowerCycle)
{
    addCamera(R"("address": "192.168.1.20", "rebootTime": 500)");
    const lab::Output output = set(fixed);
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(output.standardOutput, HasSubstr("Static IP  192.168.1.50  255.255.255.0  192.168.1.1\n"));
    EXPECT_EQ(camera()["resets"], 1);
    EXPECT_EQ(camera()["privilege"], 0);

    farm->control("reset " + Mac);
    const json after = runningCamera(*farm, Mac);
    EXPECT_EQ(after["address"], "192.168.1.50");
    EXPECT_EQ(after["gateway"], "192.168.1.1");
    EXPECT_EQ(after["ipConfiguration"], "persistent");
    expectNeighbourUntouched();
}

TEST_F(SettingCameras, RenamesACameraInAnyLocaleAndLeavesItRunning)
{
    addCamera(R"("address": "192.168.1.20", "userName": "Left")");
    const lab::Output output = set({"--user-id", "瓶盖检测"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_EQ(camera()["userName"], "瓶盖检测");
    EXPECT_EQ(camera()["resets"], 0);
    EXPECT_EQ(camera()["privilege"], 0);
    EXPECT_THAT(output.standardError, Not(HasSubstr("CheckIPTypeChanged")));
    EXPECT_THAT(set({"--user-id", "A"}, "QT_LOGGING_RULES=default.debug=true").standardError,
                HasSubstr("CheckIPTypeChanged false"));
    EXPECT_EQ(camera()["userName"], "A");
    expectNeighbourUntouched();
}

TEST_F(SettingCameras, LeavesTheBytesOfANameThatIsNoUtf8OrHasNoEndWhenOnlyTheAddressChanges)
{
    addCamera(R"("address": "192.168.1.20", "rebootTime": 500, "userNameBytes": "E9 74 E9")");
    const std::string full = "4C 69 6E 6B 73 20 6F 62 65 6E 20 E7 AB AF 20 41";
    lab::Farm& other = site.addCameras(lan, R"({"mac": "02:00:00:00:03:01", "address": "192.168.1.21",
        "rebootTime": 500, "userNameBytes": ")" +
                                                full + R"("})");
    EXPECT_EQ(set(fixed).status, 0);
    EXPECT_EQ(camera()["userNameBytes"], "E9 74 E9");
    const lab::Output output = site.host().execute(
        {PROGRAM, "set", "02:00:00:00:03:01", "--static", "--ip", "192.168.1.51", "--mask", "255.255.255.0"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_EQ(shown(other, "02:00:00:00:03:01")["userNameBytes"], full);
    EXPECT_EQ(shown(other, "02:00:00:00:03:01")["address"], "192.168.1.51");
}

TEST_F(SettingCameras, MakesAStaticCameraTakeALease)
{
    const simulator_tests::DhcpServer server(site.host(), "192.168.1.100,192.168.1.200,255.255.255.0");
    // Without an address of its configuration's, it has none but the stored one and what the network gives
    // it.
    addCamera(
        R"("ipConfiguration": "persistent", "persistent": {"address": "192.168.1.20"}, "rebootTime": 500)");
    ASSERT_EQ(runningCamera(*farm, Mac)["address"], "192.168.1.20");
    const lab::Output output = set({"--dhcp"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    const std::string address = camera()["address"];
    EXPECT_EQ(server.leases().at(Mac), address);
    EXPECT_EQ(camera()["ipConfiguration"], "dhcp");
    EXPECT_THAT(output.standardOutput, HasSubstr("DHCP       " + address));
    expectNeighbourUntouched();
}

TEST_F(SettingCameras, MakesAStaticCameraTakeALinkLocalAddressAndANameAtOnce)
{
    addCamera(R"("address": "192.168.1.20", "ipConfiguration": "persistent", "rebootTime": 500)");
    const lab::Output output = set({"--lla", "--user-id", "Both"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(camera()["address"].get<std::string>(), StartsWith("169.254."));
    EXPECT_EQ(camera()["ipConfiguration"], "lla");
    EXPECT_EQ(camera()["userName"], "Both");
    expectNeighbourUntouched();
}

TEST_F(SettingCameras, BringsAnUnreachableCameraIntoTheSubnetForGood)
{
    addCamera(R"("address": "10.0.0.9", "rebootTime": 500)");
    const lab::Output output = set(fixed);
    EXPECT_EQ(output.status, 0) << output.standardError;
    farm->control("reset " + Mac);
    EXPECT_EQ(runningCamera(*farm, Mac)["address"], "192.168.1.50");
}

TEST_F(SettingCameras, WaitsForACameraThatTakesItsTimeToRestart)
{
    addCamera(R"("address": "192.168.1.20", "rebootTime": 12000)");
    const lab::Output output = set(fixed);
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_EQ(camera()["state"], "running");
    EXPECT_THAT(output.standardError,
                AllOf(HasSubstr("does not answer while it restarts"), HasSubstr("answers as asked")));
}

TEST_F(SettingCameras, TellsThatAnotherApplicationHoldsTheCamera)
{
    addCamera(R"("address": "192.168.1.20", "heldBy": "192.168.1.77")");
    const lab::Output output = set({"--lla"});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(
        output.standardError,
        HasSubstr("FC-1 (02:00:00:00:01:01): Failed to modify. Asked for LLA with an address that begins "
                  "with 169.254; it reports DHCP, 192.168.1.20, mask 255.255.255.0, no gateway; another "
                  "application controls it\n"));
    EXPECT_EQ(camera()["ipConfiguration"], "dhcp");
    EXPECT_EQ(camera()["controller"], "192.168.1.77");
}

TEST_F(SettingCameras, TellsThatAnotherApplicationTookTheCameraMeanwhile)
{
    addCamera(R"("address": "192.168.1.20", "userName": "Left",
                 "faults": [{"command": "FORCEIP", "action": "seize", "times": 1}])");
    const lab::Output output = set({"--user-id", "Right"});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(
        output.standardError,
        HasSubstr("FC-1 (02:00:00:00:01:01): asked for the user name \"Right\"; it "
                  "reports \"Left\"; another application controls it; writing 0x00000A00: 192.168.1.20 "
                  "answers access denied (0x8006)\n"));
    EXPECT_EQ(camera()["userName"], "Left");
}

TEST_F(SettingCameras, TellsThatTheCameraVanishedWhileItWasBeingSet)
{
    addCamera(R"("address": "192.168.1.20",
                 "faults": [{"command": "READMEM", "action": "vanish", "after": 3}])");
    const lab::Output output = set({"--lla"});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(output.standardError, AllOf(HasSubstr("FC-1 (02:00:00:00:01:01): it was not heard again; "),
                                            HasSubstr(": 192.168.1.20 does not answer\n")));
    EXPECT_EQ(camera()["ipConfiguration"], "dhcp");
    expectNeighbourUntouched();
}

TEST_F(SettingCameras, WaitsAsLongAsItSaysForACameraThatDoesNotTakeTheSetting)
{
    addCamera(R"("address": "192.168.1.20", "rebootTime": 500, "hasPersistentIp": false)");
    lab::Process program = site.host().start(
        {"sh", "-c",
         "exec " PROGRAM " set " + Mac + " --static --ip 192.168.1.50 --mask 255.255.255.0 2>&1"});
    while (program.readLine().find("for 120 seconds at most") == std::string::npos) {
    }
    while (program.readLine().find("answers, not yet as asked: DHCP, ") == std::string::npos) {
    }
    ::kill(program.id(), SIGINT);
    EXPECT_EQ(program.wait(), 130);
}

TEST_F(SettingCameras, TellsTheDifferenceWhenTheCamerasNameIsNotToBeChanged)
{
    addCamera(R"("address": "192.168.1.20", "userName": "Left", "userNameAccess": "readOnly")");
    const lab::Output output = set({"--user-id", "Right"});
    EXPECT_EQ(output.status, 1);
    EXPECT_THAT(output.standardError,
                AllOf(HasSubstr("Set UserID Error"),
                      HasSubstr("asked for the user name \"Right\"; it reports \"Left\"")));
}

TEST_F(SettingCameras, KnowsNoOtherCameraThanThatOfTheMac)
{
    farm = &site.addCameras(lan, R"({"mac": "02:00:00:00:01:02", "address": "192.168.1.99",
                                     "userName": "Neighbour"})");
    EXPECT_EQ(set(fixed).status, 3);
    EXPECT_EQ(set({"--user-id", "A"}).status, 3);
    expectNeighbourUntouched();
}

TEST_F(SettingCameras, GivesTheCameraBackOnControlC)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "address sanitizer takes the frames of a thread that is cancelled for living ones";
#endif
    // Each part of the description takes a while, and the user waits no longer.
    addCamera(R"("address": "192.168.1.20", "pendingAckOn": true,
                 "faults": [{"command": "READMEM", "action": "pending", "time": 400}])");
    lab::Process program = site.host().start({"sh", "-c", "exec " PROGRAM " set " + Mac + " --lla 2>&1"});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (camera()["privilege"] == 0)
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "it never takes control";
    ::kill(program.id(), SIGINT);
    while (program.readLine().find("Interrupted; giving the camera back") == std::string::npos) {
    }
    EXPECT_THAT(program.readLine(), HasSubstr("FC-1 (" + Mac + "): interrupted while"));
    EXPECT_EQ(program.wait(), 130);
    EXPECT_EQ(camera()["privilege"], 0);
    EXPECT_EQ(camera()["resets"], 0);
}

TEST_F(SettingCameras, StopsWaitingOnControlC)
{
    addCamera(R"("address": "192.168.1.20", "rebootTime": 60000)");
    lab::Process program = site.host().start({"sh", "-c", "exec " PROGRAM " set " + Mac + " --lla 2>&1"});
    while (program.readLine().find("does not answer while it restarts") == std::string::npos) {
    }
    ::kill(program.id(), SIGINT);
    EXPECT_THAT(program.readLine(), HasSubstr("interrupted while it restarts"));
    EXPECT_EQ(program.wait(), 130);
}
