// SPDX-License-Identifier: Apache-2.0
#include "cli/session/Interruption.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace std::chrono_literals;

TEST(Interruption, TellsOfEachSignalThatEndsPrograms)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        cli::Interruption interruption;
        EXPECT_FALSE(interruption.arrives(0ms));
        ::kill(::getpid(), signal);
        EXPECT_TRUE(interruption.arrives(10s)) << signal;
        EXPECT_FALSE(interruption.arrives(0ms)) << "it is dealt with";
    }
}

TEST(Interruption, LeavesIgnoredSignalsIgnored)
{
    const auto before = std::signal(SIGHUP, SIG_IGN);
    {
        cli::Interruption interruption;
        ::kill(::getpid(), SIGHUP);
        EXPECT_FALSE(interruption.arrives(0ms));
    }
    std::signal(SIGHUP, before);
}

TEST(Interruption, LetsASignalThatNobodyWaitedForEndTheProgram)
{
    EXPECT_EXIT(
        {
            const cli::Interruption interruption;
            ::kill(::getpid(), SIGTERM);
        },
        testing::KilledBySignal(SIGTERM), "");
}
