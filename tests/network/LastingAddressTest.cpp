// SPDX-License-Identifier: Apache-2.0
#include "base/IpSettings.h"
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using simulator_tests::runningCamera;
using simulator_tests::shown;

const std::string Mac = "02:00:00:00:01:01";
constexpr base::Ipv4 NewIp = "192.168.1.50"_ip;
constexpr base::Ipv4 Gateway = "192.168.1.254"_ip;
constexpr unsigned IpConfiguration = 0x14;
constexpr const char* Old =
    R"(, "persistent": {"address": "10.0.0.9", "mask": "255.0.0.0", "gateway": "10.0.0.1"})";

/// A camera that is forced to 192.168.1.50, and what it holds afterwards.
class LastingAddress : public testing::Test
{
protected:
    void build(const std::string& members)
    {
        farm = &site.addCameras(
            site.addAdapter("eth0", "192.168.1.5/24"),
            R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "rebootTime": 50)" + members + "}");
    }

    const RZ_CC_DEVICE_INFO& found()
    {
        const auto* record = recordOf(enumerate(site), Mac);
        if (!record)
            throw std::runtime_error("the camera is not found at all");
        return *record;
    }

    int force() { return ::force(site, found(), NewIp, "255.255.255.0"_ip, Gateway); }
    std::string stored() const { return shown(*farm, Mac).at("persistent").at("address"); }
    std::string addressAfterReset()
    {
        farm->control("reset " + Mac);
        return runningCamera(*farm, Mac).at("address");
    }

    Site site;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(LastingAddress, OfAStaticCameraIsStillThereAfterAReset)
{
    build(std::string(Old) + R"(, "ipConfiguration": "persistent")");
    EXPECT_EQ(force(), RZ_OK);
    const auto camera = shown(*farm, Mac);
    EXPECT_EQ(camera.at("persistent").at("address"), "192.168.1.50");
    EXPECT_EQ(camera.at("persistent").at("mask"), "255.255.255.0");
    EXPECT_EQ(camera.at("persistent").at("gateway"), "192.168.1.254");
    EXPECT_FALSE(camera.at("held"));
    EXPECT_EQ(addressAfterReset(), "192.168.1.50");
}

TEST_F(LastingAddress, OfADhcpCameraIsStoredOnlyWhenItIsToldToStartWithIt)
{
    build(std::string(Old) + R"(, "ipConfiguration": "dhcp")");
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_EQ(stored(), "10.0.0.9");
    {
        const OpenCamera camera(site, found());
        ASSERT_EQ(camera.result(), RZ_OK);
        camera.write(IpConfiguration, 7);
    }
    EXPECT_EQ(stored(), "192.168.1.50");
    EXPECT_EQ(addressAfterReset(), "192.168.1.50");
}

TEST_F(LastingAddress, OfADhcpCameraThatIsOnlyRenamedIsNotStored)
{
    build(std::string(Old) + R"(, "ipConfiguration": "dhcp")");
    EXPECT_EQ(force(), RZ_OK);
    {
        const OpenCamera camera(site, found());
        camera.port()->Write("Right\0\0\0\0\0\0\0\0\0\0", 0xE8, 16);
        camera.write(IpConfiguration, 6);
    }
    EXPECT_EQ(stored(), "10.0.0.9");
    EXPECT_EQ(shown(*farm, Mac).at("userName"), "Right");
}

TEST_F(LastingAddress, ThatTheCameraDoesNotStoreWaitsUntilItIsNextOpened)
{
    build(std::string(Old) + R"(, "ipConfiguration": "persistent")");
    farm->control("fault " + Mac + " WRITEREG drop after 1"); // Control can be taken.
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_EQ(shown(*farm, Mac).at("address"), "192.168.1.50");
    EXPECT_EQ(stored(), "10.0.0.9");
    EXPECT_TRUE(RZ_GIGE_IsForcedIpWaiting(&found()));

    farm->control("heal " + Mac);
    // Control can be taken, and the camera may ask for time.
    farm->control("fault " + Mac + " WRITEREG drop after 2");
    const auto openingResult = [this] { return OpenCamera(site, found()).result(); };
    EXPECT_EQ(openingResult(), RZ_ERROR_NOT_STORED);
    char text[200];
    EXPECT_EQ(RZ_CC_GetErrorText(&found(), text, sizeof text), RZ_OK);
    EXPECT_STREQ(
        text,
        "its address could not be stored (writing 0x0000064C: 192.168.1.50 does not answer; it may have "
        "stored some of the old address and some of the new)");

    farm->control("heal " + Mac);
    farm->control("release " + Mac); // It did not hear that it was given back.
    EXPECT_EQ(openingResult(), RZ_OK);
    EXPECT_EQ(stored(), "192.168.1.50");
    EXPECT_FALSE(RZ_GIGE_IsForcedIpWaiting(&found()));
    EXPECT_EQ(RZ_CC_GetErrorText(&found(), text, sizeof text), RZ_OK);
    EXPECT_STREQ(text, "");
}

TEST_F(LastingAddress, OfAStaticCameraThatLeavesTheNetworkForFourSecondsIsStoredAtOnce)
{
    build(std::string(Old) + R"(, "ipConfiguration": "persistent", "forceIpOffTime": 4000)");
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_EQ(stored(), "192.168.1.50");
}

TEST_F(LastingAddress, OfADhcpCameraThatLeavesTheNetworkForFourSecondsIsStoredWhenItIsOpened)
{
    build(std::string(Old) + R"(, "ipConfiguration": "dhcp", "forceIpOffTime": 4000)");
    const RZ_CC_DEVICE_INFO& record = found();
    EXPECT_EQ(force(), RZ_OK);
    RZ_CC_DEVICE_INFO moved = record; // As after a save worker's force, without another look at the network.
    moved.stGigEInfo.nDeviceIp = NewIp.number();
    {
        const OpenCamera camera(site, moved);
        ASSERT_EQ(camera.result(), RZ_OK) << "it is waited for";
        camera.write(IpConfiguration, 7);
    }
    EXPECT_EQ(stored(), "192.168.1.50");
}

TEST_F(LastingAddress, BelongsToTheNetworkInterfaceThatWasHeard)
{
    build(R"(, "ipConfiguration": "persistent", "interface": 1,
             "interfaceMacs": ["02:00:00:00:01:AA", "02:00:00:00:01:01"])");
    const auto interfaces = [this] { return shown(*farm, Mac).at("interfaces"); };
    const auto first = interfaces().at(0);
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_EQ(interfaces().at(0), first);
    EXPECT_EQ(interfaces().at(1).at("address"), "192.168.1.50");
    EXPECT_EQ(interfaces().at(1).at("mask"), "255.255.255.0");
    EXPECT_EQ(interfaces().at(1).at("gateway"), "192.168.1.254");
    EXPECT_EQ(addressAfterReset(), "192.168.1.50");

    const lab::Visit visit(site.host());
    void* handle = nullptr;
    unsigned ip = 0;
    unsigned mask = 0;
    unsigned gateway = 0;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, &found()), RZ_OK);
    EXPECT_EQ(RZ_GIGE_GetPersistentIp(handle, &ip, &mask, &gateway), RZ_OK);
    EXPECT_EQ(ip, NewIp.number());
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
}

TEST_F(LastingAddress, CanBeReadWithoutControl)
{
    build(std::string(Old) +
          R"(, "ipConfiguration": "dhcp", "heldBy": "192.168.1.77", "heldPrivilege": "control")");
    const lab::Visit visit(site.host());
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, &found()), RZ_OK);
    unsigned ip = 0;
    unsigned mask = 0;
    unsigned gateway = 0;
    EXPECT_EQ(RZ_GIGE_GetPersistentIp(handle, &ip, &mask, &gateway), RZ_OK);
    EXPECT_EQ((base::IpSettings{base::Ipv4(ip), base::Ipv4(mask), base::Ipv4(gateway)}),
              (base::IpSettings{"10.0.0.9"_ip, "255.0.0.0"_ip, "10.0.0.1"_ip}));
    EXPECT_EQ(RZ_GIGE_GetPersistentIp(handle, nullptr, &mask, &gateway), RZ_ERROR_PARAMETER);
    farm->control("release " + Mac);
    EXPECT_EQ(RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0), RZ_OK);
    ip = 0;
    EXPECT_EQ(RZ_GIGE_GetPersistentIp(handle, &ip, &mask, &gateway), RZ_OK) << "by way of the open handle";
    EXPECT_EQ(ip, "10.0.0.9"_ip.number());
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
}

TEST_F(LastingAddress, IsNoneForACameraThatCannotStoreAny)
{
    build(R"(, "ipConfiguration": "dhcp", "hasPersistentIp": false)");
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_EQ(shown(*farm, Mac).at("received").at("WRITEREG"), 0);
}
