// SPDX-License-Identifier: Apache-2.0
#include "tests/network/Sdk.h"
#include "tests/network/TimeOf.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

constexpr const char* Mac = "02:00:00:00:01:01";
constexpr const char* OtherMac = "02:00:00:00:01:02";
constexpr base::Ipv4 OldIp = "10.0.0.9"_ip;
constexpr base::Ipv4 NewIp = "192.168.1.50"_ip;

/// One camera outside the host's subnet with `quirks`, more JSON members of it.
class ForceIp : public testing::Test
{
protected:
    void build(const std::string& quirks = {}, const std::string& moreCameras = {})
    {
        network = &site.addAdapter("eth0", "192.168.1.5/24");
        farm = &site.addCameras(
            *network,
            R"({"mac": "02:00:00:00:01:01", "address": "10.0.0.9", "serial": "S1", "userName": "Twin")" +
                (quirks.empty() ? "" : ", " + quirks) + "}" +
                (moreCameras.empty() ? "" : ", " + moreCameras));
    }

    int forceTo(base::Ipv4 ip, base::Ipv4 mask = "255.255.255.0"_ip, base::Ipv4 gateway = {})
    {
        const auto* camera = recordOf(enumerate(site), Mac);
        if (!camera) {
            ADD_FAILURE() << "the camera is not found at all";
            return -1;
        }
        return force(site, *camera, ip, mask, gateway);
    }

    /// 0.0.0.0 when the camera is not found.
    base::Ipv4 addressOf(const std::string& mac)
    {
        const auto* camera = recordOf(enumerate(site), mac);
        return camera ? addressIn(*camera) : base::Ipv4();
    }

    void expectObeyed(const std::string& quirks)
    {
        build(quirks);
        EXPECT_EQ(forceTo(NewIp), RZ_OK);
        EXPECT_EQ(addressOf(Mac), NewIp);
        site.host().run("ping -c 1 -W 2 192.168.1.50");
    }

    Site site;
    lab::Switch* network = nullptr;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(ForceIp, BringsAnUnreachableCameraIntoTheSubnet)
{
    build();
    EXPECT_EQ(forceTo(NewIp, "255.255.255.128"_ip, "192.168.1.1"_ip), RZ_OK);
    const auto* camera = recordOf(enumerate(site), Mac);
    ASSERT_NE(camera, nullptr);
    EXPECT_EQ(addressIn(*camera), NewIp);
    EXPECT_EQ(base::Ipv4(camera->stGigEInfo.nDeviceSubnetMask), "255.255.255.128"_ip);
    EXPECT_EQ(base::Ipv4(camera->stGigEInfo.nDeviceGateway), "192.168.1.1"_ip);
    const lab::Visit visit(site.host());
    EXPECT_TRUE(RZ_CC_IsDeviceAccessible(camera, RZ_ACCESS_EXCLUSIVE));
}

TEST_F(ForceIp, SucceedsWhenAcknowledgedFromTheOldAddress)
{
    expectObeyed(R"("forceIpAcknowledge": "old")");
}

TEST_F(ForceIp, SucceedsWhenAcknowledgedFromTheNewAddress)
{
    expectObeyed(R"("forceIpAcknowledge": "new")");
}

TEST_F(ForceIp, SucceedsWhenAcknowledgedByBroadcast)
{
    expectObeyed(R"("forceIpAcknowledge": "broadcast")");
}

TEST_F(ForceIp, SucceedsWhenTheCameraObeysSilently)
{
    expectObeyed(R"("forceIpAcknowledge": "never")");
}

TEST_F(ForceIp, IsNotRepeatedToACameraThatLeavesTheNetworkForFourSecondsWhileItChangesInSilence)
{
    expectObeyed(R"("forceIpAcknowledge": "never", "forceIpOffTime": 4000)");
    EXPECT_EQ(simulator_tests::shown(*farm, Mac).at("received").at("FORCEIP"), 1);
}

TEST_F(ForceIp, OfAnUnchangedConfigurationSucceedsOnACameraThatLeavesTheNetworkInSilence)
{
    build(R"("forceIpAcknowledge": "never", "forceIpOffTime": 200)");
    EXPECT_EQ(forceTo(OldIp), RZ_OK);
    EXPECT_LE(simulator_tests::shown(*farm, Mac).at("received").at("FORCEIP"), 3);
}

TEST_F(ForceIp, SucceedsWhenItWasLostOnce)
{
    expectObeyed(R"("faults": [{"command": "FORCEIP", "action": "drop", "times": 1}])");
}

TEST_F(ForceIp, SucceedsWhenAllOfTheFirstSecondWereLost)
{
    expectObeyed(R"("faults": [{"command": "FORCEIP", "action": "drop", "times": 3}])");
}

TEST_F(ForceIp, FailsWhenItIsLostAlwaysAndTheCameraKeepsItsAddress)
{
    build(R"("faults": [{"command": "FORCEIP", "action": "drop"}])");
    EXPECT_EQ(forceTo(NewIp), RZ_ERROR_REFUSED) << "it is there, and free";
    EXPECT_EQ(addressOf(Mac), OldIp);
}

TEST_F(ForceIp, FailsWhenAnotherApplicationHoldsTheCamera)
{
    build(R"("heldBy": "192.168.1.77")");
    EXPECT_EQ(forceTo(NewIp), RZ_ERROR_ACCESS_DENIED);
    EXPECT_EQ(addressOf(Mac), OldIp);
}

TEST_F(ForceIp, FailsWithinSevenSecondsWhenTheCameraIsGone)
{
    build();
    const auto* camera = recordOf(enumerate(site), Mac);
    ASSERT_NE(camera, nullptr);
    farm->control(std::string("unplug ") + Mac);
    // An enumeration takes 1.15 seconds; 7 are 6.1 times that.
    const auto enumeration = timeOf([this] { enumerate(site); });
    const auto failing = timeOf([&] { EXPECT_EQ(force(site, *camera, NewIp), RZ_ERROR_NO_ANSWER); });
    EXPECT_LT(failing, enumeration * 6.1);
}

TEST_F(ForceIp, GoesByTheMacAloneWhenTwoCamerasLookAlike)
{
    build({}, R"({"mac": "02:00:00:00:01:02", "address": "10.0.0.9", "serial": "S1", "userName": "Twin"})");
    EXPECT_EQ(forceTo(NewIp), RZ_OK);
    EXPECT_EQ(addressOf(Mac), NewIp);
    EXPECT_EQ(addressOf(OtherMac), OldIp);
}

TEST_F(ForceIp, GoesOutOnTheAdapterThatHeardTheCamera)
{
    auto& first = site.addAdapter("eth0", "192.168.1.5/24");
    auto& second = site.addAdapter("eth1", "192.168.1.6/24");
    site.addCameras(first, R"({"mac": "02:00:00:00:01:01", "address": "10.0.0.9"})");
    // The same MAC on the other network: one that must not be hit.
    site.addCameras(second, R"({"mac": "02:00:00:00:01:01", "address": "10.0.0.9"})");
    const auto records = enumerate(site);
    ASSERT_THAT(records, testing::SizeIs(2));
    ASSERT_EQ(force(site, *recordOf(records, Mac, "192.168.1.6"_ip), NewIp), RZ_OK);
    const auto after = enumerate(site);
    EXPECT_EQ(addressIn(*recordOf(after, Mac, "192.168.1.6"_ip)), NewIp);
    EXPECT_EQ(addressIn(*recordOf(after, Mac, "192.168.1.5"_ip)), OldIp);
}

TEST_F(ForceIp, OfAnUnchangedConfigurationSucceeds)
{
    build();
    EXPECT_EQ(forceTo(OldIp), RZ_OK);
    EXPECT_EQ(addressOf(Mac), OldIp);
}

TEST_F(ForceIp, OfAnUnchangedConfigurationSucceedsWhenTheCameraObeysSilently)
{
    build(R"("forceIpAcknowledge": "never")");
    EXPECT_EQ(forceTo(OldIp), RZ_OK);
}

TEST_F(ForceIp, OfAnUnchangedConfigurationFailsWhenAnotherApplicationHoldsTheCamera)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                    R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "heldBy": "192.168.1.77"})");
    EXPECT_EQ(forceTo("192.168.1.20"_ip), RZ_ERROR_ACCESS_DENIED);
}

TEST_F(ForceIp, WorksUnderAStrictReversePathFilter)
{
    build();
    site.setReversePathFilter(1);
    EXPECT_EQ(forceTo(NewIp), RZ_OK);
    EXPECT_EQ(addressOf(Mac), NewIp);
}

TEST_F(ForceIp, WorksBehindAFirewall)
{
    build();
    site.raiseFirewall();
    EXPECT_EQ(forceTo(NewIp), RZ_OK);
    EXPECT_EQ(addressOf(Mac), NewIp);
}

TEST_F(ForceIp, IsGoneAfterTheResetOfACameraThatIsNotStatic)
{
    build(R"("ipConfiguration": "dhcp")");
    ASSERT_EQ(forceTo(NewIp), RZ_OK);
    ASSERT_EQ(addressOf(Mac), NewIp);
    farm->control(std::string("reset ") + Mac);
    base::Ipv4 address;
    for (int tries = 0; tries < 20 && address.isUnspecified(); ++tries)
        address = addressOf(Mac);
    EXPECT_EQ(address, OldIp);
}
