// SPDX-License-Identifier: Apache-2.0
// Saves of cameras that have not got everything: what the user sees, and what becomes of the rest.
#include "tests/save/FarmSaves.h"
#include "tests/simulator/DhcpServer.h"
#include "tests/simulator/ObtainedAddresses.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::StartsWith;

namespace {

class LimitedCameras : public FarmSaves
{};

} // namespace

TEST_F(LimitedCameras, ACameraThatStoresNoAddressTakesAllElse)
{
    build(std::string(ByDhcp) + R"(, "hasPersistentIp": false)", 3);
    saves[0].wantStatic(newAddress(0));
    saves[1].wantAddress(newAddress(1));
    saves[2].wantType("LLA");
    for (auto& save : saves)
        save.wantName("New");
    saveAll();

    // It takes the write of the mode in silence, and the camera's report after the reset is the truth.
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    EXPECT_EQ(camera(0).at("ipConfiguration"), "dhcp");
    EXPECT_EQ(camera(0).at("address"), oldAddress(0));
    EXPECT_EQ(camera(0).at("resets"), 1);

    EXPECT_THAT(saves[1].said(), ElementsAre("Refresh", "End"));
    EXPECT_EQ(camera(1).at("address"), newAddress(1));
    EXPECT_EQ(camera(1).at("resets"), 0);
    EXPECT_EQ(afterPowerCycle(1).at("address"), oldAddress(1));

    EXPECT_THAT(saves[2].said(), ElementsAre(Rebooting, "Refresh", "End"));
    EXPECT_EQ(camera(2).at("ipConfiguration"), "lla");
    EXPECT_THAT(camera(2).at("address").get<std::string>(), StartsWith("169.254."));

    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(camera(i).at("userName"), "New") << i;
        EXPECT_TRUE(becomesFree(i)) << i;
    }
}

TEST_F(LimitedCameras, ANameThatIsNotToBeChangedIsToldAndAllElseIsChanged)
{
    build(std::string(ByDhcp) + R"(, "userName": "Old", "userNameAccess": "readOnly")", 2);
    saves[0].wantStatic(newAddress(0));
    for (auto& save : saves)
        save.wantName("New");
    saveAll();
    const auto told = StartsWith("Error: Set UserID Error: what:");
    EXPECT_THAT(saves[0].said(), ElementsAre(told, Rebooting, "Refresh", "End"));
    EXPECT_THAT(saves[1].said(), ElementsAre(told, "Refresh", "End"));
    for (int i = 0; i < 2; ++i) {
        const auto after = afterPowerCycle(i);
        EXPECT_EQ(after.at("userName"), "Old");
        EXPECT_EQ(after.at("address"), i == 0 ? newAddress(0) : oldAddress(1));
        EXPECT_EQ(after.at("ipConfiguration"), i == 0 ? "persistent" : "dhcp");
    }
}

TEST_F(LimitedCameras, ACameraWithoutANameTellsSoAndAllElseIsChanged)
{
    build(std::string(ByDhcp) + R"(, "userNameAccess": "none", "descriptionLeavesOut": ["DeviceUserID"])");
    saves[0].wantStatic(newAddress(0));
    saves[0].wantName("New");
    saveAll();
    EXPECT_THAT(saves[0].said(),
                ElementsAre("Error: Set UserID Error: code 0x0", Rebooting, "Refresh", "End"));
    EXPECT_EQ(afterPowerCycle(0).at("address"), newAddress(0));
}

TEST_F(LimitedCameras, WhatADescriptionLeavesOutIsChangedAllTheSame)
{
    const simulator_tests::DhcpServer server(site.host(), simulator_tests::LeasedRange);
    const std::string incomplete = R"(, "descriptionLeavesOut": ["DeviceUserID", "DeviceReset",
        "GevCurrentIPConfigurationPersistentIP", "GevCurrentIPConfigurationDHCP"])";
    build(
        R"("ipConfiguration": "persistent", "persistent": {"address": "192.168.1.20", "mask": "255.255.0.0"})" +
        incomplete);
    saves[0].wantType("DHCP");
    saves[0].wantName("New");
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    // It has not been reset, which it cannot, and yet it is where its new configuration says.
    auto after = camera(0);
    EXPECT_EQ(after.at("resets"), 0);
    EXPECT_EQ(after.at("userName"), "New");
    EXPECT_EQ(after.at("address"), server.leases().at(macOf(0)));
    EXPECT_TRUE(becomesFree(0));

    findAgain();
    saves[0].wantStatic(newAddress(0));
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    EXPECT_EQ(camera(0).at("resets"), 0);
    EXPECT_EQ(camera(0).at("address"), newAddress(0));
    after = afterPowerCycle(0);
    EXPECT_EQ(after.at("address"), newAddress(0));
    EXPECT_EQ(after.at("userName"), "New");
}
