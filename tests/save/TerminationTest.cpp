// SPDX-License-Identifier: Apache-2.0
#include "tests/save/QtOrdersThreads.h"
#include "tests/save/SavedCamera.h"

#include <QElapsedTimer>
#include <QSemaphore>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TerminationTest : public SavedCamera
{
protected:
    TerminationTest() : cur(found()), modified(cur) { modified.m_strUserDefinedName = "new"; }

    /// As the window does it, whether a save is running or not.
    void startAsTheWindow(const QDevice& wanted)
    {
        thread->SetThreadInfo(manager, cur, wanted);
        if (thread->isRunning())
            thread->terminate();
        thread->start();
    }

    /// The next force stops until it is let go.
    void holdForce()
    {
        sdk.forceIp = [this](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) {
            forcing.release();
            letGo.acquire();
            return RZ_OK;
        };
    }

    static constexpr char WholeSave[] = "DeviceUserID = 6e 65 77 00";

    QDevice cur;
    QDevice modified;
    QSemaphore forcing;
    QSemaphore letGo;
};

} // namespace

TEST_F(TerminationTest, GivesTheCameraBackWithoutASignalAndTheNextSaveWorks)
{
    holdForce();
    startAsTheWindow(modified);
    ASSERT_TRUE(forcing.tryAcquire(1, WatchdogMilliseconds));
    thread->terminate();
    letGo.release();
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_EQ(sdk.livingHandles(), 0u);

    letGo.release();
    save(cur, modified);
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", WholeSave, "Refresh(0)", "End(0)"));
}

TEST_F(TerminationTest, CutsTheSpinOff)
{
    QObject::connect(
        thread.get(), &QSaveThread::SigRefresh, thread.get(), [] { FAIL() << "comes after the spin"; },
        Qt::DirectConnection);
    // The node map's last write is right before the spin, which must not end before it is cut off.
    QSemaphore written;
    nodes.addRegister("DeviceUserID", 4, [&] {
        written.release();
        letGo.acquire();
    });
    startAsTheWindow(modified);
    ASSERT_TRUE(written.tryAcquire(1, WatchdogMilliseconds));
    thread->terminate();
    letGo.release();
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(TerminationTest, CutsTheSpinOffThatComesWhenACameraCannotBeLoaded)
{
    QObject::connect(
        thread.get(), &QSaveThread::SigRefresh, thread.get(), [] { FAIL() << "comes after the spin"; },
        Qt::DirectConnection);
    QSemaphore opening;
    sdk.openDevice = [&](RZ_CC_DEVICE_INFO*) {
        opening.release();
        letGo.acquire();
        return RZ_ERROR_ACCESS_DENIED;
    };
    startAsTheWindow(modified);
    ASSERT_TRUE(opening.tryAcquire(1, WatchdogMilliseconds));
    thread->terminate();
    letGo.release();
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(TerminationTest, ASaveStartedMeanwhileBeginsWhenTheOldOneIsGone)
{
    SKIP_WHERE_QT_ORDERS_THREADS();
    holdForce();
    startAsTheWindow(cur);
    ASSERT_TRUE(forcing.tryAcquire(1, WatchdogMilliseconds));
    startAsTheWindow(modified);
    letGo.release(2);
    ASSERT_TRUE(startAndAwait(*thread, &QSaveThread::SigEndThread));
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", WholeSave, "Refresh(0)", "End(0)"));
}

TEST_F(TerminationTest, ARunningSaveKeepsWhatItWasStartedWith)
{
    holdForce();
    startAsTheWindow(modified);
    ASSERT_TRUE(forcing.tryAcquire(1, WatchdogMilliseconds));
    QDevice other = modified;
    other.m_strUserDefinedName = "x";
    thread->SetThreadInfo(manager, cur, other);
    letGo.release();
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", WholeSave, "Refresh(0)", "End(0)"));

    forgetEvents();
    letGo.release();
    thread->start();
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_THAT(events(), ElementsAre("Make(<xml/>)", "Connect(Device)", "DeviceUserID = 78 00 00 00",
                                      "Refresh(0)", "End(0)"));
}

TEST_F(TerminationTest, WaitsForTheMessageThatIsBeingRead)
{
    SKIP_WHERE_QT_ORDERS_THREADS();
    sdk.forceIp = [](RZ_CC_DEVICE_INFO*, uint32_t, uint32_t, uint32_t) { return RZ_ERROR_REFUSED; };
    QObject window;
    int shown = 0;
    QObject::connect(
        thread.get(), &QSaveThread::SigShowMsg, &window,
        [&] {
            if (++shown == 1)
                startAsTheWindow(modified);
            QCoreApplication::processEvents(); // as a modal box does
        },
        Qt::BlockingQueuedConnection);
    thread->SetThreadInfo(manager, cur, modified);
    // The first save has no point left after its message and ends as if nobody had wanted it terminated.
    ASSERT_TRUE(startAndAwait(*thread, &QSaveThread::SigEndThread, 2));
    ASSERT_TRUE(awaitEnd(*thread));
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(TerminationTest, AtAHundredMomentsLeavesNothingBehindAndTheNextSaveWorks)
{
    SKIP_WHERE_QT_ORDERS_THREADS();
    QDevice moved = modified;
    moved.m_strIpAddress = "192.0.2.30"; // with a ping
    QElapsedTimer timer;
    timer.start();
    qint64 toTheSpin = 0;
    nodes.addRegister("DeviceUserID", 4, [&] { toTheSpin = timer.nsecsElapsed(); });
    save(cur, moved);
    ASSERT_GT(toTheSpin, 0);
    forgetEvents();
    nodes.addRegister("DeviceUserID", 4);

    for (int i = 0; i < 100; ++i) {
        startAsTheWindow(moved);
        // From not begun yet to in the middle of the spin.
        const qint64 moment = toTheSpin * 2 * (i % 50) / 50;
        timer.start();
        while (timer.nsecsElapsed() < moment)
            QCoreApplication::processEvents();
    }
    forgetEvents();
    thread->SetThreadInfo(manager, cur, moved);
    if (thread->isRunning())
        thread->terminate();
    ASSERT_TRUE(startAndAwait(*thread, &QSaveThread::SigEndThread));
    ASSERT_TRUE(awaitEnd(*thread));
    const std::vector<std::string> all = events();
    ASSERT_GE(all.size(), 5u);
    EXPECT_THAT(std::vector<std::string>(all.end() - 5, all.end()),
                ElementsAre("Make(<xml/>)", "Connect(Device)", WholeSave, "Refresh(0)", "End(0)"));
    EXPECT_EQ(sdk.livingHandles(), 0u);
}

TEST_F(TerminationTest, DestructionEndsARunningSave)
{
    holdForce();
    startAsTheWindow(modified);
    ASSERT_TRUE(forcing.tryAcquire(1, WatchdogMilliseconds));
    // Destruction waits for the call, which must not be interrupted.
    letGo.release();
    thread.reset();
    EXPECT_EQ(sdk.livingHandles(), 0u);
}
