// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/AccessCheck.h"

#include "gvcp/Registers.h"
#include "tests/sdk/FakeNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;

namespace {

constexpr base::Ipv4 Host = "192.168.1.5"_ip;
constexpr base::Ipv4 Camera = "192.168.1.20"_ip;

class AccessCheckTest : public testing::Test
{
protected:
    AccessCheck::Answer run() { return run(network); }

    AccessCheck::Answer run(FakeNetwork& where)
    {
        RequestIds ids;
        AccessCheck check(where, ids);
        check.ask(0, Host, Camera);
        while (check.isPending()) {
            if (const auto datagram = where.receive(check.nextStep()))
                if (const auto acknowledge = gvcp::parseAcknowledge(datagram->payload))
                    check.take(*datagram, *acknowledge);
            check.proceed();
        }
        return check.answer(0, Camera);
    }

    void answerEach(const std::function<base::Bytes(std::uint16_t id)>& make, base::Ipv4 source = Camera)
    {
        network.onSend = [=, this](const FakeNetwork::Sent& sent) {
            network.deliver(1ms, sent.adapter, source, make(sent.command().id));
        };
    }

    static base::Bytes refusal(std::uint16_t id, gvcp::Status status)
    {
        return gvcp::encodeAcknowledge(gvcp::Command::ReadRegister, status, id);
    }

    FakeNetwork network{{adapterWith(1, Host), adapterWith(2, "192.168.1.6"_ip)}};
};

} // namespace

TEST_F(AccessCheckTest, ReadsTheControlChannelPrivilegeRegister)
{
    answerEach([](auto id) { return registerAnswer(id, 0); });
    EXPECT_EQ(run(), AccessCheck::Answer::Accessible);
    const auto sent = network.sentCommands(gvcp::Command::ReadRegister);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].destination, Camera);
    EXPECT_EQ(sent[0].source, Host);
    EXPECT_EQ(sent[0].command().flags, 0x01);
    EXPECT_THAT(sent[0].command().payload, testing::ElementsAre(0x00, 0x00, 0x0A, 0x00));
}

class TakenControlChannel : public AccessCheckTest, public testing::WithParamInterface<std::uint32_t>
{};

TEST_P(TakenControlChannel, IsNotAccessible)
{
    answerEach([](auto id) { return registerAnswer(id, GetParam()); });
    EXPECT_EQ(run(), AccessCheck::Answer::NotAccessible);
}

INSTANTIATE_TEST_SUITE_P(Privileges, TakenControlChannel, testing::Values(1u, 2u, 3u, 0x80000000u));

TEST_F(AccessCheckTest, ARefusalIsNotAccessibleAndNotAskedAgain)
{
    answerEach([](auto id) { return refusal(id, gvcp::Status::AccessDenied); });
    EXPECT_EQ(run(), AccessCheck::Answer::NotAccessible);
    EXPECT_EQ(network.sentCommands(gvcp::Command::ReadRegister).size(), 1u);
}

TEST_F(AccessCheckTest, ASilentCameraIsAskedAgainWithTheSameIdAndThenGivenUp)
{
    EXPECT_EQ(run(), AccessCheck::Answer::Silent);
    const auto sent = network.sentCommands(gvcp::Command::ReadRegister);
    EXPECT_EQ(sent.size(), 4u);
    for (const auto& one : sent)
        EXPECT_EQ(one.bytes, sent.front().bytes);
    EXPECT_EQ(network.elapsed(), 600ms);
}

class PassingRefusal : public AccessCheckTest, public testing::WithParamInterface<gvcp::Status>
{};

TEST_P(PassingRefusal, OfACameraHasItAskedAgain)
{
    int asked = 0;
    answerEach([&asked](auto id) { return ++asked == 1 ? refusal(id, GetParam()) : registerAnswer(id, 0); });
    EXPECT_EQ(run(), AccessCheck::Answer::Accessible);
    EXPECT_EQ(asked, 2);
}

TEST_P(PassingRefusal, ThatDoesNotPassIsNotAccessible)
{
    answerEach([](auto id) { return refusal(id, GetParam()); });
    EXPECT_EQ(run(), AccessCheck::Answer::NotAccessible);
}

INSTANTIATE_TEST_SUITE_P(Statuses, PassingRefusal,
                         testing::Values(gvcp::Status::Busy, gvcp::Status::BadAlignment));

TEST_F(AccessCheckTest, AnswersOfOthersAreNotTheCameras)
{
    answerEach([](auto id) { return registerAnswer(id, 0); }, "192.168.1.21"_ip);
    EXPECT_EQ(run(), AccessCheck::Answer::Silent) << "another camera's address";
}

TEST_F(AccessCheckTest, TakesTheAnswerOnWhicheverAdapterItComesIn)
{
    network.onSend = [this](const FakeNetwork::Sent& sent) {
        network.deliver(1ms, 1, Camera, registerAnswer(sent.command().id, 0));
    };
    EXPECT_EQ(run(), AccessCheck::Answer::Accessible);
}

TEST_F(AccessCheckTest, WhatIsNotTheAnswerIsDroppedAndTheAnswerStillTaken)
{
    const std::map<std::string, std::function<base::Bytes(std::uint16_t id)>> rows{
        {"another id",
         [](auto id) {
             return registerAnswer(static_cast<std::uint16_t>(id + 1), gvcp::Privilege::Control);
         }},
        {"another acknowledge code",
         [](auto id) {
             return gvcp::encodeAcknowledge(gvcp::Command::ReadMemory, gvcp::Status::Success, id,
                                            base::Bytes(4));
         }},
        {"a payload shorter than its length",
         [](auto id) {
             base::Bytes bytes = registerAnswer(id, gvcp::Privilege::Control);
             bytes.pop_back();
             return bytes;
         }},
    };
    for (const auto& [name, make] : rows) {
        FakeNetwork own({adapterWith(1, Host)});
        own.onSend = [&own, &make = make](const FakeNetwork::Sent& sent) {
            own.deliver(1ms, 0, Camera, make(sent.command().id));
            own.deliver(2ms, 0, Camera, registerAnswer(sent.command().id, gvcp::Privilege::Open));
        };
        EXPECT_EQ(run(own), AccessCheck::Answer::Accessible) << name;
    }
}

TEST_F(AccessCheckTest, TheFirstValueOfALongerAnswerCounts)
{
    const auto answerWith = [this](const base::Bytes& payload) {
        answerEach([payload](auto id) {
            return gvcp::encodeAcknowledge(gvcp::Command::ReadRegister, gvcp::Status::Success, id, payload);
        });
    };
    answerWith({0, 0, 0, 0, 0, 0, 0, 1, 0xEE});
    EXPECT_EQ(run(), AccessCheck::Answer::Accessible);
    answerWith({0, 0, 0, 1, 0, 0, 0, 0});
    EXPECT_EQ(run(), AccessCheck::Answer::NotAccessible);
    answerWith({0, 0, 0});
    EXPECT_EQ(run(), AccessCheck::Answer::NotAccessible) << "not even one";
}

TEST_F(AccessCheckTest, ACameraThatWasNotAskedIsSilent)
{
    RequestIds ids;
    const AccessCheck check(network, ids);
    EXPECT_EQ(check.answer(0, Camera), AccessCheck::Answer::Silent);
    EXPECT_FALSE(check.isPending());
}
