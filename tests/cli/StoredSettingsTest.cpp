// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/AtOnce.h"
#include "tests/network/Site.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using simulator_tests::shown;
using testing::AllOf;
using testing::HasSubstr;

namespace {

/// The program as a user starts it, with cameras that store other settings than they run with, or store none.
class StoredSettings : public testing::Test
{
protected:
    static std::vector<std::string> force(const std::string& mac, const std::string& ip)
    {
        return {PROGRAM, "force", mac, "--ip", ip, "--mask", "255.255.255.0"};
    }

    Site site;
    lab::Switch& lan = site.addAdapter("eth0", "192.168.1.5/24");
};

} // namespace

TEST_F(StoredSettings, RestartCamerasThatWereNotRestartedAfterAChange)
{
    const lab::Farm& farm = site.addCameras(lan, R"(
        {"mac": "02:00:00:00:01:01", "address": "192.168.1.21", "ipConfiguration": "dhcp", "rebootTime": 3000,
         "persistent": {"address": "192.168.1.21"}},
        {"mac": "02:00:00:00:01:02", "address": "192.168.1.22", "ipConfiguration": "lla", "rebootTime": 500},
        {"mac": "02:00:00:00:01:03", "address": "192.168.1.23", "ipConfiguration": "dhcp", "rebootTime": 500,
         "persistent": {"address": "192.168.1.99"}})");
    const auto outputs = runAtOnce(site.host(), {{PROGRAM, "set", "02:00:00:00:01:01", "--dhcp"},
                                                 {PROGRAM, "set", "02:00:00:00:01:02", "--lla"},
                                                 {PROGRAM, "set", "02:00:00:00:01:03", "--dhcp"}});
    for (const lab::Output& output : outputs)
        EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(outputs[0].standardError, HasSubstr("still has its stored address"));
    EXPECT_THAT(outputs[0].standardError, HasSubstr("note: the camera has the same address as before"))
        << "its address comes from nobody who would give it another";
    EXPECT_THAT(outputs[1].standardError, HasSubstr("has no link-local address"));
    EXPECT_THAT(outputs[1].standardOutput, HasSubstr("LLA        169.254."));
    EXPECT_THAT(outputs[2].standardError, HasSubstr("nothing was sent to it"));
    EXPECT_EQ(shown(farm, "02:00:00:00:01:01")["resets"], 1);
    EXPECT_EQ(shown(farm, "02:00:00:00:01:02")["resets"], 1);
    EXPECT_EQ(shown(farm, "02:00:00:00:01:03")["resets"], 0);
}

TEST_F(StoredSettings, TakeAForcedAddressAtTheSecondAttemptOrTellThatTheyMayNotHave)
{
    // The first register that is written takes control, the next ones are the address. The second camera does
    // not even let go of control then, so that nobody can read what it has stored.
    const lab::Farm& farm = site.addCameras(lan, R"(
        {"mac": "02:00:00:00:01:01", "address": "192.168.1.21", "ipConfiguration": "persistent", "model": "FC-1",
         "faults": [{"command": "WRITEREG", "action": "badAlignment", "after": 1, "times": 2}]},
        {"mac": "02:00:00:00:01:02", "address": "192.168.1.22", "gateway": "192.168.1.1", "model": "FC-2",
         "ipConfiguration": "persistent", "faults": [{"command": "WRITEREG", "action": "badAlignment", "after": 1}]})");
    const auto outputs = runAtOnce(site.host(), {force("02:00:00:00:01:01", "192.168.1.51"),
                                                 force("02:00:00:00:01:02", "192.168.1.52")});
    EXPECT_EQ(outputs[0].status, 0) << outputs[0].standardError;
    EXPECT_EQ(shown(farm, "02:00:00:00:01:01")["persistent"]["address"], "192.168.1.51");

    EXPECT_EQ(outputs[1].status, 1);
    EXPECT_EQ(outputs[1].standardOutput, "");
    EXPECT_THAT(outputs[1].standardError,
                AllOf(HasSubstr("FC-2 (02:00:00:00:01:02) took the address but has not stored it"),
                      HasSubstr("192.168.1.52 answers bad alignment (0x8005)"),
                      HasSubstr("it may have stored some of the old settings and some of the new\n")));
    EXPECT_EQ(shown(farm, "02:00:00:00:01:02")["address"], "192.168.1.52");
}

TEST_F(StoredSettings, AreToldAfterAStaticAddressWasSetInVain)
{
    site.addCameras(lan,
                    R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.21", "userNameAccess": "readOnly",
                             "rebootTime": 500})");
    const lab::Output output =
        site.host().execute({PROGRAM, "set", "02:00:00:00:01:01", "--static", "--ip", "192.168.1.51",
                             "--mask", "255.255.255.0", "--user-id", "New"});
    EXPECT_EQ(output.status, 1);
    EXPECT_THAT(output.standardError,
                HasSubstr("its stored address is 192.168.1.51, mask 255.255.255.0, no gateway\n"));
}

TEST_F(StoredSettings, AreLeftAloneWhenAnotherCameraAnswersAtTheAddress)
{
    const lab::Farm& farm = site.addCameras(lan, R"(
        {"mac": "02:00:00:00:01:01", "address": "192.168.1.21", "model": "FC-1"},
        {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "model": "FC-2"})");
    site.host().run("ip neigh replace 192.168.1.21 lladdr 02:00:00:00:01:02 nud permanent dev eth0");
    const lab::Output output = site.host().execute({PROGRAM, "set", "02:00:00:00:01:01", "--user-id", "New"});
    EXPECT_EQ(output.status, 1);
    EXPECT_THAT(
        output.standardError,
        HasSubstr("the camera FC-2 (02:00:00:00:01:02) answers and not FC-1 (02:00:00:00:01:01); give one "
                  "of the two another address with the force command first\n"));
    for (const char* mac : {"02:00:00:00:01:01", "02:00:00:00:01:02"})
        EXPECT_EQ(shown(farm, mac)["userName"], "") << mac;
}
