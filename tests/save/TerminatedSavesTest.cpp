// SPDX-License-Identifier: Apache-2.0
// Saves that the window terminates, and those after them.
#include "tests/save/FarmSaves.h"
#include "tests/save/QtOrdersThreads.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

using testing::AnyOf;
using testing::ElementsAre;

namespace {

using Clock = std::chrono::steady_clock;

/// The cameras of one round are saved at the same time: few, as each save ends in a spin.
class TerminatedSaves : public FarmSaves
{
protected:
    static constexpr int AtOnce = 10;
    static constexpr int Rounds = 10;

    static int first(int round) { return round * AtOnce; }
    static int end(int round) { return first(round + 1); }
    /// As the window does it; the others are terminated, and nothing more.
    static bool isStartedAnew(int number) { return number % 2 != 0; }

    /// The latest save did all that was wanted, and the camera is nobody's.
    void expectSaved(int number)
    {
        SCOPED_TRACE(number);
        auto said = saves[number].said();
        // Of one that was started while another ran, the other's words come first.
        said.erase(said.begin(), said.end() - std::min<std::ptrdiff_t>(3, std::ssize(said)));
        EXPECT_THAT(said, AnyOf(ElementsAre(Rebooting, "Refresh", "End"), ElementsAre("Refresh", "End")));
        EXPECT_TRUE(becomesFree(number));
        const auto after = camera(number);
        EXPECT_EQ(after.at("address"), saves[number].wanted.m_strIpAddress.toStdString());
        EXPECT_EQ(after.at("ipConfiguration"), "persistent");
        EXPECT_EQ(after.at("userName"), saves[number].wanted.m_strUserDefinedName.toStdString());
    }

    /// How long the saves of a round take to where they reset their cameras.
    Clock::duration timeToTheReset(int round)
    {
        std::atomic<Clock::duration> longest{};
        const auto begin = Clock::now();
        for (int i = first(round); i < end(round); ++i) {
            saves[i].wantStatic(newAddress(i));
            saves[i].atMessage = [&] { longest = Clock::now() - begin; };
            saves[i].start();
        }
        awaitEnds(round);
        return longest;
    }

    /// Each at a moment of its own, from before the save's first step to the spin that ends it.
    void saveAndTerminate(int round, Clock::duration lastMoment)
    {
        const auto begin = Clock::now();
        for (int i = first(round); i < end(round); ++i)
            saves[i].start();
        for (int i = first(round); i < end(round); ++i) {
            const int moment = (i - first(round)) * Rounds + round;
            std::this_thread::sleep_until(begin + lastMoment * moment / (AtOnce * Rounds));
            if (isStartedAnew(i))
                saves[i].start();
            else
                saves[i].terminate();
        }
        awaitEnds(round);
    }

    void awaitEnds(int round)
    {
        for (int i = first(round); i < end(round); ++i)
            ASSERT_TRUE(saves[i].awaitEnd());
    }
};

} // namespace

TEST_F(TerminatedSaves, AtAHundredMomentsLeaveTheCamerasFreeAndTheNextSavesWork)
{
    SKIP_WHERE_QT_ORDERS_THREADS();
    build(ByDhcp, (Rounds + 1) * AtOnce);
    const Resources before = resources();
    auto lastMoment = timeToTheReset(Rounds) * 3 / 2;
    int cutOff = 0;
    for (int round = 0; round < Rounds; ++round) {
        for (int i = first(round); i < end(round); ++i) {
            saves[i].wantName("First");
            saves[i].wantType("Static IP");
            // The address of a save that was terminated would be in use to one that is started anew.
            if (!isStartedAnew(i))
                saves[i].wantAddress(newAddress(i));
        }
        saveAndTerminate(round, lastMoment);
        const int cutOffBefore = cutOff;
        for (int i = first(round); i < end(round); ++i) {
            EXPECT_TRUE(becomesFree(i)) << i;
            if (isStartedAnew(i))
                expectSaved(i);
            else
                cutOff += saves[i].said().empty();
        }
        // Of five, three or four, unless the computer is less busy than when the time was taken.
        if (cutOff < cutOffBefore + 2)
            lastMoment /= 2;

        findAgain();
        for (int i = first(round); i < end(round); ++i) {
            if (isStartedAnew(i))
                continue;
            // Not the address that was just asked for in vain: when the host gives up on it, ping says so in
            // words that count as an answer.
            saves[i].wantStatic("192.168.3." + std::to_string(20 + i));
            saves[i].wantName("Next");
            saves[i].start();
        }
        awaitEnds(round);
        for (int i = first(round); i < end(round); ++i) {
            if (!isStartedAnew(i))
                expectSaved(i);
        }
    }
    EXPECT_GT(cutOff, 10);
    EXPECT_EQ(whenDownTo(before), before);
}
