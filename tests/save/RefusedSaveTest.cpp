// SPDX-License-Identifier: Apache-2.0
#include "tests/save/DebugLines.h"
#include "tests/save/SavedCamera.h"

#include <algorithm>
#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr char UsedMessage[] = "ShowMsg(Information|The IP address has been used by other devices.)";

/// Saves that end before the camera is written to.
class RefusedSaveTest : public SavedCamera
{
protected:
    /// From now on `linesAtEnd` is what stood on the debug output when the end was signalled.
    void noteLinesAtEnd()
    {
        QObject::connect(
            thread.get(), &QSaveThread::SigEndThread, thread.get(), [this] { linesAtEnd = debug.lines(); },
            Qt::DirectConnection);
    }

    DebugLines debug;
    std::vector<std::string> linesAtEnd; ///< The worker's until its thread has ended.
};

} // namespace

TEST_F(RefusedSaveTest, AnAddressOfAnotherListedCameraIsRefusedWithoutAPing)
{
    const SdkDouble::Camera other{.mac = "00:00:00:00:00:01", .ip = "192.0.2.30"};
    const QDevice cur = found();
    sdk.listed = {cur.m_pDeviceInfo, sdk.record(other)};
    manager->EnumGigEDevices();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre(UsedMessage, "End(0)"));
    EXPECT_THAT(sdk.calls(), Not(Contains(StartsWith("ForceIpEx"))));
    EXPECT_EQ(ping.file("pings"), "");
}

TEST_F(RefusedSaveTest, AnAddressThatTheCameraIsListedWithByNowIsRefusedToo)
{
    const QDevice cur = found();
    sdk.listed = {sdk.record({.ip = "192.0.2.30"})};
    manager->EnumGigEDevices();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre(UsedMessage, "End(0)"));
}

TEST_F(RefusedSaveTest, AnAddressThatAnswersAPingIsRefused)
{
    ping.set("echo '64 bytes from 192.0.2.30: icmp_seq=1 ttl=64 time=0.1 ms'");
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    // On a busy machine even this answer can take longer than it may.
    for (int i = 0; i < 20 && events() != std::vector<std::string>{UsedMessage, "End(0)"}; ++i) {
        forgetEvents();
        save(cur, modified);
    }
    EXPECT_THAT(events(), ElementsAre(UsedMessage, "End(0)"));
}

TEST_F(RefusedSaveTest, AFailedForceIsToldByWhetherTheAddressWasToChange)
{
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_ACCESS_DENIED; };
    const QDevice cur = found();
    for (QString QDevice::*text :
         {&QDevice::m_strUserDefinedName, &QDevice::m_strSubnetMask, &QDevice::m_strDefaultGateway}) {
        QDevice modified = cur;
        modified.*text = "255.255.0.0";
        forgetEvents();
        save(cur, modified);
        EXPECT_THAT(events(), ElementsAre("ShowMsg(Error|Failed to modify.)", "End(0)"));
    }
    EXPECT_EQ(ping.file("pings"), "");

    forgetEvents();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre("ShowMsg(Error|Failed to modify the IP address.The camera may be in "
                                      "use at present.)",
                                      "End(0)"));
    EXPECT_EQ(cur.m_pDeviceInfo->stGigEInfo.nDeviceIp, SdkDouble::address("192.0.2.20"));
}

TEST_F(RefusedSaveTest, AddressesThatAreNoneEndTheSaveWithoutAMessage)
{
    const QDevice cur = found();
    for (QString QDevice::*text :
         {&QDevice::m_strIpAddress, &QDevice::m_strSubnetMask, &QDevice::m_strDefaultGateway}) {
        QDevice modified = cur;
        modified.*text = "192.0.2";
        forgetEvents();
        save(cur, modified);
        EXPECT_THAT(events(), ElementsAre("End(0)"));
    }
    EXPECT_THAT(sdk.calls(), Not(Contains(StartsWith("ForceIpEx"))));
    EXPECT_THAT(debug.lines(), IsEmpty());
}

TEST_F(RefusedSaveTest, WithoutAHandleItEndsAtOnce)
{
    sdk.createHandle = [](const RZ_CC_DEVICE_INFO*) { return RZ_ERROR_INTERNAL; };
    const QDevice cur = found();
    save(cur, cur);
    EXPECT_THAT(events(), ElementsAre("End(0)"));
    EXPECT_THAT(sdk.calls(), ElementsAre("CreateHandle(00:1A:2B:3C:4D:5E)"));
    EXPECT_THAT(debug.lines(), IsEmpty());

    forgetEvents();
    save(QDevice(), cur);
    EXPECT_THAT(events(), ElementsAre("End(0)"));
}

TEST_F(RefusedSaveTest, WithoutASecondHandleItEndsAfterTheForce)
{
    int handles = 0;
    sdk.createHandle = [&](const RZ_CC_DEVICE_INFO*) { return ++handles == 1 ? RZ_OK : RZ_ERROR_INTERNAL; };
    const QDevice cur = found();
    noteLinesAtEnd();
    save(cur, cur);
    EXPECT_THAT(events(), ElementsAre("End(0)"));
    EXPECT_THAT(linesAtEnd, ElementsAre("!CreateDevice"));
}

TEST_F(RefusedSaveTest, ACameraThatCannotBeLoadedIsLookedForAnew)
{
    sdk.openDevice = [](RZ_CC_DEVICE_INFO*) { return RZ_ERROR_ACCESS_DENIED; };
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strUserDefinedName = "new";
    noteLinesAtEnd();
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre("Refresh(1)", "End(0)"));
    EXPECT_THAT(linesAtEnd, ElementsAre("open device fail 5"));
    EXPECT_THAT(debug.lines(), ElementsAre("open device fail 5", "!LoadXMLFile"));
}

TEST_F(RefusedSaveTest, ASecondSaveMeanwhileEndsAtOnce)
{
    const QDevice cur = found();
    int forces = 0;
    sdk.forceIp = [&](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) {
        ++forces;
        thread->run();
        EXPECT_THAT(events(), ElementsAre("End(0)"));
        return RZ_ERROR_REFUSED;
    };
    save(cur, cur);
    EXPECT_EQ(forces, 1);
    EXPECT_EQ(sdk.livingHandles(), 0u);
    const std::vector<std::string> calls = sdk.calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "CreateHandle(00:1A:2B:3C:4D:5E)"), 2)
        << "It has a handle before it looks whether it may go on.";
}

TEST_F(RefusedSaveTest, TheNextSaveMayBeginWhenTheEndIsSignalled)
{
    int ends = 0;
    QObject::connect(
        thread.get(), &QSaveThread::SigEndThread, thread.get(),
        [&] {
            if (++ends == 1)
                thread->run();
        },
        Qt::DirectConnection);
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_REFUSED; };
    const QDevice cur = found();
    save(cur, cur);
    EXPECT_THAT(events(), ElementsAre("ShowMsg(Error|Failed to modify.)", "End(0)",
                                      "ShowMsg(Error|Failed to modify.)", "End(0)"));
}

TEST_F(RefusedSaveTest, ASaveThatStoppedHalfWayIsClearedUpByTheNext)
{
    const QDevice cur = found();
    QDevice invalid = cur;
    invalid.m_strIpAddress = "192.0.2";
    sdk.forceIp = [&](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) {
        thread->SetThreadInfo(manager, cur, invalid);
        return RZ_OK;
    };
    // On this thread: only the worker's own calls can replace what it works on.
    thread->SetThreadInfo(manager, cur, cur);
    thread->run();
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_THAT(debug.lines(), ElementsAre("QStringToDword false"));
    EXPECT_EQ(sdk.livingHandles(), 1u);

    thread->SetThreadInfo(manager, cur, cur);
    thread->run();
    EXPECT_THAT(events(), ElementsAre("End(0)"));

    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_OK; };
    forgetEvents();
    save(cur, cur);
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", "Refresh(0)", "End(0)"));
}
