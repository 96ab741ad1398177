// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Frames.h"
#include "tests/hear/Listener.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <csignal>

using frames::Answer;

namespace {

/// More than fits into the pipe and into the socket's buffer, numbered in their last bytes.
constexpr std::uint32_t Flood = 50000;
/// More than fit into the pipe, and fewer than into the socket's buffer.
constexpr std::uint32_t LongFrames = 20;

base::Bytes numbered(std::uint32_t number)
{
    base::Bytes frame = Answer;
    frame.resize(frame.size() + 4);
    base::writeU32(frame, frame.size() - 4, number);
    return frame;
}

/// As long as a pipe takes only in parts.
base::Bytes longAndNumbered(std::uint32_t number)
{
    base::Bytes frame(60000, static_cast<std::uint8_t>(number));
    std::copy(Answer.begin(), Answer.end(), frame.begin());
    return frame;
}

/// One that has heard all LongFrames and cannot write them: the last that the pipe takes is in it in part.
Listener withAFullPipe(const Cable& cable)
{
    cable.allowLongFrames();
    Listener listener = Listener::listening(cable);
    for (std::uint32_t number = 0; number < LongFrames; ++number)
        cable.send(longAndNumbered(number));
    EXPECT_TRUE(waitUntil([&] { return listener.sleeps(); })) << "the pipe is full";
    return listener;
}

void flood(const Cable& cable)
{
    for (std::uint32_t number = 0; number < Flood; ++number)
        cable.send(numbered(number));
}

} // namespace

TEST(End, ComesWithThatOfTheInput)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    listener.endInput();
    EXPECT_EQ(listener.wait(), 0);
    EXPECT_EQ(listener.rest(), "");
    EXPECT_EQ(listener.complaints(), "");
}

TEST(End, ComesWithThatOfTheInputThoughNobodyTakesWhatWasHeard)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    flood(cable);
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); })) << "the pipe is full";
    listener.endInput();
    EXPECT_EQ(listener.wait(), 0);
}

TEST(End, ComesWithThatOfTheInputThoughAFrameIsTakenInPart)
{
    const Cable cable;
    Listener listener = withAFullPipe(cable);
    listener.endInput();
    EXPECT_EQ(listener.wait(), 0);
}

TEST(End, DoesNotComeWhileAReaderIsSlowWhoGetsEachFrameWhole)
{
    const Cable cable;
    Listener listener = withAFullPipe(cable);
    for (std::uint32_t number = 0; number < LongFrames; ++number)
        EXPECT_EQ(listener.read(), longAndNumbered(number));
}

TEST(End, ComesWhenNobodyReadsAnyMore)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    listener.leaveOutput();
    EXPECT_EQ(listener.wait(), 0) << "though nothing is heard";
}

TEST(End, DoesNotComeWithWhatIsInTheInput)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    listener.write(std::string(5000, 'x'));
    for (const base::Bytes& frame : {numbered(1), numbered(2)}) {
        cable.send(frame);
        EXPECT_EQ(listener.read(), frame);
    }
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); })) << "it has taken all of it";
}

TEST(End, DoesNotComeWhileItIsStopped)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); }));
    ::kill(listener.id(), SIGSTOP);
    ASSERT_TRUE(waitUntil([&] { return listener.status("State").starts_with("T"); }));
    cable.send(Answer);
    ::kill(listener.id(), SIGCONT);
    EXPECT_EQ(listener.read(), Answer);
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); }));
    ::kill(listener.id(), SIGSTOP);
    ASSERT_TRUE(waitUntil([&] { return listener.status("State").starts_with("T"); }));
    ::kill(listener.id(), SIGCONT);
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); })) << "with nothing to do in between";
    cable.send(Answer);
    EXPECT_EQ(listener.read(), Answer);
}

TEST(End, DoesNotComeWithAFloodThatNobodyReads)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    flood(cable);
    // One goes in for each that comes out, so that the last one is not lost as well.
    std::uint32_t count = 0;
    base::Bytes frame;
    for (std::uint32_t next = 0; frame != numbered(Flood); ++count) {
        cable.send(numbered(Flood));
        frame = listener.read();
        ASSERT_EQ(frame.size(), numbered(0).size());
        const std::uint32_t number = base::readU32(frame, frame.size() - 4);
        ASSERT_EQ(frame, numbered(number));
        ASSERT_GE(number, next);
        next = number + 1;
    }
    EXPECT_GT(count, 4000u) << "the kernel keeps many, beside those that the pipe holds";
    EXPECT_LT(count, Flood) << "and drops what is too much";
}

TEST(End, DoesNotComeWhenTheAdapterIsShutDownForAWhile)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    cable.host().run("ip link set eth0 down");
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); }));
    cable.host().run("ip link set eth0 up");
    cable.send(Answer);
    EXPECT_EQ(listener.read(), Answer);
}

TEST(End, IsWaitedForWithoutWorkWhenTheAdapterIsGone)
{
    const Cable cable;
    Listener listener = Listener::listening(cable);
    cable.host().run("ip link delete eth0");
    ASSERT_TRUE(waitUntil([&] { return listener.sleeps(); }));
    listener.endInput();
    EXPECT_EQ(listener.wait(), 0);
}

TEST(End, ComesAtOnceWithoutAnInputOrAnOutput)
{
    const Cable cable;
    const std::string program = std::string("exec ") + LISTENER + " " + cable.index() + " 40000 ";
    for (const char* const closed : {"<&-", ">&-", "<&- >&-", "<&- 2>&-"}) {
        Listener listener(cable.host(), {"sh", "-c", program + closed});
        EXPECT_EQ(listener.wait(), 1) << closed;
        EXPECT_EQ(listener.rest(), "") << closed;
    }
    Listener listener(cable.host(), {"sh", "-c", program + "</dev/null"});
    EXPECT_EQ(listener.wait(), 0);
}
