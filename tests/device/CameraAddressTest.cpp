// SPDX-License-Identifier: Apache-2.0
#include "device/CameraAddress.h"

#include "device/QDevice.h"
#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>

using testing::Each;
using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

using namespace base::literals;

class CameraAddressTest : public testing::Test
{
protected:
    CameraAddressTest() { device.m_pDeviceInfo = sdk.record({.mac = "00:00:00:00:00:01"}); }

    const base::IpSettings settings{"192.0.2.20"_ip, "255.255.255.0"_ip, "192.0.2.1"_ip};
    SdkDouble sdk;
    QDevice device;
};

} // namespace

TEST_F(CameraAddressTest, ForcesWithAHandleOfItsOwn)
{
    EXPECT_EQ(ForceAddress(device, settings), AddressError::None);
    EXPECT_THAT(sdk.calls(), ElementsAre("CreateHandle(00:00:00:00:00:01)",
                                         "ForceIpEx(00:00:00:00:00:01, 192.0.2.20, 255.255.255.0, 192.0.2.1)",
                                         "DestroyHandle(00:00:00:00:00:01)"));
}

TEST_F(CameraAddressTest, EveryFailureIsToldByItsNumberAndLeavesNoHandle)
{
    for (int error = RZ_ERROR_HANDLE; error <= RZ_ERROR_OTHER_CAMERA; ++error) {
        sdk.forceIp = [error](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return error; };
        EXPECT_EQ(static_cast<int>(ForceAddress(device, settings)), error);
        EXPECT_EQ(sdk.livingHandles(), 0u) << error;
    }
}

TEST_F(CameraAddressTest, WithoutAHandleNothingIsForcedOrDestroyed)
{
    sdk.createHandle = [](const RZ_CC_DEVICE_INFO*) { return RZ_ERROR_INTERNAL; };
    EXPECT_EQ(static_cast<int>(ForceAddress(device, settings)), RZ_ERROR_INTERNAL);
    EXPECT_EQ(static_cast<int>(StoreForcedAddress(device)), RZ_ERROR_INTERNAL);
    EXPECT_FALSE(ReadStoredAddress(device));
    EXPECT_THAT(sdk.calls(), Each("CreateHandle(00:00:00:00:00:01)"));
}

TEST_F(CameraAddressTest, TheSdksReasonIsHandedOn)
{
    EXPECT_EQ(GetCameraError(device), "");
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) { return "its adapter is gone"; };
    EXPECT_EQ(GetCameraError(device), "its adapter is gone");
}

TEST_F(CameraAddressTest, AForcedAddressThatWaitsIsStoredByOpeningAndClosing)
{
    EXPECT_FALSE(IsForcedAddressWaiting(device));
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    EXPECT_TRUE(IsForcedAddressWaiting(device));
    EXPECT_EQ(StoreForcedAddress(device), AddressError::None);
    EXPECT_THAT(sdk.calls(),
                IsSupersetOf({"OpenDevice(00:00:00:00:00:01, 1, 0)", "DestroyHandle(00:00:00:00:00:01)"}));
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NOT_STORED; };
    EXPECT_EQ(StoreForcedAddress(device), AddressError::NotStored);
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(CameraAddressTest, TheStoredAddressIsReadUnlessTheCameraDoesNotTell)
{
    sdk.getPersistentIp = [](RZ_CC_DEVICE_INFO*, unsigned& ip, unsigned& mask, unsigned& gateway) {
        ip = SdkDouble::address("192.0.2.20");
        mask = SdkDouble::address("255.255.255.0");
        gateway = SdkDouble::address("192.0.2.1");
        return RZ_OK;
    };
    EXPECT_EQ(ReadStoredAddress(device), settings);
    sdk.getPersistentIp = [](auto&&...) { return RZ_ERROR_REFUSED; };
    EXPECT_FALSE(ReadStoredAddress(device));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}
