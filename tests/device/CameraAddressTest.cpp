// SPDX-License-Identifier: Apache-2.0
#include "device/CameraAddress.h"

#include "device/QDevice.h"
#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>
#include <set>

using testing::ElementsAre;

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
    for (int error = RZ_ERROR_HANDLE; error <= RZ_ERROR_NOT_STORED; ++error) {
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
    EXPECT_THAT(sdk.calls(), ElementsAre("CreateHandle(00:00:00:00:00:01)"));
}
