// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/Heartbeat.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <future>

using sdk::Heartbeat;
using namespace std::chrono_literals;

namespace {

/// Bounds a hang; nothing is measured with it.
constexpr auto LongEnough = 20s;

} // namespace

TEST(Heartbeat, IsWellInsideTheCamerasTimeOut)
{
    struct Row
    {
        std::chrono::milliseconds timeout;
        std::chrono::milliseconds interval;
    };
    const Row rows[] = {{3000ms, 750ms},        {500ms, 125ms}, {60'000ms, 1000ms},
                        {4294967295ms, 1000ms}, {100ms, 100ms}, {0ms, 100ms}};
    for (const Row& row : rows)
        EXPECT_EQ(Heartbeat::intervalFor(row.timeout), row.interval) << row.timeout.count();
}

TEST(Heartbeat, BeatsTimeAndAgainUntilItGoes)
{
    int beats = 0;
    std::promise<void> thirdBeat;
    std::promise<void> threadEnd;
    const auto ended = threadEnd.get_future();
    {
        const Heartbeat heartbeat(1ms, [&] {
            if (++beats == 3) {
                thirdBeat.set_value();
                threadEnd.set_value_at_thread_exit();
            }
            return true;
        });
        ASSERT_EQ(thirdBeat.get_future().wait_for(LongEnough), std::future_status::ready);
    }
    EXPECT_EQ(ended.wait_for(0s), std::future_status::ready) << "there is still a thread that could beat";
}

TEST(Heartbeat, StopsWhenABeatSaysSo)
{
    std::atomic<int> beats = 0;
    std::promise<void> threadEnd;
    const Heartbeat heartbeat(1ms, [&] {
        if (++beats == 1)
            threadEnd.set_value_at_thread_exit();
        return false;
    });
    EXPECT_EQ(threadEnd.get_future().wait_for(LongEnough), std::future_status::ready);
    EXPECT_EQ(beats, 1);
}

TEST(Heartbeat, IsNotWaitedForBetweenBeats)
{
    // Would hang for an hour otherwise.
    const Heartbeat heartbeat(1h, [] { return true; });
}

TEST(Heartbeat, TakesNoSignalsOfTheProgram)
{
    std::promise<bool> isBlocked;
    const Heartbeat heartbeat(1ms, [&] {
        sigset_t blocked;
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        isBlocked.set_value(sigismember(&blocked, SIGTERM) == 1 && sigismember(&blocked, SIGCHLD) == 1);
        return false;
    });
    auto result = isBlocked.get_future();
    ASSERT_EQ(result.wait_for(LongEnough), std::future_status::ready);
    EXPECT_TRUE(result.get());
    sigset_t own;
    pthread_sigmask(SIG_SETMASK, nullptr, &own);
    EXPECT_EQ(sigismember(&own, SIGTERM), 0) << "the starting thread is as it was";
}
