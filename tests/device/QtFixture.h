// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <gtest/gtest.h>

/// For tests of what needs a Qt application: event loops, translators.
class QtFixture : public testing::Test
{
protected:
    /// Starts the worker and runs the event loop until it has emitted `signal` so often; false when that does
    /// not happen in a generous time.
    template <typename Worker, typename Signal>
    static bool startAndAwait(Worker& worker, Signal signal, int times = 1)
    {
        QEventLoop loop;
        QObject::connect(&worker, signal, &loop, [&loop, &times] {
            if (--times == 0)
                loop.exit(1);
        });
        QTimer::singleShot(WatchdogMilliseconds, &loop, [&loop] { loop.exit(0); });
        worker.start();
        return loop.exec() == 1;
    }

    /// To be called before a thread is started whose end is awaited by awaitEnd(): puts
    /// what the thread did before what the test looks at afterwards. QThread::wait() does that too, but by
    /// means that the thread sanitizer does not see.
    void orderEndOf(QThread& thread)
    {
        QObject::connect(
            &thread, &QThread::finished, &thread, [this] { m_ends.fetch_add(1); }, Qt::DirectConnection);
    }

    /// Waits for the thread's end; false when it does not come in a generous time.
    bool awaitEnd(QThread& thread)
    {
        const bool ended = thread.wait(WatchdogMilliseconds);
        m_ends.load();
        return ended;
    }

    static constexpr int WatchdogMilliseconds = 20000;

private:
    std::atomic<int> m_ends{0};
    int m_argumentCount = 1;
    char m_programName[6] = "tests";
    char* m_arguments[2] = {m_programName, nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments};
};
