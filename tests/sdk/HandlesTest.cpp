// SPDX-License-Identifier: Apache-2.0
#include "sdk/RzCameraSdk.h"

#include "base/Ipv4.h"
#include "tests/support/NoMoreDescriptors.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <thread>

using namespace base::literals;

namespace {

int force(void* handle, base::Ipv4 address)
{
    return RZ_GIGE_ForceIpEx(handle, address.number(), "255.255.255.0"_ip.number(), 0);
}

} // namespace

TEST(Handles, AreMadeForARecordAndDestroyedOnce)
{
    const RZ_CC_DEVICE_INFO info{};
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, &info), RZ_OK);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_ERROR_HANDLE);
}

TEST(Handles, OfNothingAreRefused)
{
    const RZ_CC_DEVICE_INFO info{};
    void* handle = nullptr;
    EXPECT_EQ(RZ_CC_CreateHandle(nullptr, &info), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_CreateHandle(&handle, nullptr), RZ_ERROR_PARAMETER);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(RZ_CC_DestroyHandle(nullptr), RZ_ERROR_HANDLE);
}

TEST(Handles, ThatAreNoneAreNotForcedOnto)
{
    int notAHandle = 0;
    EXPECT_EQ(force(nullptr, "192.168.1.20"_ip), RZ_ERROR_HANDLE);
    EXPECT_EQ(force(&notAHandle, "192.168.1.20"_ip), RZ_ERROR_HANDLE);
}

TEST(Handles, ThatAreNoneAreNotOpenedAndHaveNothing)
{
    int notAHandle = 0;
    unsigned char buffer[4]{};
    unsigned length = 7;
    for (void* const handle : {static_cast<void*>(nullptr), static_cast<void*>(&notAHandle)}) {
        EXPECT_EQ(RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0), RZ_ERROR_HANDLE);
        EXPECT_EQ(RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, &length), RZ_ERROR_HANDLE);
        EXPECT_EQ(RZ_CC_GetTlProxy(handle), nullptr);
        EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_ERROR_HANDLE);
    }
}

TEST(Handles, AreOpenedInNoOtherModeAndHaveNothingUntilThen)
{
    const RZ_CC_DEVICE_INFO info{};
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, &info), RZ_OK);
    EXPECT_EQ(RZ_CC_OpenDevice(handle, 0, 0), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE | 2, 0), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 1), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0), RZ_ERROR_PARAMETER) << "without an address";

    unsigned char buffer[4]{};
    unsigned length = 7;
    EXPECT_EQ(RZ_XML_GetGenICamXML(handle, nullptr, sizeof buffer, &length), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, nullptr), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, &length), RZ_ERROR_NOT_OPEN);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(RZ_CC_GetTlProxy(handle), nullptr);
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
}

TEST(Handles, RefuseAddressesThatNoCameraCanHave)
{
    const RZ_CC_DEVICE_INFO info{};
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, &info), RZ_OK);
    for (const base::Ipv4 ip :
         {"0.0.0.0"_ip, "0.1.2.3"_ip, "127.0.0.1"_ip, "224.0.0.1"_ip, "255.255.255.255"_ip})
        EXPECT_EQ(force(handle, ip), RZ_ERROR_PARAMETER) << ip;
    RZ_CC_DestroyHandle(handle);
}

TEST(Handles, OfACameraWhoseAdapterIsGoneSendNothing)
{
    RZ_CC_DEVICE_INFO info{};
    info.stGigEInfo.nNetExportIndex = 0x7FFFFFFF;
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, &info), RZ_OK);
    EXPECT_EQ(force(handle, "192.168.1.20"_ip), RZ_ERROR_NETWORK);
    RZ_CC_DestroyHandle(handle);
}

TEST(TransportLayers, AreGigEVisionAlone)
{
    EXPECT_EQ(RZ_CC_EnumerateTls(), RZ_TL_GIGE);
    RZ_CC_DEVICE_INFO_LIST list{};
    EXPECT_EQ(RZ_CC_EnumDevices(2, &list), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_EnumDevices(RZ_TL_GIGE, nullptr), RZ_ERROR_PARAMETER);
}

TEST(Enumerating, FailsWhenTheProcessHasNoDescriptorLeft)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the undefined-behaviour sanitizer beside it needs a pipe to look at an exception";
#endif
    RZ_CC_DEVICE_INFO_LIST list{};
    int result = RZ_OK;
    {
        const NoMoreDescriptors limit;
        result = RZ_CC_EnumDevices(RZ_TL_GIGE, &list);
    }
    EXPECT_EQ(result, RZ_ERROR_NETWORK) << "that there is no camera is not known";
    EXPECT_EQ(list.nDeviceCount, 0u);
    unsigned unlisted = 1;
    char text[64];
    EXPECT_EQ(RZ_CC_GetEnumReport(&unlisted, text, sizeof text), RZ_OK);
    EXPECT_STREQ(text, "the network adapters: Too many open files");
    EXPECT_EQ(unlisted, 0u);
    EXPECT_EQ(RZ_CC_GetEnumReport(&unlisted, text, 4), RZ_OK);
    EXPECT_STREQ(text, "the") << "cut to what there is room for";
    EXPECT_EQ(RZ_CC_GetEnumReport(nullptr, text, 4), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_GetEnumReport(&unlisted, nullptr, 4), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_GetEnumReport(&unlisted, text, 0), RZ_ERROR_PARAMETER);
}

TEST(Accessibility, IsOnlyKnownForExclusiveAccessToACamera)
{
    const RZ_CC_DEVICE_INFO info{};
    EXPECT_FALSE(RZ_CC_IsDeviceAccessible(nullptr, RZ_ACCESS_EXCLUSIVE));
    EXPECT_FALSE(RZ_CC_IsDeviceAccessible(&info, 0));
    EXPECT_FALSE(RZ_CC_IsDeviceAccessible(&info, 3));
}

TEST(Cancellation, OfACallingThreadWaitsUntilTheCallIsDone)
{
    // The thread is cancelled before it calls; creating and destroying a handle still complete, and no lock
    // stays taken.
    static void* handle = nullptr;
    static const RZ_CC_DEVICE_INFO info{};
    std::thread thread([] {
        pthread_cancel(pthread_self());
        RZ_CC_CreateHandle(&handle, &info);
        pthread_testcancel();
        ADD_FAILURE() << "the thread should be gone by now";
    });
    thread.join();
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
}
