// SPDX-License-Identifier: Apache-2.0
// Saves of cameras, and to addresses, that others have.
#include "tests/save/FarmSaves.h"
#include "tests/simulator/GvcpClient.h"
#include "tests/simulator/Hex.h"
#include "tests/simulator/SilentApplication.h"

#include <gmock/gmock.h>

using namespace base::literals;
using simulator_tests::GvcpClient;
using simulator_tests::shown;
using testing::ElementsAre;

namespace {

class ContestedCameras : public FarmSaves
{
protected:
    void expectNothingWritten(int number)
    {
        const auto after = shown(*farm, macOf(number));
        EXPECT_EQ(after.at("address"), oldAddress(number));
        EXPECT_EQ(after.at("ipConfiguration"), "dhcp");
        EXPECT_EQ(after.at("persistent").at("address"), "0.0.0.0");
        EXPECT_EQ(after.at("userName"), "");
        EXPECT_EQ(after.at("resets"), 0);
    }
};

} // namespace

TEST_F(ContestedCameras, AnotherApplicationsCameraStaysAsItIs)
{
    build(ByDhcp, 2);
    for (int i = 0; i < 2; ++i)
        farm->control("hold " + macOf(i));
    saves[0].wantStatic(newAddress(0));
    saves[0].wantName("New");
    saves[1].wantName("New");
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Failed, "End"));
    EXPECT_THAT(saves[1].said(), ElementsAre(FailedUnchanged, "End"));
    for (int i = 0; i < 2; ++i) {
        expectNothingWritten(i);
        EXPECT_EQ(shown(*farm, macOf(i)).at("controller"), "192.0.2.1");
    }
}

TEST_F(ContestedCameras, ACameraThatIsTakenAfterItsNewAddressKeepsAllElse)
{
    build();
    farm->control("fault " + macOf(0) + " FORCEIP seize 1");
    saves[0].wantStatic(newAddress(0));
    saves[0].wantName("New");
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre("Refresh", "End"));
    EXPECT_EQ(shown(*farm, macOf(0)).at("controller"), "192.0.2.1");
    EXPECT_EQ(camera(0).at("resets"), 0);
    // What it has been forced to does not last.
    const auto after = afterPowerCycle(0);
    EXPECT_EQ(after.at("address"), oldAddress(0));
    EXPECT_EQ(after.at("ipConfiguration"), "dhcp");
    EXPECT_EQ(after.at("userName"), "");
}

TEST_F(ContestedCameras, ACrashedApplicationsCameraCanBeSavedWhenItsHeartbeatHasRunOut)
{
    build();
    const lab::Namespace other;
    network.attach(other, "eth0", "192.168.0.6/16");
    const GvcpClient crashed(other);
    const auto taken = crashed.ask("192.168.1.20"_ip, hex("42 01 0082 0008 0001 00000A00 00000001"));
    ASSERT_EQ(base::readU16(taken, 0), 0u);

    ASSERT_TRUE(becomesFree(0));
    saves[0].wantStatic(newAddress(0));
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    EXPECT_EQ(camera(0).at("address"), newAddress(0));
}

TEST_F(ContestedCameras, AMessageThatStaysOpenLongerThanTheHeartbeatLosesNeitherCameraNorReset)
{
    build(ByDhcp, 2);
    saves[0].wantStatic(newAddress(0));
    std::string controller;
    saves[0].atMessage = [&] {
        simulator_tests::waitForTimeouts(2, site.host(), *farm, macOf(1));
        controller = shown(*farm, macOf(0)).at("controller");
    };
    saves[0].start();
    ASSERT_TRUE(saves[0].awaitEnd());
    EXPECT_EQ(controller, "192.168.0.5") << "the host";
    EXPECT_EQ(camera(0).at("resets"), 1);
    EXPECT_EQ(camera(0).at("address"), newAddress(0));
}

TEST_F(ContestedCameras, AnAddressOfAnotherListedCameraIsRefusedBeforeAnythingIsSent)
{
    build(ByDhcp, 2);
    saves[0].listCameras();
    saves[0].wantStatic(oldAddress(1));
    const int before[] = {commands(0), commands(1)};
    saves[0].start();
    ASSERT_TRUE(saves[0].awaitEnd());
    EXPECT_THAT(saves[0].said(), ElementsAre(Used, "End"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(commands(i), before[i]);
        EXPECT_EQ(shown(*farm, macOf(i)).at("received").at("PING"), 0);
        expectNothingWritten(i);
    }
}

TEST_F(ContestedCameras, AnAddressThatAnswersAPingIsRefusedBeforeAnythingIsSent)
{
    const lab::Namespace other;
    network.attach(other, "eth0", "192.168.0.6/16");
    // On a busy machine even an answer of this one can take longer than it may.
    constexpr int Cameras = 30;
    build(ByDhcp, Cameras);
    for (int i = 0; i < Cameras; ++i) {
        saves[i].wantStatic("192.168.0.6");
        const int before = commands(i);
        saves[i].start();
        ASSERT_TRUE(saves[i].awaitEnd());
        if (saves[i].said().front() == Used) {
            EXPECT_THAT(saves[i].said(), ElementsAre(Used, "End"));
            EXPECT_EQ(commands(i), before);
            expectNothingWritten(i);
            return;
        }
    }
    FAIL() << "none of the pings was answered in time";
}
