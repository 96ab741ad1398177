// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/Exchange.h"

#include "gvcp/PendingAck.h"
#include "tests/sdk/FakeNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::Status;
using testing::ElementsAre;

namespace {

constexpr base::Ipv4 Host = "192.168.1.5"_ip;
constexpr base::Ipv4 Camera = "192.168.1.20"_ip;

class ExchangeTest : public testing::Test
{
protected:
    /// Answers each try after a millisecond, that many times, with what stands there; then no more.
    void answerWith(std::vector<Status> statuses, int copies = 1)
    {
        network.onSend = [=, this, next = std::size_t{0}](const FakeNetwork::Sent& sent) mutable {
            if (next == statuses.size())
                return;
            for (int i = 0; i < copies; ++i)
                deliver(1ms, Camera, statuses[next], sent.command().id);
            ++next;
        };
    }

    void deliver(Clock::duration delay, base::Ipv4 source, Status status, std::uint16_t id)
    {
        network.deliver(delay, 0, source,
                        gvcp::encodeAcknowledge(gvcp::Command::ReadRegister, status, id, base::Bytes(4)));
    }

    void askForTime(Clock::duration delay, std::chrono::milliseconds time, std::uint16_t id)
    {
        network.deliver(
            delay, 0, Camera,
            gvcp::encodeAcknowledge(gvcp::PendingCommand, Status::Success, id, gvcp::encodePendingAck(time)));
    }

    /// A hundred milliseconds for each try.
    Exchange exchange()
    {
        plan.send = [this](base::ByteView packet) { network.send(0, Host, Camera, packet); };
        plan.isBelieved = [](const Datagram& datagram, const auto&) { return datagram.source == Camera; };
        return {network, ids, plan};
    }

    /// What the camera said in the end; nothing when it was given up.
    std::optional<Status> run()
    {
        const auto answer = exchange().run();
        return answer ? std::optional(answer->status) : std::nullopt;
    }

    std::vector<Clock::duration> times() const
    {
        std::vector<Clock::duration> result;
        for (const auto& sent : network.sent())
            result.push_back(sent.time);
        return result;
    }

    std::vector<std::uint16_t> sentIds() const
    {
        std::vector<std::uint16_t> result;
        for (const auto& sent : network.sent())
            result.push_back(sent.command().id);
        return result;
    }

    FakeNetwork network{{adapterWith(1, Host)}};
    RequestIds ids;
    Exchange::Plan plan{.command = gvcp::Command::ReadRegister,
                        .payload = {0, 0, 0x0A, 0},
                        .tries = 3,
                        .wait = 100ms,
                        .send = nullptr,
                        .isBelieved = nullptr};
};

} // namespace

TEST_F(ExchangeTest, IsOverWithTheFirstAnswer)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        network.deliver(1ms, 0, Camera, registerAnswer(sent.command().id, 7));
    };
    Exchange asked = exchange();
    asked.run();
    ASSERT_TRUE(asked.answer());
    EXPECT_EQ(asked.answer()->status, Status::Success);
    EXPECT_THAT(asked.answer()->payload, ElementsAre(0, 0, 0, 7));
    EXPECT_FALSE(asked.wasSilentAtFirst());
    EXPECT_THAT(times(), ElementsAre(0ms));
    EXPECT_EQ(network.elapsed(), 1ms);
}

TEST_F(ExchangeTest, IsGivenUpWhenAllTriesWithOneIdAreUnanswered)
{
    Exchange asked = exchange();
    EXPECT_EQ(asked.run(), std::nullopt);
    EXPECT_FALSE(asked.isHeard());
    EXPECT_THAT(times(), ElementsAre(0ms, 100ms, 200ms));
    EXPECT_EQ(network.elapsed(), 300ms);
    EXPECT_THAT(sentIds(), testing::Each(sentIds().front()));
}

TEST_F(ExchangeTest, KnowsThatTheCameraWasSilentAtFirst)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        if (sent.time >= 100ms)
            deliver(1ms, Camera, Status::AccessDenied, sent.command().id);
    };
    Exchange asked = exchange();
    EXPECT_EQ(asked.run()->status, Status::AccessDenied);
    EXPECT_TRUE(asked.wasSilentAtFirst());
}

TEST_F(ExchangeTest, KnowsOfNoSilenceOnceTheCameraHasSaidThatItIsBusy)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        if (sent.time >= 100ms)
            deliver(1ms, Camera, sent.time >= 200ms ? Status::AccessDenied : Status::Busy, sent.command().id);
    };
    Exchange asked = exchange();
    EXPECT_EQ(asked.run()->status, Status::AccessDenied);
    EXPECT_FALSE(asked.wasSilentAtFirst());
}

TEST_F(ExchangeTest, BelievesNoOtherIdAndCodeAndNobodyElse)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        const auto id = sent.command().id;
        deliver(1ms, Camera, Status::Success, static_cast<std::uint16_t>(id + 1));
        deliver(1ms, "192.168.1.21"_ip, Status::Success, id);
        network.deliver(1ms, 0, Camera,
                        gvcp::encodeAcknowledge(gvcp::Command::ReadMemory, Status::Success, id));
    };
    EXPECT_EQ(run(), std::nullopt);
    EXPECT_EQ(network.elapsed(), 300ms);
}

TEST_F(ExchangeTest, AsksABusyCameraAnewWhenTheNextTryIsDue)
{
    answerWith({Status::Busy, Status::Success});
    EXPECT_EQ(run(), Status::Success);
    EXPECT_THAT(times(), ElementsAre(0ms, 100ms));
    EXPECT_NE(sentIds()[0], sentIds()[1]);
}

TEST_F(ExchangeTest, AsksACameraAnewAtOnceThatComplainsAboutAlignmentButOnlyOnce)
{
    answerWith({Status::BadAlignment, Status::Success});
    EXPECT_EQ(run(), Status::Success);
    EXPECT_THAT(times(), ElementsAre(0ms, 1ms));
    EXPECT_NE(sentIds()[0], sentIds()[1]);
    answerWith({Status::BadAlignment, Status::BadAlignment, Status::Success});
    EXPECT_EQ(run(), Status::BadAlignment);
}

TEST_F(ExchangeTest, CountsARefusalOnceThatIsHeardTwice)
{
    answerWith({Status::BadAlignment, Status::Success}, 2);
    EXPECT_EQ(run(), Status::Success);
    plan.areRefusedTriesFree = true;
    answerWith({Status::Busy, Status::Busy, Status::Busy, Status::Success}, 2);
    EXPECT_EQ(run(), Status::Success);
}

TEST_F(ExchangeTest, GivesABusyCameraUpWithItsLastTryButKnowsThatItIsThere)
{
    answerWith({Status::Busy, Status::Busy, Status::Busy, Status::Success});
    Exchange asked = exchange();
    EXPECT_EQ(asked.run(), std::nullopt);
    EXPECT_TRUE(asked.isHeard());
    EXPECT_EQ(network.sent().size(), 3u);
}

TEST_F(ExchangeTest, IsPatientFiveTimesWhereARefusedTryIsFree)
{
    plan.tries = 1;
    plan.areRefusedTriesFree = true;
    answerWith(
        {Status::Busy, Status::Busy, Status::BadAlignment, Status::Busy, Status::Busy, Status::Success});
    EXPECT_EQ(run(), Status::Success);
    answerWith(std::vector(6, Status::Busy));
    const auto before = network.sent().size();
    EXPECT_EQ(run(), Status::Busy);
    EXPECT_EQ(network.sent().size() - before, 5u);
}

TEST_F(ExchangeTest, GivesTheCameraTimeThatAsksForIt)
{
    plan.mostTime = 2s;
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        askForTime(1ms, 800ms, sent.command().id);
        deliver(850ms, Camera, Status::Success, sent.command().id);
    };
    EXPECT_EQ(run(), Status::Success);
    EXPECT_THAT(times(), ElementsAre(0ms));
}

TEST_F(ExchangeTest, GivesNoMoreTimeThanItHas)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) { askForTime(1ms, 60s, sent.command().id); };
    EXPECT_EQ(run(), std::nullopt);
    EXPECT_EQ(network.elapsed(), 300ms) << "none, unless it is allowed";
    plan.mostTime = 2s;
    EXPECT_EQ(run(), std::nullopt);
    EXPECT_EQ(network.elapsed(), 2300ms);
    EXPECT_EQ(network.sent().size(), 3u + 1u);
}

TEST_F(ExchangeTest, TakesAnAnswerThatComesAfterItWasGivenUp)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        if (sent.time == 200ms)
            deliver(500ms, Camera, Status::Success, sent.command().id);
    };
    Exchange asked = exchange();
    asked.run();
    ASSERT_FALSE(asked.isPending());
    const auto late = network.receive(network.now() + 1s);
    EXPECT_TRUE(asked.take(*late, gvcp::parseAcknowledge(late->payload).value()));
    EXPECT_EQ(asked.answer()->status, Status::Success);
    EXPECT_EQ(asked.nextStep(), Clock::time_point::max());
}

TEST_F(ExchangeTest, IsNotBegunAgainByARefusalThatComesAfterItWasGivenUp)
{
    for (const Status refusal : {Status::Busy, Status::BadAlignment}) {
        Exchange asked = exchange();
        asked.run();
        const auto sent = network.sent().size();
        deliver(1ms, Camera, refusal, sentIds().back());
        const auto late = network.receive(network.now() + 1s);
        asked.take(*late, gvcp::parseAcknowledge(late->payload).value());
        EXPECT_EQ(asked.nextStep(), Clock::time_point::max());
        asked.proceed();
        EXPECT_EQ(network.sent().size(), sent);
    }
}
