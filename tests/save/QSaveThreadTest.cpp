// SPDX-License-Identifier: Apache-2.0
#include "tests/save/DebugLines.h"
#include "tests/save/SavedCamera.h"
#include "tests/support/InstalledTranslator.h"

#include <QElapsedTimer>

#include <cstring>
#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StrEq;

namespace {

constexpr char RebootMessage[] = "ShowMsg(Information|Modified. The device will reboot automatically.)";
constexpr char TypeMessage[] = "ShowMsg(Information|Failed to change the IP configuration type.)";

class QSaveThreadTest : public SavedCamera
{
protected:
    DebugLines debug;
};

/// A wanted type, and what is then done with the camera between connecting and refreshing.
struct TypeRow
{
    const char* name;
    const char* from;
    const char* to;
    std::vector<std::string> events;
};

class QSaveThreadTypeTest : public QSaveThreadTest, public testing::WithParamInterface<TypeRow>
{};

/// Translates what is said in one context, as long as it lives.
struct ContextTranslator : InstalledTranslator
{
    ContextTranslator()
        : InstalledTranslator([](const QString& context, const QString& text) {
              return context == "QThread" ? "<" + text + ">" : QString();
          })
    {}
};

} // namespace

TEST_F(QSaveThreadTest, AChangedNameAloneForcesTheAddressesAsTheyAreAndIsWrittenWithoutReset)
{
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strUserDefinedName = "new";
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", "DeviceUserID = 6e 65 77 00",
                                      "Refresh(0)", "End(0)"));
    EXPECT_THAT(sdk.calls(),
                ElementsAre("CreateHandle(00:1A:2B:3C:4D:5E)",
                            "ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.20, 255.255.255.0, 0.0.0.0)",
                            "DestroyHandle(00:1A:2B:3C:4D:5E)", "CreateHandle(00:1A:2B:3C:4D:5E)",
                            "OpenDevice(00:1A:2B:3C:4D:5E, 1, 0)",
                            "GetGenICamXML(00:1A:2B:3C:4D:5E, 3145728)", "GetTlProxy(00:1A:2B:3C:4D:5E)",
                            "DestroyHandle(00:1A:2B:3C:4D:5E)"));
    EXPECT_THAT(debug.lines(), ElementsAre("CheckIPTypeChanged false"));
    EXPECT_EQ(ping.file("pings"), "");
}

TEST_F(QSaveThreadTest, NothingChangedStillForcesTheAddressesAndLoadsTheCamera)
{
    const QDevice cur = found();
    save(cur, cur);
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", "Refresh(0)", "End(0)"));
    EXPECT_THAT(sdk.calls(), Contains("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.20, 255.255.255.0, 0.0.0.0)"));
}

TEST_F(QSaveThreadTest, MaskAndGatewayReachTheCameraByForceAlone)
{
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    modified.m_strSubnetMask = "255.255.0.0";
    modified.m_strDefaultGateway = "192.0.2.1";
    save(cur, modified);
    EXPECT_THAT(sdk.calls(), Contains("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.30, 255.255.0.0, 192.0.2.1)"));
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", "Refresh(0)", "End(0)"));
    EXPECT_EQ(ping.file("pings"), "-c 1 192.0.2.30\n");
}

TEST_F(QSaveThreadTest, AnAddressWhosePingTakesTooLongIsTakenAsFree)
{
    ping.set("echo time=1ms; exec sleep 1000");
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", "Refresh(0)", "End(0)"));
    EXPECT_THAT(sdk.calls(), Contains("ForceIpEx(00:1A:2B:3C:4D:5E, 192.0.2.30, 255.255.255.0, 0.0.0.0)"));
}

TEST_F(QSaveThreadTest, TheSecondHandleFindsTheCameraAtItsNewAddress)
{
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_OK; };
    std::vector<uint32_t> addresses;
    sdk.createHandle = [&](const RZ_CC_DEVICE_INFO* info) {
        addresses.push_back(info->stGigEInfo.nDeviceIp);
        return RZ_OK;
    };
    save(cur, modified);
    EXPECT_THAT(addresses, ElementsAre(SdkDouble::address("192.0.2.20"), SdkDouble::address("192.0.2.30")));
}

TEST_F(QSaveThreadTest, NothingButTheAddressOfTheRecordIsChanged)
{
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    modified.m_strSubnetMask = "255.255.0.0";
    modified.m_strDefaultGateway = "192.0.2.1";
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_OK; };
    RZ_CC_DEVICE_INFO expected = *cur.m_pDeviceInfo;
    expected.stGigEInfo.nDeviceIp = SdkDouble::address("192.0.2.30");
    save(cur, modified);
    EXPECT_EQ(std::memcmp(cur.m_pDeviceInfo, &expected, sizeof expected), 0);
}

TEST_P(QSaveThreadTypeTest, IsSwitchedAndTheCameraReset)
{
    const QDevice cur = found({}, GetParam().from);
    QDevice modified = cur;
    modified.m_strIpConfigType = GetParam().to;
    save(cur, modified);
    std::vector<std::string> expected = {"Make(<xml/>)", "Connect(Device)"};
    expected.insert(expected.end(), GetParam().events.begin(), GetParam().events.end());
    expected.insert(expected.end(), {RebootMessage, "DeviceReset()", "Refresh(0)", "End(0)"});
    EXPECT_EQ(events(), expected);
    EXPECT_THAT(debug.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Types, QSaveThreadTypeTest,
    testing::Values(
        TypeRow{"StaticIp", "DHCP", "Static IP", {"GevCurrentIPConfigurationPersistentIP = 1"}},
        TypeRow{"Dhcp",
                "Static IP",
                "DHCP",
                {"GevCurrentIPConfigurationPersistentIP = 0", "GevCurrentIPConfigurationDHCP = 1"}},
        TypeRow{"Lla",
                "DHCP",
                "LLA",
                {"GevCurrentIPConfigurationPersistentIP = 0", "GevCurrentIPConfigurationDHCP = 0"}},
        TypeRow{"NoneThatIsKnown", "DHCP", "static ip", {}}),
    [](const testing::TestParamInfo<TypeRow>& row) { return row.param.name; });

TEST_F(QSaveThreadTest, TheNameIsWrittenBeforeTheRebootIsAnnounced)
{
    const QDevice cur = found();
    QDevice modified = cur;
    modified.m_strIpConfigType = "LLA";
    modified.m_strUserDefinedName = "longer";
    save(cur, modified);
    EXPECT_THAT(events(),
                ElementsAre("Make(<xml/>)", "Connect(Device)", "GevCurrentIPConfigurationPersistentIP = 0",
                            "GevCurrentIPConfigurationDHCP = 0", "DeviceUserID = 6c 6f 6e 67", RebootMessage,
                            "DeviceReset()", "Refresh(0)", "End(0)"));
}

TEST_F(QSaveThreadTest, ATypeThatCannotBeWrittenIsToldAndTheNameIsWrittenWithoutReset)
{
    nodes.addBoolean(StaticIp, [] { throw GenICam::AccessException("locked", "Some.cpp", 1); });
    const QDevice cur = found({}, "Static IP");
    QDevice modified = cur;
    modified.m_strIpConfigType = "DHCP";
    modified.m_strUserDefinedName = "a";
    save(cur, modified);
    EXPECT_THAT(events(),
                ElementsAre("Make(<xml/>)", "Connect(Device)", "GevCurrentIPConfigurationPersistentIP = 0",
                            "GevCurrentIPConfigurationDHCP = 1", TypeMessage, "DeviceUserID = 61 00 00 00",
                            "Refresh(0)", "End(0)"));
    EXPECT_THAT(thread->GetErrorText(), StrEq("what:locked SourceFileName:Some.cpp"));
}

TEST_F(QSaveThreadTest, BothModesMustBeWritten)
{
    nodes.remove(Dhcp);
    for (const char* type : {"DHCP", "LLA"}) {
        const QDevice cur = found({}, "Static IP");
        QDevice modified = cur;
        modified.m_strIpConfigType = type;
        forgetEvents();
        save(cur, modified);
        EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)",
                                          "GevCurrentIPConfigurationPersistentIP = 0", TypeMessage,
                                          "Refresh(0)", "End(0)"));
    }
}

TEST_F(QSaveThreadTest, ANameOrAResetThatCannotBeWrittenIsToldAndTheSaveGoesOn)
{
    nodes.addOther("DeviceUserID");
    nodes.addCommand("DeviceReset", [] { throw GenICam::RuntimeException("no answer", "Port.cpp", 1); });
    const QDevice cur = found({}, "DHCP");
    QDevice modified = cur;
    modified.m_strIpConfigType = "Static IP";
    modified.m_strUserDefinedName = "a";
    save(cur, modified);
    EXPECT_THAT(events(),
                ElementsAre("Make(<xml/>)", "Connect(Device)", "GevCurrentIPConfigurationPersistentIP = 1",
                            "ShowMsg(Error|Set UserID Error: code 0x0)", RebootMessage, "DeviceReset()",
                            "ShowMsg(Error|Restart Device Error: what:no answer SourceFileName:Port.cpp)",
                            "Refresh(0)", "End(0)"));
}

TEST_F(QSaveThreadTest, EachMessageSaysWhatItIsAbout)
{
    std::vector<SaveMessage> messages;
    QObject::connect(
        thread.get(), &QSaveThread::SigShowMsg, thread.get(),
        [&] { messages.push_back(thread->LatestMessage()); }, Qt::DirectConnection);
    const QDevice cur = found({}, "DHCP");
    save(cur, cur);
    EXPECT_EQ(thread->LatestMessage(), SaveMessage::None);

    QDevice modified = cur;
    modified.m_strIpConfigType = "Static IP";
    modified.m_strUserDefinedName = "new";
    nodes.remove("DeviceUserID");
    save(cur, modified);
    EXPECT_THAT(messages, ElementsAre(SaveMessage::FeatureNotWritten, SaveMessage::Restarting));
    EXPECT_EQ(thread->LatestMessage(), SaveMessage::Restarting);

    messages.clear();
    nodes.remove(StaticIp);
    save(cur, modified);
    EXPECT_THAT(messages, ElementsAre(SaveMessage::TypeNotChanged, SaveMessage::FeatureNotWritten));

    messages.clear();
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_REFUSED; };
    save(cur, modified);
    EXPECT_THAT(messages, ElementsAre(SaveMessage::AddressNotForced));

    messages.clear();
    ping.set("echo 'time=1 ms'");
    modified.m_strIpAddress = "192.0.2.30";
    save(cur, modified);
    EXPECT_THAT(messages, ElementsAre(SaveMessage::AddressInUse));

    save(cur, cur);
    EXPECT_EQ(thread->LatestMessage(), SaveMessage::AddressNotForced);
}

TEST_F(QSaveThreadTest, ItsTextsAreTranslatedAsTheThreadsOwn)
{
    const ContextTranslator translator;
    const QDevice cur = found({}, "<DHCP>");
    QDevice modified = cur;
    modified.m_strIpConfigType = "<Static IP>";
    nodes.remove("DeviceReset");
    save(cur, modified);
    EXPECT_THAT(events(),
                ElementsAre("Make(<xml/>)", "Connect(Device)", "GevCurrentIPConfigurationPersistentIP = 1",
                            "ShowMsg(<Information>|<Modified. The device will reboot automatically.>)",
                            "ShowMsg(<Error>|Restart Device Error: code 0x0)", "Refresh(0)", "End(0)"));

    forgetEvents();
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_REFUSED; };
    save(cur, cur);
    EXPECT_THAT(events(), ElementsAre("ShowMsg(<Error>|<Failed to modify.>)", "End(0)"));
}

TEST_F(QSaveThreadTest, EveryTypeIsComparedAsTranslated)
{
    const ContextTranslator translator;
    const struct
    {
        const char* type;
        std::vector<std::string> modes;
    } table[] = {
        {"<Static IP>", {"GevCurrentIPConfigurationPersistentIP = 1"}},
        {"<DHCP>", {"GevCurrentIPConfigurationPersistentIP = 0", "GevCurrentIPConfigurationDHCP = 1"}},
        {"<LLA>", {"GevCurrentIPConfigurationPersistentIP = 0", "GevCurrentIPConfigurationDHCP = 0"}},
        {"Static IP", {}},
        {"DHCP", {}},
        {"LLA", {}}};
    QDevice modified = found();
    thread->SetThreadInfo(manager, found(), modified);
    ASSERT_TRUE(thread->CreateDevice());
    ASSERT_TRUE(thread->LoadXMLFile());
    for (const auto& row : table) {
        modified.m_strIpConfigType = row.type;
        thread->SetThreadInfo(manager, found({}, "unknown"), modified);
        forgetEvents();
        EXPECT_TRUE(thread->SetDeviceIPType());
        EXPECT_EQ(events(), row.modes) << row.type;
    }
}

TEST_F(QSaveThreadTest, EveryRefusalIsTranslatedAsTheThreadsOwn)
{
    const ContextTranslator translator;
    const QDevice cur = found({}, "<DHCP>");
    QDevice modified = cur;
    modified.m_strIpAddress = "192.0.2.30";
    thread->SetThreadInfo(manager, cur, modified);
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_REFUSED; };
    ASSERT_TRUE(thread->CreateDevice());
    EXPECT_FALSE(thread->SetIPAddr());
    sdk.listed = {sdk.record({.ip = "192.0.2.30"})};
    manager->EnumGigEDevices();
    EXPECT_FALSE(thread->SetIPAddr());
    EXPECT_THAT(events(),
                ElementsAre("ShowMsg(<Error>|<Failed to modify the IP address.The camera may be in use at "
                            "present.>)",
                            "ShowMsg(<Information>|<The IP address has been used by other devices.>)"));

    forgetEvents();
    modified.m_strIpConfigType = "<LLA>"; // and no node map to write it to
    thread->SetThreadInfo(manager, cur, modified);
    EXPECT_FALSE(thread->SetDeviceIPType());
    EXPECT_THAT(events(),
                ElementsAre("ShowMsg(<Information>|<Failed to change the IP configuration type.>)"));
}

TEST_F(QSaveThreadTest, WaitsUntilAMessageThatBlocksIsClosed)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "thread sanitizer does not see the semaphore with which Qt ends a blocking call";
#endif
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_REFUSED; };
    const QDevice cur = found();
    thread->SetThreadInfo(manager, cur, cur);
    QThread* shownOn = nullptr;
    QObject window;
    QObject::connect(
        thread.get(), &QSaveThread::SigShowMsg, &window,
        [&] {
            shownOn = QThread::currentThread();
            QCoreApplication::processEvents(); // as a modal box does
            EXPECT_THAT(events(), Not(Contains("End(0)")));
            EXPECT_EQ(sdk.livingHandles(), 1u);
        },
        Qt::BlockingQueuedConnection);
    ASSERT_TRUE(startAndAwait(*thread, &QSaveThread::SigEndThread));
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_EQ(shownOn, QThread::currentThread());
}

TEST_F(QSaveThreadTest, GivesTheCameraBackBeforeItWaitsAndNotAfterwards)
{
    const QDevice cur = found();
    QElapsedTimer timer;
    qint64 toTheReturn = 0;
    qint64 toTheRefresh = 0;
    nodes.onConnect = [&] { timer.start(); };
    nodes.onDelete = [&] { toTheReturn = timer.nsecsElapsed(); };
    QObject::connect(
        thread.get(), &QSaveThread::SigRefresh, thread.get(), [&] { toTheRefresh = timer.nsecsElapsed(); },
        Qt::DirectConnection);
    save(cur, cur);
    EXPECT_GT(toTheReturn, 0);
    EXPECT_GT(toTheRefresh, 2 * toTheReturn);
}

TEST_F(QSaveThreadTest, SpinsBeforeTheCameraIsLookedForAnew)
{
    const QDevice cur = found();
    timespec before{};
    timespec wallBefore{};
    const auto seconds = [](const timespec& time) {
        return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
    };
    double share = 0;
    nodes.onConnect = [&] {
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
        clock_gettime(CLOCK_MONOTONIC, &wallBefore);
    };
    QObject::connect(
        thread.get(), &QSaveThread::SigRefresh, thread.get(),
        [&] {
            timespec after{};
            timespec wallAfter{};
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
            clock_gettime(CLOCK_MONOTONIC, &wallAfter);
            share = (seconds(after) - seconds(before)) / (seconds(wallAfter) - seconds(wallBefore));
        },
        Qt::DirectConnection);
    save(cur, cur);
    EXPECT_GT(share, 0.01) << "A sleeping thread has next to nothing of the processor.";
}
