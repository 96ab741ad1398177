// SPDX-License-Identifier: Apache-2.0
#include "save/QSaveThread.h"

#include "tests/device/QtFixture.h"
#include "tests/support/PollTimeouts.h"
#include "tests/support/ScriptedProgram.h"

#include <QDir>

#include <algorithm>

namespace {

/// With a program "ping" of the test's own.
class PingIPAddrTest : public QtFixture
{
protected:
    /// Whether one of many pings has its answer in time; on a busy machine, not each of them has.
    static bool isAnsweredSometimes(const QString& address)
    {
        for (int i = 0; i < 50; ++i) {
            if (QSaveThread::PingIPAddr(address))
                return true;
        }
        return false;
    }

    ScriptedProgram ping{"ping"};
};

} // namespace

TEST_F(PingIPAddrTest, RunsOneEchoRequest)
{
    ping.set("printf '%s\\n' \"$#\" \"$@\" > \"$(dirname \"$0\")/arguments\"");
    for (int i = 0; i < 50 && ping.file("arguments") != "3\n-c\n1\n192.0.2.30\n"; ++i)
        QSaveThread::PingIPAddr("192.0.2.30");
    EXPECT_EQ(ping.file("arguments"), "3\n-c\n1\n192.0.2.30\n");
}

TEST_F(PingIPAddrTest, TheTwoLettersInAnyWordCountAsAnAnswerWhateverTheExitStatus)
{
    ping.set("echo no such terms; exit 3");
    EXPECT_TRUE(isAnsweredSometimes("192.0.2.30"));
}

TEST_F(PingIPAddrTest, OutputWithoutThemIsNone)
{
    ping.set("echo 1 packets transmitted, 0 received; echo time=1ms >&2");
    EXPECT_FALSE(isAnsweredSometimes("192.0.2.30"));
}

TEST_F(PingIPAddrTest, WhatTakesLongerThanItMayIsNoAnswerAndIsEndedWithoutAWord)
{
    static int spoken = 0;
    const auto before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++spoken; });
    ping.set("echo time=1ms; echo $$ > \"$(dirname \"$0\")/pid\"; exec sleep 1000");
    for (int i = 0; i < 50 && ping.file("pid").isEmpty(); ++i)
        EXPECT_FALSE(QSaveThread::PingIPAddr("192.0.2.30"));
    const QByteArray pid = ping.file("pid").trimmed();
    ASSERT_FALSE(pid.isEmpty());
    EXPECT_FALSE(QDir("/proc/" + pid).exists());
    qInstallMessageHandler(before);
    EXPECT_EQ(spoken, 0) << "what the user would read on the terminal";
}

TEST_F(PingIPAddrTest, HasATenthOfASecondToFinish)
{
    ping.set("exec sleep 1000");
    // On a busy machine some of it has passed when it begins to wait.
    long longest = 0;
    for (int i = 0; i < 50 && longest <= 90; ++i) {
        forgetPollTimeouts();
        EXPECT_FALSE(QSaveThread::PingIPAddr("192.0.2.30"));
        // The others are its 30 seconds to start, and to end when it is killed.
        for (const long timeout : pollTimeouts())
            if (timeout <= 15000)
                longest = std::max(longest, timeout);
    }
    EXPECT_GT(longest, 90);
    EXPECT_LE(longest, 100);
}

TEST_F(PingIPAddrTest, WithoutAProgramThereIsNoAnswer)
{
    qputenv("PATH", "/nonexistent");
    EXPECT_FALSE(QSaveThread::PingIPAddr("192.0.2.30"));
}
