// SPDX-License-Identifier: Apache-2.0
#include "device/CameraAddress.h"

#include "device/QDevice.h"
#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>
#include <set>

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

class CameraAddressTest : public testing::Test
{
protected:
    CameraAddressTest() { device.m_pDeviceInfo = sdk.record({.mac = "00:00:00:00:00:01"}); }

    SdkDouble sdk;
    QDevice device;
};

} // namespace

TEST_F(CameraAddressTest, ForcesWithAHandleOfItsOwn)
{
    EXPECT_EQ(ForceAddress(device, 0xC0000214, 0xFFFFFF00, 0xC0000201), "");
    EXPECT_THAT(sdk.calls(), ElementsAre("CreateHandle(00:00:00:00:00:01)",
                                         "ForceIpEx(00:00:00:00:00:01, 192.0.2.20, 255.255.255.0, 192.0.2.1)",
                                         "DestroyHandle(00:00:00:00:00:01)"));
}

TEST_F(CameraAddressTest, EveryFailureHasASentenceOfItsOwnAndLeavesNoHandle)
{
    std::set<QString> sentences;
    for (int error = RZ_ERROR_HANDLE; error <= RZ_ERROR_OTHER_CAMERA; ++error) {
        sdk.forceIp = [error](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return error; };
        const QString sentence = ForceAddress(device, 0xC0000214, 0xFFFFFF00, 0);
        EXPECT_GT(sentence.size(), 10) << error;
        EXPECT_TRUE(sentences.insert(sentence).second) << error;
        EXPECT_EQ(sdk.livingHandles(), 0u) << error;
    }
}

TEST_F(CameraAddressTest, WithoutAHandleNothingIsForcedOrDestroyed)
{
    sdk.createHandle = [](const RZ_CC_DEVICE_INFO*) { return RZ_ERROR_INTERNAL; };
    EXPECT_NE(ForceAddress(device, 0xC0000214, 0xFFFFFF00, 0), "");
    EXPECT_NE(StoreForcedAddress(device), "");
    EXPECT_FALSE(ReadStoredAddress(device));
    EXPECT_THAT(sdk.calls(),
                Each(AnyOf("CreateHandle(00:00:00:00:00:01)", "GetErrorText(00:00:00:00:00:01)")));
}

TEST_F(CameraAddressTest, AFailureGivesTheSdksReasonAndWhatMayBeDone)
{
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) { return "its adapter is gone"; };
    sdk.forceIp = [](auto...) { return RZ_ERROR_NETWORK; };
    EXPECT_EQ(ForceAddress(device, 0xC0000214, 0xFFFFFF00, 0),
              "its adapter is gone; check that it is up and has an address");
    EXPECT_EQ(GetCameraError(device), "its adapter is gone");
}

TEST_F(CameraAddressTest, AForcedAddressThatWaitsIsStoredByOpeningAndClosing)
{
    EXPECT_FALSE(IsForcedAddressWaiting(device));
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    EXPECT_TRUE(IsForcedAddressWaiting(device));
    EXPECT_EQ(StoreForcedAddress(device), "");
    EXPECT_THAT(sdk.calls(),
                IsSupersetOf({"OpenDevice(00:00:00:00:00:01, 1, 0)", "DestroyHandle(00:00:00:00:00:01)"}));
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NOT_STORED; };
    EXPECT_EQ(StoreForcedAddress(device), "the camera did not store the address; try again");
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(CameraAddressTest, TheStoredAddressIsReadUnlessTheCameraDoesNotTell)
{
    sdk.getPersistentIp = [](RZ_CC_DEVICE_INFO*, unsigned& ip, unsigned& mask, unsigned& gateway) {
        ip = 1;
        mask = 2;
        gateway = 3;
        return RZ_OK;
    };
    const auto stored = ReadStoredAddress(device);
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->nIp, 1u);
    EXPECT_EQ(stored->nSubnetMask, 2u);
    EXPECT_EQ(stored->nGateway, 3u);
    sdk.getPersistentIp = [](auto&&...) { return RZ_ERROR_REFUSED; };
    EXPECT_FALSE(ReadStoredAddress(device));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}
