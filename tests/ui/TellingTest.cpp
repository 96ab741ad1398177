// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/Chinese.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QStatusLine.h"

#include <QSemaphore>
#include <QTest>

#include <gmock/gmock.h>

#include <atomic>

namespace {

/// What the window says beside its list.
class TellingTest : public WindowFixture
{
protected:
    ~TellingTest() override { go.release(1000); }

    QString status() const { return window->findChild<QStatusLine*>()->text(); }
    bool becomes(const QString& wanted)
    {
        return eventually([&] { return status() == wanted; });
    }
    QString emptyText() const { return table()->accessibleDescription(); }

    /// Holds, on its worker, the next calls of what calls this.
    void hold()
    {
        held.release();
        go.acquire();
    }
    bool jobIsHeld()
    {
        return eventually([this] { return held.tryAcquire(); });
    }

    /// Presses Save for another kind of address, and confirms that the camera restarts.
    void saveAsDhcp()
    {
        confirmNextMessage();
        QTest::mouseClick(button("DHCP"), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        click("Save");
        ASSERT_TRUE(eventually([this] { return !messages.empty(); }));
        ASSERT_TRUE(eventually([this] { return button("Save")->isEnabled(); }));
    }

    void listNothing()
    {
        sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST& list) {
            list.nDeviceCount = 0;
            return RZ_OK;
        };
    }

    /// As the camera says of itself from now on.
    static void setType(RZ_CC_DEVICE_INFO* camera, IpConfig type)
    {
        camera->stGigEInfo.nIpConfigCurrent = type;
    }

    QSemaphore held;
    QSemaphore go;
};

doctor::Finding finding(const char* text)
{
    doctor::Finding result;
    result.id = "no-link";
    result.severity = doctor::Severity::Warning;
    result.text = {{text, {"eth1"}}};
    return result;
}

const char* const NoLink = "The network adapter %1 has no link: its cable is out or broken, or what is at "
                           "the cable's other end is switched off.";

} // namespace

TEST_F(TellingTest, TheStatusLineTellsOfASearchAndThenWhatIsThere)
{
    addCamera({.mac = "00:00:00:00:00:01", .ip = "192.0.2.20"});
    addCamera({.mac = "00:00:00:00:00:02", .ip = "192.0.2.21"});
    addCamera({.mac = "00:00:00:00:00:03", .ip = "198.51.100.9", .adapter = "198.51.100.1"});
    open();
    EXPECT_EQ(status(), "3 cameras on 2 adapters");
    sdk.enumDevices = [this](RZ_CC_DEVICE_INFO_LIST& list) {
        hold();
        list.nDeviceCount = 1;
        list.apDeviceInfo[0] = sdk.listed.front();
        return RZ_OK;
    };
    click("Refresh");
    ASSERT_TRUE(jobIsHeld());
    EXPECT_EQ(status(), "Searching ...");
    go.release(100);
    EXPECT_TRUE(becomes("1 camera"));
}

TEST_F(TellingTest, TheStatusLineSpeaksTheLanguageOfNow)
{
    addCamera({.mac = "00:00:00:00:00:01", .ip = "192.0.2.20"});
    addCamera({.mac = "00:00:00:00:00:02", .ip = "192.0.2.21"});
    open();
    const Chinese language;
    EXPECT_EQ(status(), QString::fromUtf8("2 台相机，1 个网卡"));
}

TEST_F(TellingTest, TheStatusLineTellsWhatBecameOfASave)
{
    auto* const camera = addCamera({.ip = "192.0.2.20", .userName = "Right", .ipConfig = StaticIp});
    open();
    sdk.forceIp = [camera](RZ_CC_DEVICE_INFO*, uint32_t ip, auto...) {
        camera->stGigEInfo.nDeviceIp = ip;
        return RZ_OK;
    };
    type("IP Address:", "192.0.2.30");
    click("Save");
    EXPECT_TRUE(becomes(QString::fromUtf8("Right has the address 192.0.2.30  ·  1 camera")));
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    refresh();
    EXPECT_EQ(status(), "1 camera") << "of an action before";
}

TEST_F(TellingTest, TheStatusLineSaysThatASaveFailed)
{
    addCamera({.userName = "Right", .ipConfig = StaticIp});
    open();
    sdk.forceIp = [](auto...) { return RZ_ERROR_REFUSED; };
    confirmNextMessage();
    click("Save");
    EXPECT_TRUE(becomes(QString::fromUtf8("The change of Right was not completed  ·  1 camera")));
}

TEST_F(TellingTest, ACameraThatRestartedIsToldOfAndListedWhenItIsHeardAgain)
{
    auto* const camera = addCamera({.userName = "Right", .ipConfig = StaticIp});
    open();
    const auto look = sdk.look;
    sdk.look = [this, look](unsigned options, unsigned time, const RZ_CC_LOOK_SINK& sink) {
        hold();
        return look(options, time, sink);
    };
    saveAsDhcp();
    EXPECT_TRUE(
        becomes(QString::fromUtf8("Right restarts; this can take a minute  ·  1 camera"))); // As it was.
    ASSERT_TRUE(jobIsHeld());
    go.release();
    ASSERT_TRUE(jobIsHeld()) << "It is looked for again, as it is not there as it should be.";
    EXPECT_EQ(cell(0, 5), "Static IP");
    setType(camera, Dhcp);
    go.release(1000);
    ASSERT_TRUE(becomes(QString::fromUtf8("Right is heard again  ·  Searching ...")));
    EXPECT_FALSE(button("Refresh")->isEnabled());
    EXPECT_TRUE(becomes(QString::fromUtf8("Right is heard again  ·  1 camera")));
    EXPECT_EQ(cell(0, 5), "DHCP");
}

TEST_F(TellingTest, TheListStaysWhileSomebodyTypesThoughACameraIsHeardAgain)
{
    auto* const camera = addCamera({.userName = "Right", .ipConfig = StaticIp});
    open();
    sdk.look = [this, look = sdk.look](unsigned options, unsigned time, const RZ_CC_LOOK_SINK& sink) {
        hold();
        return look(options, time, sink);
    };
    saveAsDhcp();
    ASSERT_TRUE(becomes(QString::fromUtf8("Right restarts; this can take a minute  ·  1 camera")));
    type("Device User ID:", "typed");
    const auto searches = enumerationCount();
    ASSERT_TRUE(jobIsHeld());
    setType(camera, Dhcp);
    go.release(1000);
    EXPECT_TRUE(becomes(QString::fromUtf8("Right is heard again  ·  F5 shows it as it is now  ·  1 camera")));
    EXPECT_EQ(field("Device User ID:")->text(), "typed");
    EXPECT_EQ(enumerationCount(), searches);
    EXPECT_EQ(cell(0, 5), "Static IP");
}

TEST_F(TellingTest, ACameraThatIsNotHeardAgainIsGivenUp)
{
    addCamera({.userName = "Right", .ipConfig = StaticIp});
    open();
    saveAsDhcp();
    EXPECT_TRUE(becomes(QString::fromUtf8("Right was not heard again after its restart  ·  1 camera")));
    EXPECT_FALSE(window->IsLooking());
}

TEST_F(TellingTest, AnEmptyTableSaysWhyInBothLanguages)
{
    examine = [this] {
        hold();
        doctor::Diagnosis diagnosis;
        diagnosis.findings = {finding(NoLink), finding("Another.")};
        return diagnosis;
    };
    go.release(); // The one of the start.
    open();
    ASSERT_TRUE(jobIsHeld());
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(jobIsHeld());
    EXPECT_EQ(emptyText(), "No camera has answered. Looking for the reason ...");
    const QImage before = table()->viewport()->grab().toImage();
    go.release();
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_EQ(emptyText(),
              "No camera has answered. The network adapter eth1 has no link: its cable is out or broken, or "
              "what is at the cable's other end is switched off. \"Diagnose\" tells more.");
    EXPECT_NE(table()->viewport()->grab().toImage(), before) << "It is seen.";
    EXPECT_EQ(table()->rowCount(), 0);
    const Chinese language;
    EXPECT_EQ(emptyText(),
              QString::fromUtf8("没有相机应答。网卡 eth1 没有连接：网线未插或损坏，或网线另一端的设备"
                                "已关闭。“诊断”可查看详情。"));
}

TEST_F(TellingTest, AReasonForAListOfBeforeIsDropped)
{
    std::atomic<int> examinations = 0;
    examine = [this, &examinations] {
        doctor::Diagnosis diagnosis;
        diagnosis.findings = {finding(++examinations == 2 ? "Old." : "New.")};
        hold();
        return diagnosis;
    };
    go.release();
    open();
    ASSERT_TRUE(jobIsHeld());
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(jobIsHeld());
    addCamera({});
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(eventually([this] { return table()->rowCount() == 1; }));
    EXPECT_EQ(emptyText(), "");
    listNothing();
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(eventually([this] { return table()->rowCount() == 0; }));
    go.release();
    ASSERT_TRUE(jobIsHeld()) << "The reason for the list of now is looked for.";
    EXPECT_EQ(emptyText(), "No camera has answered. Looking for the reason ...");
    go.release(100);
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_EQ(emptyText(), "No camera has answered. New. \"Diagnose\" tells more.");
}

TEST_F(TellingTest, AConflictIsToldInTheStatusLineAndInTheToolTipsOfBothRows)
{
    addCamera({.mac = "00:00:00:00:00:01", .ip = "192.0.2.21", .userName = "Left"});
    addCamera({.mac = "00:00:00:00:00:02", .ip = "192.0.2.21", .userName = "Right"});
    addCamera({.mac = "00:00:00:00:00:03", .ip = "192.0.2.22", .userName = "Roof"});
    open();
    EXPECT_EQ(status(), QString::fromUtf8("Two cameras have the address 192.0.2.21: Left, Right  ·  "
                                          "3 cameras on 1 adapter"));
    EXPECT_EQ(toolTipOfCell(0, 6), "Another camera has the same address: Right (00:00:00:00:00:02).");
    EXPECT_EQ(toolTipOfCell(1, 4), "Another camera has the same address: Left (00:00:00:00:00:01).");
    EXPECT_EQ(cell(1, 4), "Free");
    EXPECT_EQ(toolTipOfCell(2, 6), "");
}

TEST_F(TellingTest, TheToolTipOfACameraInUseTellsWhoHoldsIt)
{
    auto* const camera = addHeldCamera({.userName = "Left"});
    sdk.look = [this, camera](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
        RZ_CC_SIGHTING sighting = sdk.sighting(camera);
        sighting.nRegisters = RZ_REGISTERS_TOLD;
        sighting.nTold = RZ_TOLD_HOLDER | RZ_TOLD_PRIVILEGE;
        sighting.nPrivilege = 2;
        sighting.nHolderIp = SdkDouble::address("198.51.100.77");
        sighting.nHolderPort = 4711;
        sink.pOnCamera(sink.pContext, &sighting, 1);
        const RZ_CC_LOOK_REPORT report{0, RZ_LISTENER_HEARS, "", ""};
        sink.pOnReport(sink.pContext, &report);
        return RZ_OK;
    };
    open();
    EXPECT_EQ(cell(0, 4), "In Use");
    EXPECT_EQ(toolTipOfCell(0, 4),
              "It is held by an application on another computer, 198.51.100.77, port 4711; which program "
              "that is, can be seen there only.");
    const Chinese language;
    EXPECT_EQ(toolTipOfCell(0, 4),
              QString::fromUtf8(
                  "它被另一台计算机 198.51.100.77（端口 4711）上的应用程序占用；是哪个程序只能在那里看到。"));
}

TEST_F(TellingTest, WhatALookFoundOutAboutAListOfBeforeIsDropped)
{
    addCamera({.mac = "00:00:00:00:00:01", .ip = "192.0.2.21", .userName = "Left"});
    auto* const right = addCamera({.mac = "00:00:00:00:00:02", .ip = "192.0.2.21", .userName = "Right"});
    sdk.look = [this, look = sdk.look](unsigned options, unsigned time, const RZ_CC_LOOK_SINK& sink) {
        const int result = look(options, time, sink);
        hold();
        return result;
    };
    go.release();
    open();
    ASSERT_TRUE(jobIsHeld());
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(jobIsHeld()); // It has seen the conflict.
    right->stGigEInfo.nDeviceIp = SdkDouble::address("192.0.2.22");
    QTest::keyClick(window->windowHandle(), Qt::Key_F5);
    ASSERT_TRUE(eventually([this] { return cell(1, 6) == "192.0.2.22"; }));
    go.release();
    ASSERT_TRUE(jobIsHeld()) << "A look for the list of now.";
    EXPECT_EQ(status(), "2 cameras on 1 adapter");
    go.release(100);
}
