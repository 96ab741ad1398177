// SPDX-License-Identifier: Apache-2.0
#include "device/QPingThread.h"

#include "tests/device/QtFixture.h"
#include "tests/support/PollTimeouts.h"
#include "tests/support/ScriptedProgram.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::AllOf;
using testing::Each;
using testing::Gt;
using testing::IsEmpty;
using testing::Le;
using testing::Not;

namespace {

/// With a program "cmd" of the test's own, first in PATH.
class QPingThreadTest : public QtFixture
{
protected:
    /// One job from start to end; the watchdog is well below the 30 s that the worker would wait.
    void runOnce(QPingThread& thread)
    {
        orderEndOf(thread);
        thread.start();
        ASSERT_TRUE(awaitEnd(thread));
    }

    ScriptedProgram cmd{"cmd"};
};

} // namespace

TEST_F(QPingThreadTest, RunsOneEchoRequestThroughCmd)
{
    cmd.set("printf '%s\\n' \"$#\" \"$@\" > \"$(dirname \"$0\")/arguments\"");
    QPingThread::PingIPAddr("192.168.1.20");
    EXPECT_EQ(cmd.file("arguments"), "2\n/c\nping 192.168.1.20 -n 1\n");
}

TEST_F(QPingThreadTest, AnAddressThatAnswersGivesTrueAndOneThatDoesNotGivesFalse)
{
    cmd.set("case $2 in"
            " *192.168.1.20*) echo 'Reply from 192.168.1.20: bytes=32 time=1ms TTL=64';;"
            " *) echo 'Request timed out.'; exit 1;;"
            " esac");
    QPingThread thread;
    thread.SetIPAddress("192.168.1.20");
    runOnce(thread);
    EXPECT_TRUE(thread.GetPingResult());

    thread.SetIPAddress("192.168.1.21");
    runOnce(thread);
    EXPECT_FALSE(thread.GetPingResult());

    thread.SetIPAddress("192.168.1.20");
    runOnce(thread);
    EXPECT_TRUE(thread.GetPingResult());
}

TEST_F(QPingThreadTest, HasNoResultBeforeTheFirstPing)
{
    EXPECT_FALSE(QPingThread().GetPingResult());
}

TEST_F(QPingThreadTest, TheTwoLettersInAnyWordCountAsAnAnswer)
{
    cmd.set("echo no such terms");
    EXPECT_TRUE(QPingThread::PingIPAddr("10.0.0.1"));
    cmd.set("echo ms");
    EXPECT_TRUE(QPingThread::PingIPAddr("10.0.0.1"));
    cmd.set("echo 1 MS 2 m s");
    EXPECT_FALSE(QPingThread::PingIPAddr("10.0.0.1"));
    cmd.set("");
    EXPECT_FALSE(QPingThread::PingIPAddr("10.0.0.1"));
}

TEST_F(QPingThreadTest, OnlyStandardOutputUpToItsFirstNulIsLookedAt)
{
    cmd.set("echo time=1ms >&2");
    EXPECT_FALSE(QPingThread::PingIPAddr("10.0.0.1"));
    cmd.set("printf 'lost\\0time=1ms'");
    EXPECT_FALSE(QPingThread::PingIPAddr("10.0.0.1"));
    cmd.set("printf 'time=1ms\\0'");
    EXPECT_TRUE(QPingThread::PingIPAddr("10.0.0.1"));
}

TEST_F(QPingThreadTest, TheExitStatusDoesNotMatter)
{
    cmd.set("echo time=1ms; exit 3");
    EXPECT_TRUE(QPingThread::PingIPAddr("10.0.0.1"));
}

TEST_F(QPingThreadTest, HasThirtySecondsToStartAndThirtyToFinish)
{
    cmd.set("echo time=1ms");
    forgetPollTimeouts();
    EXPECT_TRUE(QPingThread::PingIPAddr("10.0.0.1"));
    // What is left of them when it begins to wait, and again when something was printed.
    EXPECT_THAT(pollTimeouts(), AllOf(Not(IsEmpty()), Each(AllOf(Gt(15000), Le(30000)))));
}

TEST_F(QPingThreadTest, ACrashIsNoAnswerWhateverWasPrinted)
{
    cmd.set("echo time=1ms; kill -9 $$");
    EXPECT_FALSE(QPingThread::PingIPAddr("10.0.0.1"));
}

TEST_F(QPingThreadTest, APingThatCannotStartIsFalseAtOnceAndSignalsItsEnd)
{
    qputenv("PATH", cmd.directory().toLocal8Bit()); // where there is no cmd
    QPingThread thread;
    int ends = 0;
    QObject::connect(
        &thread, &QPingThread::SigEndThread, &thread, [&] { ++ends; }, Qt::DirectConnection);
    thread.SetIPAddress("10.0.0.1");
    runOnce(thread);
    EXPECT_FALSE(thread.GetPingResult());
    EXPECT_EQ(ends, 1);
}

TEST_F(QPingThreadTest, TheEndReachesAnotherThreadQueuedWithTheResultThere)
{
    cmd.set("echo time=1ms");
    QPingThread thread;
    thread.SetIPAddress("10.0.0.1");
    orderEndOf(thread);
    bool result = false;
    QThread* receivedOn = nullptr;
    QObject receiver;
    QObject::connect(&thread, &QPingThread::SigEndThread, &receiver, [&] {
        receivedOn = QThread::currentThread();
        result = thread.GetPingResult();
    });
    ASSERT_TRUE(startAndAwait(thread, &QPingThread::SigEndThread));
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(receivedOn, QThread::currentThread());
    EXPECT_TRUE(result);
}

TEST_F(QPingThreadTest, ExitThreadSignalsTheEndItself)
{
    QPingThread thread;
    int ends = 0;
    QObject::connect(&thread, &QPingThread::SigEndThread, &thread, [&] { ++ends; });
    thread.ExitThread();
    EXPECT_EQ(ends, 1);
}

TEST_F(QPingThreadTest, IsFreeForTheNextJobWhenItSignalsTheEnd)
{
    cmd.set("echo $2 >> \"$(dirname \"$0\")/pings\"");
    QPingThread thread;
    int ends = 0;
    QObject::connect(
        &thread, &QPingThread::SigEndThread, &thread,
        [&] {
            if (++ends == 1) {
                thread.SetIPAddress("10.0.0.2");
                thread.run();
            }
        },
        Qt::DirectConnection);
    thread.SetIPAddress("10.0.0.1");
    runOnce(thread);
    EXPECT_EQ(ends, 2);
    EXPECT_EQ(cmd.file("pings"), "ping 10.0.0.1 -n 1\nping 10.0.0.2 -n 1\n");
}

TEST_F(QPingThreadTest, ARunDuringAJobReturnsWithoutASignalOrAPing)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "looks at the worker's plain flag before SigEndThread() has ordered it";
#endif
    const QByteArray started = (cmd.directory() + "/started").toLocal8Bit();
    const QByteArray go = (cmd.directory() + "/go").toLocal8Bit();
    ASSERT_EQ(mkfifo(started, 0600), 0);
    ASSERT_EQ(mkfifo(go, 0600), 0);
    cmd.set("cd \"$(dirname \"$0\")\"; echo $$ >> starts; echo > started; read line < go; echo time=1ms");
    QPingThread thread;
    int ends = 0;
    QObject::connect(
        &thread, &QPingThread::SigEndThread, &thread, [&] { ++ends; }, Qt::DirectConnection);
    thread.SetIPAddress("10.0.0.1");
    thread.start();
    // A pipe opens when its other end does, which breaks when this one is closed before it is written to.
    const int start = open(started, O_RDONLY | O_CLOEXEC);
    char newline = 0;
    ASSERT_EQ(read(start, &newline, 1), 1);
    close(start);

    thread.run();
    thread.start();
    EXPECT_EQ(ends, 0);

    const int end = open(go, O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(write(end, "\n", 1), 1);
    close(end);
    ASSERT_TRUE(awaitEnd(thread));
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(thread.GetPingResult());
    EXPECT_EQ(cmd.file("starts").count('\n'), 1);
}

TEST_F(QPingThreadTest, DestructionLetsARunningPingFinish)
{
    cmd.set("echo finished > \"$(dirname \"$0\")/result\"");
    {
        QPingThread thread;
        thread.SetIPAddress("10.0.0.1");
        thread.start();
    }
    EXPECT_EQ(cmd.file("result"), "finished\n");
}
