// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SdkDouble.h"

#include "base/Ipv4.h"
#include "genapi/GenApi/IPort.h"

#include <gmock/gmock.h>

using namespace base::literals;
using testing::ElementsAre;

TEST(SdkDoubleTest, NotesCallsInOrderWithTheirArguments)
{
    SdkDouble sdk;
    RZ_CC_DEVICE_INFO* const camera = sdk.record({.mac = "AC:1A:00:00:00:01"});

    RZ_CC_DEVICE_INFO_LIST list{};
    RZ_CC_EnumerateTls();
    RZ_CC_EnumDevices(RZ_TL_GIGE, &list);
    RZ_CC_IsDeviceAccessible(camera, RZ_ACCESS_EXCLUSIVE);
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, camera), RZ_OK);
    RZ_GIGE_ForceIpEx(handle, "10.0.0.1"_ip.number(), "255.0.0.0"_ip.number(), "10.0.0.254"_ip.number());
    RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0);
    unsigned char buffer[8];
    unsigned length = 0;
    RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, &length);
    RZ_CC_GetTlProxy(handle);
    RZ_GIGE_GetPersistentIp(handle, &length, &length, &length);
    RZ_CC_DestroyHandle(handle);
    char text[8];
    RZ_CC_GetEnumReport(&length, text, sizeof text);
    RZ_CC_GetListener(&length, text, sizeof text);
    RZ_CC_ExpectDevice(0xAC1A, 0x00000002);
    RZ_CC_GetErrorText(camera, text, sizeof text);
    RZ_GIGE_IsForcedIpWaiting(camera);

    EXPECT_THAT(sdk.calls(),
                ElementsAre("EnumerateTls()", "EnumDevices(1)", "IsDeviceAccessible(AC:1A:00:00:00:01, 1)",
                            "CreateHandle(AC:1A:00:00:00:01)",
                            "ForceIpEx(AC:1A:00:00:00:01, 10.0.0.1, 255.0.0.0, 10.0.0.254)",
                            "OpenDevice(AC:1A:00:00:00:01, 1, 0)", "GetGenICamXML(AC:1A:00:00:00:01, 8)",
                            "GetTlProxy(AC:1A:00:00:00:01)", "GetPersistentIp(AC:1A:00:00:00:01)",
                            "DestroyHandle(AC:1A:00:00:00:01)", "GetEnumReport()", "GetListener()",
                            "ExpectDevice(AC:1A:00:00:00:02)", "GetErrorText(AC:1A:00:00:00:01)",
                            "IsForcedIpWaiting(AC:1A:00:00:00:01)"));
}

TEST(SdkDoubleTest, ListsTheStatedRecords)
{
    SdkDouble sdk;
    RZ_CC_DEVICE_INFO* const first = sdk.record({.model = "first", .adapter = "10.0.0.1"});
    RZ_CC_DEVICE_INFO* const second = sdk.record({.mac = "FF:FE:FD:FC:FB:FA", .model = "second"});
    sdk.listed = {second, first};

    RZ_CC_DEVICE_INFO_LIST list{};
    ASSERT_EQ(RZ_CC_EnumDevices(RZ_TL_GIGE, &list), RZ_OK);

    ASSERT_EQ(list.nDeviceCount, 2u);
    EXPECT_EQ(list.apDeviceInfo[0], second);
    EXPECT_EQ(list.apDeviceInfo[1], first);
    EXPECT_EQ(second->nMacHigh, 0xFFFEu);
    EXPECT_EQ(second->nMacLow, 0xFDFCFBFAu);
    EXPECT_STREQ(first->stGigEInfo.szModelName, "first");
    EXPECT_EQ(first->stGigEInfo.nNetExportIp, "10.0.0.1"_ip.number());
}

TEST(SdkDoubleTest, KnowsAHandleFromItsCreationToItsDestruction)
{
    SdkDouble sdk;
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, sdk.record({})), RZ_OK);
    EXPECT_EQ(sdk.livingHandles(), 1u);
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_OK);
    EXPECT_EQ(sdk.livingHandles(), 0u);
    EXPECT_EQ(RZ_CC_DestroyHandle(handle), RZ_ERROR_HANDLE);
    EXPECT_EQ(RZ_GIGE_ForceIpEx(handle, 1, 2, 3), RZ_ERROR_HANDLE);
}

TEST(SdkDoubleTest, GivesTheScriptedResults)
{
    SdkDouble sdk;
    sdk.enumerateTls = [] { return 6u; };
    sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST&) { return RZ_ERROR_NETWORK; };
    sdk.isDeviceAccessible = [](const RZ_CC_DEVICE_INFO*) { return false; };
    sdk.createHandle = [](const RZ_CC_DEVICE_INFO*) { return RZ_ERROR_INTERNAL; };

    RZ_CC_DEVICE_INFO_LIST list{};
    void* handle = nullptr;
    EXPECT_EQ(RZ_CC_EnumerateTls(), 6u);
    EXPECT_EQ(RZ_CC_EnumDevices(RZ_TL_GIGE, &list), RZ_ERROR_NETWORK);
    EXPECT_FALSE(RZ_CC_IsDeviceAccessible(sdk.record({}), RZ_ACCESS_EXCLUSIVE));
    EXPECT_EQ(RZ_CC_CreateHandle(&handle, sdk.record({})), RZ_ERROR_INTERNAL);
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST(SdkDoubleTest, TellsWhatIsStatedBeyondTheResults)
{
    SdkDouble sdk;
    RZ_CC_DEVICE_INFO* const camera = sdk.record({.ip = "192.0.2.20"});
    char text[5] = "none";
    unsigned unlisted = 7;
    EXPECT_EQ(RZ_CC_GetEnumReport(&unlisted, text, sizeof text), RZ_OK);
    EXPECT_EQ(unlisted, 0u);
    EXPECT_STREQ(text, "");
    RZ_CC_GetErrorText(camera, text, sizeof text);
    EXPECT_STREQ(text, "");
    EXPECT_FALSE(RZ_GIGE_IsForcedIpWaiting(camera));
    EXPECT_EQ(RZ_CC_GetListener(&unlisted, text, sizeof text), RZ_OK);
    EXPECT_EQ(unlisted, unsigned{RZ_LISTENER_HEARS});
    EXPECT_STREQ(text, "/usr");

    sdk.unlisted = 3;
    sdk.notSearched = "eth1: down";
    sdk.listener = RZ_LISTENER_MISSING;
    sdk.getErrorText = [](const RZ_CC_DEVICE_INFO*) { return "silent"; };
    sdk.isForcedIpWaiting = [](const RZ_CC_DEVICE_INFO*) { return true; };
    RZ_CC_GetEnumReport(&unlisted, text, sizeof text);
    EXPECT_EQ(unlisted, 3u);
    EXPECT_STREQ(text, "eth1") << "cut to the buffer";
    RZ_CC_GetListener(&unlisted, text, sizeof text);
    EXPECT_EQ(unlisted, unsigned{RZ_LISTENER_MISSING});
    RZ_CC_GetErrorText(camera, text, sizeof text);
    EXPECT_STREQ(text, "sile");
    EXPECT_TRUE(RZ_GIGE_IsForcedIpWaiting(camera));

    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, camera), RZ_OK);
    unsigned ip = 0, mask = 0, gateway = 1;
    EXPECT_EQ(RZ_GIGE_GetPersistentIp(handle, &ip, &mask, &gateway), RZ_OK);
    EXPECT_EQ(ip, SdkDouble::address("192.0.2.20"));
    EXPECT_EQ(mask, SdkDouble::address("255.255.255.0"));
    EXPECT_EQ(gateway, 0u);
}

TEST(SdkDoubleTest, HandsOutTheStatedDescriptionAndPort)
{
    struct Port : GenApi::IPort
    {
        GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
        void Read(void*, int64_t, int64_t) override {}
        void Write(const void*, int64_t, int64_t) override {}
    } port;
    SdkDouble sdk;
    void* handle = nullptr;
    ASSERT_EQ(RZ_CC_CreateHandle(&handle, sdk.record({})), RZ_OK);
    sdk.description = "<xml/>";
    sdk.port = &port;

    unsigned char buffer[4];
    unsigned length = 0;
    EXPECT_EQ(RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, &length), RZ_OK);
    EXPECT_EQ(length, 6u);
    EXPECT_EQ(std::string(buffer, buffer + 4), "<xml");
    sdk.reportedLength = 3145729;
    RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, &length);
    EXPECT_EQ(length, 3145729u);
    EXPECT_EQ(static_cast<GenApi::IPort*>(RZ_CC_GetTlProxy(handle)), &port);

    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_ACCESS_DENIED; };
    sdk.getGenICamXml = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_NO_ANSWER; };
    sdk.getTlProxy = [](RZ_CC_DEVICE_INFO*) { return nullptr; };
    EXPECT_EQ(RZ_CC_OpenDevice(handle, RZ_ACCESS_EXCLUSIVE, 0), RZ_ERROR_ACCESS_DENIED);
    EXPECT_EQ(RZ_XML_GetGenICamXML(handle, buffer, sizeof buffer, &length), RZ_ERROR_NO_ANSWER);
    EXPECT_EQ(RZ_CC_GetTlProxy(handle), nullptr);
}

TEST(SdkDoubleDeathTest, AbortsWhenCalledWithoutADouble)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(RZ_CC_EnumerateTls(), "no SdkDouble exists");
}
