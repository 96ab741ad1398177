// SPDX-License-Identifier: Apache-2.0
#include "device/QRefreshThread.h"

#include "device/QDeviceManager.h"
#include "tests/device/QtFixture.h"
#include "tests/support/SdkDouble.h"

#include <QSemaphore>

#include <gmock/gmock.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class QRefreshThreadTest : public QtFixture
{
protected:
    /// Counts the signals in the worker's own thread.
    void countEnds(QRefreshThread& thread)
    {
        orderEndOf(thread);
        QObject::connect(
            &thread, &QRefreshThread::SigEndThread, &thread, [this] { ++ends; }, Qt::DirectConnection);
    }

    SdkDouble sdk;
    QDeviceManager manager;
    int ends = 0;
};

} // namespace

TEST_F(QRefreshThreadTest, WithoutAManagerItDoesNothingAndNeverSignals)
{
    QRefreshThread thread;
    countEnds(thread);
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(ends, 0);
    EXPECT_THAT(sdk.calls(), IsEmpty());
}

TEST_F(QRefreshThreadTest, EachStartEnumeratesOnceOnTheWorkerThreadAndSignalsOnce)
{
    QRefreshThread thread;
    countEnds(thread);
    thread.SetThreadInfo(&manager);
    QThread* enumeratedOn = nullptr;
    sdk.enumDevices = [&](RZ_CC_DEVICE_INFO_LIST&) {
        enumeratedOn = QThread::currentThread();
        EXPECT_EQ(ends, 0);
        return 0;
    };
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(enumeratedOn, &thread);
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(sdk.calls(), ElementsAre("EnumerateTls()", "EnumDevices(1)"));

    sdk.enumDevices = [](RZ_CC_DEVICE_INFO_LIST&) { return 0; };
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(ends, 2);
    EXPECT_THAT(sdk.calls(),
                ElementsAre("EnumerateTls()", "EnumDevices(1)", "EnumerateTls()", "EnumDevices(1)"));
}

TEST_F(QRefreshThreadTest, TheEndReachesAnotherThreadQueuedWithTheNewListThere)
{
    sdk.listed = {sdk.record({.userName = "found"})};
    QRefreshThread thread;
    orderEndOf(thread);
    thread.SetThreadInfo(&manager);
    QVector<QDevice> devices;
    QThread* receivedOn = nullptr;
    QObject receiver;
    QObject::connect(&thread, &QRefreshThread::SigEndThread, &receiver, [&] {
        receivedOn = QThread::currentThread();
        manager.GetAllDevices(devices);
    });
    ASSERT_TRUE(startAndAwait(thread, &QRefreshThread::SigEndThread));
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(receivedOn, QThread::currentThread());
    ASSERT_EQ(devices.size(), 1);
    EXPECT_EQ(devices[0].m_strUserDefinedName, "found");
}

TEST_F(QRefreshThreadTest, AFailedEnumerationStillSignalsItsEnd)
{
    sdk.enumerateTls = [] { return 0u; };
    QRefreshThread thread;
    countEnds(thread);
    thread.SetThreadInfo(&manager);
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(ends, 1);
}

TEST_F(QRefreshThreadTest, ARunDuringAJobReturnsWithoutASignal)
{
    QRefreshThread thread;
    countEnds(thread);
    thread.SetThreadInfo(&manager);
    sdk.enumDevices = [&](RZ_CC_DEVICE_INFO_LIST&) {
        thread.run();
        EXPECT_EQ(ends, 0);
        return 0;
    };
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(sdk.calls(), ElementsAre("EnumerateTls()", "EnumDevices(1)"));
}

TEST_F(QRefreshThreadTest, ExitThreadDeclaresTheJobEndedWithoutASignal)
{
    QRefreshThread thread;
    countEnds(thread);
    thread.SetThreadInfo(&manager);
    int enumerations = 0;
    sdk.enumDevices = [&](RZ_CC_DEVICE_INFO_LIST&) {
        if (++enumerations == 1) {
            thread.ExitThread();
            EXPECT_EQ(ends, 0);
            thread.run(); // not held back any more: a job of its own, with its own end
            EXPECT_EQ(ends, 1);
        }
        return 0;
    };
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(enumerations, 2);
    EXPECT_EQ(ends, 2);
}

TEST_F(QRefreshThreadTest, IsFreeForTheNextJobWhenItSignalsTheEnd)
{
    QRefreshThread thread;
    countEnds(thread);
    thread.SetThreadInfo(&manager);
    QObject::connect(
        &thread, &QRefreshThread::SigEndThread, &thread,
        [&] {
            if (ends == 1)
                thread.run();
        },
        Qt::DirectConnection);
    thread.start();
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(ends, 2);
}

TEST_F(QRefreshThreadTest, DestructionCutsARunningEnumerationOff)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "thread sanitizer loses track of a thread that is cancelled in a system call";
#endif
    QSemaphore enumerating;
    bool finished = false;
    sdk.enumDevices = [&](RZ_CC_DEVICE_INFO_LIST&) {
        enumerating.release();
        pause(); // until the thread is cancelled
        finished = true;
        return 0;
    };
    {
        QRefreshThread thread;
        countEnds(thread);
        thread.SetThreadInfo(&manager);
        thread.start();
        ASSERT_TRUE(enumerating.tryAcquire(1, WatchdogMilliseconds));
    }
    EXPECT_FALSE(finished);
    EXPECT_EQ(ends, 0);
}
