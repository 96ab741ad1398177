// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/NeighbourJudge.h"

#include <gtest/gtest.h>

using cli::Neighbour;
using cli::NeighbourJudge;
using namespace std::chrono_literals;
using std::chrono::milliseconds;
using Verdict = NeighbourJudge::Verdict;

namespace {

constexpr base::MacAddress Camera{{2, 0, 0, 0, 1, 1}};
constexpr base::MacAddress OtherCamera{{2, 0, 0, 0, 1, 2}};
constexpr base::MacAddress Device{{0xAA, 0, 0, 0, 0, 9}};

/// What the kernel says of an owner that it has not heard of late.
constexpr milliseconds LongAgo = 60s;

class NeighbourJudgeTest : public testing::Test
{
protected:
    Verdict judge(milliseconds now, int state, std::optional<base::MacAddress> mac = {},
                  milliseconds sinceConfirmed = LongAgo)
    {
        return judgement.judge(Neighbour{state, mac, sinceConfirmed}, now);
    }

    NeighbourJudge judgement{Camera, {OtherCamera}};
};

} // namespace

TEST_F(NeighbourJudgeTest, WaitsForTheKernelToGiveUpTwice)
{
    EXPECT_EQ(judge(0ms, NUD_NONE), Verdict::Pending);
    EXPECT_EQ(judge(100ms, NUD_INCOMPLETE), Verdict::Pending);
    EXPECT_EQ(judge(2900ms, NUD_INCOMPLETE), Verdict::Pending);
    EXPECT_EQ(judge(3000ms, NUD_FAILED), Verdict::Pending);
    EXPECT_EQ(judge(3001ms, NUD_FAILED), Verdict::Pending) << "it gave up once";
    EXPECT_EQ(judge(3100ms, NUD_INCOMPLETE), Verdict::Pending);
    EXPECT_EQ(judge(6000ms, NUD_NONE), Verdict::Nobody) << "it may have cleared the entry away";
    EXPECT_EQ(judge(6100ms, NUD_INCOMPLETE), Verdict::Nobody);
}

TEST_F(NeighbourJudgeTest, KnowsAnOwnerThatAnswersNow)
{
    for (const base::MacAddress& mac : {Device, OtherCamera}) {
        NeighbourJudge fresh(Camera, {OtherCamera});
        fresh.judge({}, 0ms);
        EXPECT_EQ(fresh.judge({NUD_REACHABLE, mac, 20ms}, 100ms), Verdict::Owner) << mac;
    }
}

TEST_F(NeighbourJudgeTest, KnowsAnOwnerThatAnswersAfterTheKernelGaveUp)
{
    for (const milliseconds now : {0ms, 3000ms}) {
        judge(now, NUD_FAILED);
        judge(now + 100ms, NUD_INCOMPLETE);
    }
    EXPECT_EQ(judge(6000ms, NUD_FAILED), Verdict::Nobody);
    EXPECT_EQ(judge(6500ms, NUD_REACHABLE, Device, 0ms), Verdict::Owner);
}

TEST_F(NeighbourJudgeTest, NeverTakesTheCameraItselfForAnotherOwner)
{
    EXPECT_EQ(judge(0ms, NUD_NONE), Verdict::Pending);
    EXPECT_EQ(judge(100ms, NUD_REACHABLE, Camera, 50ms), Verdict::Unknown);
    NeighbourJudge remembering(Camera, {});
    EXPECT_EQ(remembering.judge({NUD_REACHABLE, Camera, 5s}, 0ms), Verdict::Unknown);
}

TEST_F(NeighbourJudgeTest, CountsAnOwnerFromBeforeAfterAWhileForPing)
{
    EXPECT_EQ(judge(0ms, NUD_REACHABLE, Device, 5000ms), Verdict::Pending);
    EXPECT_EQ(judge(1900ms, NUD_REACHABLE, Device, 6890ms), Verdict::Pending);
    EXPECT_EQ(judge(2000ms, NUD_REACHABLE, Device, 7000ms), Verdict::PastOwner);
}

TEST_F(NeighbourJudgeTest, KnowsAnOwnerFromBeforeThatIsConfirmedAnew)
{
    EXPECT_EQ(judge(0ms, NUD_REACHABLE, Device, 5000ms), Verdict::Pending);
    EXPECT_EQ(judge(1000ms, NUD_REACHABLE, Device, 200ms), Verdict::Owner);
}

TEST_F(NeighbourJudgeTest, DoesNotTakeAConfirmationJustBeforeForAnAnswer)
{
    EXPECT_EQ(judge(0ms, NUD_REACHABLE, OtherCamera, 0ms), Verdict::Unknown);
    EXPECT_EQ(judge(1000ms, NUD_REACHABLE, OtherCamera, 990ms), Verdict::Unknown);
}

TEST_F(NeighbourJudgeTest, DoesNotCountACameraFromBeforeThatIsElsewhereNow)
{
    EXPECT_EQ(judge(0ms, NUD_REACHABLE, OtherCamera, 5000ms), Verdict::Unknown);
    EXPECT_EQ(judge(3000ms, NUD_REACHABLE, OtherCamera, 8000ms), Verdict::Unknown);
    EXPECT_EQ(judge(3100ms, NUD_REACHABLE, OtherCamera, 50ms), Verdict::Owner) << "it is here after all";
}

TEST_F(NeighbourJudgeTest, WaitsForTheKernelToClearItsDoubts)
{
    for (const int state : {NUD_STALE, NUD_DELAY, NUD_PROBE})
        EXPECT_EQ(judge(1s, state, Device), Verdict::Pending);
    EXPECT_EQ(judge(6s, NUD_REACHABLE, Device, 100ms), Verdict::Owner);
}

TEST_F(NeighbourJudgeTest, HasEverybodyAskedAfterTheOwnerFromBeforeIsSilent)
{
    judge(0ms, NUD_STALE, Device);
    judge(5s, NUD_PROBE, Device);
    EXPECT_EQ(judge(8s, NUD_FAILED), Verdict::Pending);
    judge(9s, NUD_INCOMPLETE);
    EXPECT_EQ(judge(11s, NUD_FAILED), Verdict::Pending);
    judge(12s, NUD_INCOMPLETE);
    EXPECT_EQ(judge(14s, NUD_FAILED), Verdict::Nobody);
}

TEST_F(NeighbourJudgeTest, LearnsNothingFromWhatAPersonEntered)
{
    for (const int state : {NUD_PERMANENT, NUD_NOARP})
        EXPECT_EQ(judge(0ms, state, Device), Verdict::Unknown);
}
