// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WindowActions.h"
#include "tests/ui/WindowFixture.h"
#include "ui/QSetIpAddrDlg.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QSemaphore>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

using testing::Contains;

namespace {

/// The window in the hands of somebody who does not wait for a job to end. Jobs end when the test lets them.
class WhileJobsRunTest : public WindowFixture
{
protected:
    ~WhileJobsRunTest() override { go.release(100); }

    void openWithCameras()
    {
        for (int i = 0; i < 40; ++i)
            addCamera({.mac = QString::asprintf("00:00:00:00:00:%02d", i).toStdString(),
                       .ip = "192.0.2." + std::to_string(100 + i),
                       .ipConfig = StaticIp});
        open();
    }

    /// Waits, on a worker's thread, until the test lets the job go on.
    void hold()
    {
        held.release();
        go.acquire();
    }

    /// Holds each search for cameras from now on; these are what it finds then.
    void holdSearches(const std::vector<RZ_CC_DEVICE_INFO*>& found)
    {
        sdk.enumDevices = [this, found](RZ_CC_DEVICE_INFO_LIST& list) {
            hold();
            list.nDeviceCount = static_cast<uint32_t>(found.size());
            std::copy(found.begin(), found.end(), list.apDeviceInfo);
            return RZ_OK;
        };
    }

    bool jobIsHeld()
    {
        return eventually([this] { return held.tryAcquire(); });
    }

    void sendToTitle(QEvent::Type type, const QPoint& onScreen)
    {
        QWidget* const title = window->childAt(300, 16);
        QMouseEvent event(type, title->mapFromGlobal(onScreen), onScreen,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(title, &event);
    }

    /// Types, scrolls and drags; each must have its effect while the job is held.
    void useWindow()
    {
        type("Device User ID:", "typed meanwhile");

        auto* const bar = table()->verticalScrollBar();
        const int before = bar->value();
        const QPoint middle = table()->viewport()->rect().center();
        QWheelEvent wheel(middle, table()->viewport()->mapToGlobal(middle), {}, {0, -360}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(table()->viewport(), &wheel);
        EXPECT_GT(bar->value(), before);

        const QPoint place = window->pos();
        const QPoint grip = place + QPoint(300, 16);
        sendToTitle(QEvent::MouseButtonPress, grip);
        sendToTitle(QEvent::MouseMove, grip);
        const QPoint from = window->pos();
        sendToTitle(QEvent::MouseMove, grip + QPoint(40, 23));
        EXPECT_EQ(window->pos(), from + QPoint(40, 23));

        clickRow(bar->value() + 2);
        EXPECT_EQ(table()->currentRow(), bar->value() + 2);
        EXPECT_FALSE(jobsAreOver());
    }

    QSemaphore held;
    QSemaphore go;
};

} // namespace

TEST_F(WhileJobsRunTest, TheWindowAnswersWhileTheListIsMade)
{
    openWithCameras();
    holdSearches(sdk.listed);
    click("Refresh");
    ASSERT_TRUE(jobIsHeld());
    useWindow();
    go.release(100);
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_EQ(table()->rowCount(), 40);
}

TEST_F(WhileJobsRunTest, TheWindowAnswersWhileASaveRuns)
{
    openWithCameras();
    sdk.forceIp = [this](auto...) {
        hold();
        return RZ_ERROR_REFUSED;
    };
    click("Save");
    ASSERT_TRUE(jobIsHeld());
    useWindow();
    confirmNextMessage();
    go.release(100);
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(WhileJobsRunTest, AfterAGoodSaveRefreshIsInUseAgainAtTheEndOfItsRefreshOnly)
{
    openWithCameras();
    type("IP Address:", "192.0.2.20");
    holdSearches(sdk.listed);
    click("Save");
    ASSERT_TRUE(jobIsHeld());
    ASSERT_TRUE(eventually([this] { return button("Save")->isEnabled(); }));
    EXPECT_TRUE(button("Modify IP")->isEnabled());
    EXPECT_FALSE(button("Refresh")->isEnabled());
    go.release(100);
    EXPECT_TRUE(eventually([this] { return button("Refresh")->isEnabled(); }));
}

TEST_F(WhileJobsRunTest, TheLateEndOfARefreshBringsRefreshBackIntoUseOnlyWhenNoOtherRuns)
{
    openWithCameras();
    holdSearches({});
    click("Refresh");
    ASSERT_TRUE(jobIsHeld());
    go.release();
    // The next one begins before the window has heard of the first one's end.
    while (!held.tryAcquire(1, 1))
        window->OnBtnRefresh();
    QCoreApplication::processEvents();
    EXPECT_FALSE(button("Refresh")->isEnabled());
    go.release(100); // It may have been asked for once more.
    EXPECT_TRUE(eventually([this] { return button("Refresh")->isEnabled(); }));
}

TEST_F(WhileJobsRunTest, ADialogThatIsOpenWhileItsCameraVanishesForcesNoOtherOne)
{
    addCamera({.mac = "00:00:00:00:00:01", .ip = "10.0.0.8", .ipConfig = StaticIp});
    addCamera({.mac = "00:00:00:00:00:02", .ip = "10.0.0.9", .ipConfig = StaticIp});
    open();
    clickRow(1);
    holdSearches({sdk.listed.front()});
    click("Refresh");
    ASSERT_TRUE(jobIsHeld());
    onNextModal([this](QWidget& dialog) {
        go.release(100);
        ASSERT_TRUE(eventually([this] { return table()->rowCount() == 1; }));
        auto* const edit = dialog.findChild<QLineEdit*>();
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, "192.0.2.88");
        QTest::keyClick(edit, Qt::Key_Return);
    });
    click("Modify IP");
    ASSERT_TRUE(eventually([this] { return jobsAreOver(); }));
    EXPECT_THAT(sdk.calls(), Contains("ForceIpEx(00:00:00:00:00:02, 192.0.2.88, 255.255.255.0, 0.0.0.0)"));
    for (const std::string& call : sdk.calls())
        EXPECT_EQ(call.find("ForceIpEx(00:00:00:00:00:01"), std::string::npos) << call;
}
