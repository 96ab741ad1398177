// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/ForceIpExchange.h"

#include "gvcp/Registers.h"
#include "tests/sdk/FakeNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::Le;
using testing::SizeIs;

namespace {

constexpr base::Ipv4 Host = "192.168.1.5"_ip;
constexpr base::Ipv4 OldIp = "10.0.0.9"_ip;
constexpr base::Ipv4 NewIp = "192.168.1.20"_ip;
constexpr base::Ipv4 Mask = "255.255.255.0"_ip;
const base::MacAddress Mac{{0x02, 0, 0, 0, 0, 1}};

/// A camera of a few lines: what it does with FORCEIP is the test's to say, discovery it answers truly.
class ForceIpTest : public testing::Test
{
protected:
    ForceIpTest()
    {
        network.onSend = [this](const FakeNetwork::Sent& sent) { take(sent); };
    }

    RZ_ERROR force() { return forceIp(network, {Mac, wanted}, before); }
    RZ_ERROR forceWhatItHas() { return forceIp(network, {Mac, before}, before); }

    std::vector<base::Ipv4> destinations() const
    {
        std::vector<base::Ipv4> result;
        for (const auto& sent : network.sentCommands(gvcp::Command::ForceIp))
            result.push_back(sent.destination);
        return result;
    }

    void obey() { present = wanted; }
    void acknowledge(const FakeNetwork::Sent& sent, base::Ipv4 source,
                     gvcp::Status status = gvcp::Status::Success)
    {
        network.deliver(1ms, 0, source,
                        gvcp::encodeAcknowledge(gvcp::Command::ForceIp, status, sent.command().id));
    }

    FakeNetwork network{{adapterWith(1, Host)}};
    base::IpSettings before{OldIp, Mask, {}};
    const base::IpSettings wanted{NewIp, Mask, "192.168.1.254"_ip};
    base::IpSettings present = before;
    std::uint32_t privilege = gvcp::Privilege::Open;
    bool isThere = true;
    Clock::duration discoveryDelay = 1ms;
    std::function<void(const FakeNetwork::Sent&)> onForceIp = [](const auto&) {};

private:
    void take(const FakeNetwork::Sent& sent)
    {
        const auto command = sent.command();
        if (!isThere)
            return;
        if (command.command == gvcp::Command::ForceIp) {
            onForceIp(sent);
        } else if (command.command == gvcp::Command::Discovery) {
            auto camera = cameraAt(1, present.address);
            camera.ip = present;
            network.deliver(discoveryDelay, 0, present.address, discoveryAnswer(command.id, camera));
        } else if (sent.destination == present.address) {
            network.deliver(1ms, 0, present.address, registerAnswer(command.id, privilege));
        }
    }
};

} // namespace

TEST_F(ForceIpTest, GoesOutWithTheCamerasMacAndTheThreeValues)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp); };
    EXPECT_EQ(force(), RZ_OK);
    const auto sent = network.sentCommands(gvcp::Command::ForceIp);
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_EQ(sent[0].destination, base::LimitedBroadcast);
    EXPECT_EQ(sent[0].source, Host);
    EXPECT_EQ(sent[0].command().flags, 0x11);
    EXPECT_EQ(gvcp::parseForceIp(sent[0].command().payload), (gvcp::ForceIp{Mac, wanted}));
}

TEST_F(ForceIpTest, GoesOutThreeTimesAtMostAndWithinTheFirstSecond)
{
    isThere = false;
    EXPECT_EQ(force(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(destinations(),
                ElementsAre(base::LimitedBroadcast, base::LimitedBroadcast, base::LimitedBroadcast))
        << "from another subnet it hears no other broadcast";
    EXPECT_THAT(network.sentCommands(gvcp::Command::ForceIp).back().time, Le(1s));
}

TEST_F(ForceIpTest, GoesOutByBothBroadcastsInTurnToACameraOfTheSubnet)
{
    isThere = false;
    before.address = "192.168.1.99"_ip;
    EXPECT_EQ(force(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(destinations(),
                ElementsAre(base::LimitedBroadcast, "192.168.1.255"_ip, base::LimitedBroadcast));
}

TEST_F(ForceIpTest, IsDoneWhenAcknowledgedFromTheOldAddress)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp); };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_LE(network.elapsed(), 10ms);
}

TEST_F(ForceIpTest, IsDoneWhenAcknowledgedFromTheNewAddress)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, NewIp); };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_LE(network.elapsed(), 10ms);
}

TEST_F(ForceIpTest, IsDoneWhenTheCameraObeysSilently)
{
    onForceIp = [this](const auto&) { obey(); };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_THAT(destinations(), SizeIs(1));
    const auto looks = network.sentCommands(gvcp::Command::Discovery);
    EXPECT_FALSE(looks.empty());
    for (const auto& look : looks)
        EXPECT_EQ(look.command().flags, 0x11) << "It may answer by broadcast.";
}

TEST_F(ForceIpTest, IsDoneWhenTheCameraObeysSilentlyAndAnswersDiscoveryLate)
{
    discoveryDelay = 1000ms;
    onForceIp = [this](const auto&) { obey(); };
    EXPECT_EQ(force(), RZ_OK);
}

TEST_F(ForceIpTest, IsDoneWhenTheCameraIsAwayForAlmostSixSecondsWhileItChangesAndBeginsAnewWithEach)
{
    const auto camera = network.onSend;
    for (const auto away : {200ms, 1500ms, 4000ms, 5700ms}) {
        present = before;
        isThere = true;
        auto since = Clock::duration::max();
        network.onSend = [this, away, &since, &camera](const FakeNetwork::Sent& sent) {
            isThere = since > sent.time || sent.time - since >= away;
            camera(sent);
        };
        onForceIp = [&](const FakeNetwork::Sent& sent) {
            obey();
            since = sent.time;
        };
        const auto begin = network.elapsed();
        EXPECT_EQ(force(), RZ_OK) << away.count();
        EXPECT_LE(network.elapsed() - begin, away + 1s);
    }
}

TEST_F(ForceIpTest, IsSentAgainWithTheSameIdWhenItWasLost)
{
    int received = 0;
    onForceIp = [&](const auto& sent) {
        if (++received > 2)
            acknowledge(sent, OldIp);
    };
    EXPECT_EQ(force(), RZ_OK);
    const auto sent = network.sentCommands(gvcp::Command::ForceIp);
    ASSERT_THAT(sent, SizeIs(3));
    EXPECT_EQ(sent.front().bytes, sent.back().bytes);
}

TEST_F(ForceIpTest, IsSentOnceMoreToACameraThatWasThereAllTheWhile)
{
    int received = 0;
    onForceIp = [&](const auto&) {
        if (++received == 4)
            obey();
    };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_THAT(destinations(), SizeIs(4));
}

TEST_F(ForceIpTest, FailsWithinSevenSecondsWhenTheCameraIsGone)
{
    isThere = false;
    EXPECT_EQ(force(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(network.elapsed(), Le(7s));
}

TEST_F(ForceIpTest, TakesNineSecondsAtMostHoweverLateTheCameraIsHeard)
{
    for (const Clock::duration delay : {1ms, 1000ms, 2000ms, 3000ms, 3700ms, 5000ms}) {
        discoveryDelay = delay;
        const auto begin = network.elapsed();
        EXPECT_NE(force(), RZ_OK);
        EXPECT_LE(network.elapsed() - begin, 9s);
    }
}

TEST_F(ForceIpTest, FailsWhenTheCameraIsFreeAndStaysWhereItIs)
{
    EXPECT_EQ(force(), RZ_ERROR_REFUSED);
    EXPECT_THAT(network.elapsed(), Le(6s));
}

TEST_F(ForceIpTest, FailsWhenTheCameraIsHeldAndStaysWhereItIs)
{
    privilege = gvcp::Privilege::Exclusive;
    EXPECT_EQ(force(), RZ_ERROR_ACCESS_DENIED);
    EXPECT_THAT(network.elapsed(), Le(3s));
    EXPECT_THAT(destinations(), SizeIs(3)) << "no more for one that is known to be held";
}

TEST_F(ForceIpTest, TellsAnOpenRefusalAtOnce)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp, gvcp::Status::AccessDenied); };
    EXPECT_EQ(force(), RZ_ERROR_ACCESS_DENIED);
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp, gvcp::Status::InvalidParameter); };
    EXPECT_EQ(force(), RZ_ERROR_REFUSED);
    EXPECT_LE(network.elapsed(), 10ms);
}

TEST_F(ForceIpTest, ABusyCameraIsAskedAgain)
{
    int received = 0;
    onForceIp = [&](const auto& sent) {
        acknowledge(sent, OldIp, ++received <= 2 ? gvcp::Status::Busy : gvcp::Status::Success);
    };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_GT(received, 2);
}

TEST_F(ForceIpTest, ACameraThatFindsItMisalignedOnceForNothingIsNotBelieved)
{
    int received = 0;
    onForceIp = [&](const auto& sent) {
        acknowledge(sent, OldIp, ++received == 1 ? gvcp::Status::BadAlignment : gvcp::Status::Success);
    };
    EXPECT_EQ(force(), RZ_OK);
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp, gvcp::Status::BadAlignment); };
    EXPECT_EQ(force(), RZ_ERROR_REFUSED);
    EXPECT_LE(network.elapsed(), 1s);
}

TEST_F(ForceIpTest, ThatComplaintIsOneAlsoWhenItIsHeardTwice)
{
    int received = 0;
    onForceIp = [&](const auto& sent) {
        const auto status = ++received == 1 ? gvcp::Status::BadAlignment : gvcp::Status::Success;
        acknowledge(sent, OldIp, status);
        acknowledge(sent, OldIp, status);
    };
    EXPECT_EQ(force(), RZ_OK);
}

TEST_F(ForceIpTest, DoesNotBelieveAcknowledgesFromElsewhereOrWithAnotherId)
{
    onForceIp = [this](const auto& sent) {
        acknowledge(sent, "192.168.1.99"_ip);
        network.deliver(1ms, 0, OldIp,
                        gvcp::encodeAcknowledge(gvcp::Command::ForceIp, gvcp::Status::Success,
                                                static_cast<std::uint16_t>(sent.command().id ^ 0x4000)));
    };
    EXPECT_EQ(force(), RZ_ERROR_REFUSED);
}

TEST_F(ForceIpTest, DoesNotTakeAnotherCameraAtTheNewAddressForThisOne)
{
    onForceIp = [this](const auto&) {
        for (const auto& asked : network.sentCommands(gvcp::Command::Discovery))
            network.deliver(1ms, 0, NewIp, discoveryAnswer(asked.command().id, cameraAt(2, NewIp)));
    };
    EXPECT_EQ(force(), RZ_ERROR_REFUSED);
}

TEST_F(ForceIpTest, IsDoneWhenTheCameraMakesItsOwnOfMaskAndGateway)
{
    onForceIp = [this](const auto&) { present.address = NewIp; };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_THAT(destinations(), SizeIs(1)) << "Each more might restart it.";
}

TEST_F(ForceIpTest, OfAnotherMaskAloneIsDoneWhenTheCameraHasIt)
{
    onForceIp = [this](const auto&) { present.mask = "255.255.0.0"_ip; };
    EXPECT_EQ(forceIp(network, {Mac, {OldIp, "255.255.0.0"_ip, {}}}, before), RZ_OK);
    EXPECT_LE(network.elapsed(), 10ms);
}

TEST_F(ForceIpTest, CountsAnswersOnWhicheverAdapterTheyComeIn)
{
    network.setAdapters({adapterWith(1, Host), adapterWith(2, Host.plus(1))});
    onForceIp = [this](const FakeNetwork::Sent& sent) {
        EXPECT_EQ(sent.adapter, 0u);
        network.deliver(
            1ms, 1, OldIp,
            gvcp::encodeAcknowledge(gvcp::Command::ForceIp, gvcp::Status::Success, sent.command().id));
    };
    EXPECT_EQ(force(), RZ_OK);
    EXPECT_LE(network.elapsed(), 10ms);
}

TEST_F(ForceIpTest, AnUnchangedConfigurationIsSentAllTheSameAndSucceeds)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp); };
    EXPECT_EQ(forceWhatItHas(), RZ_OK);
    EXPECT_THAT(destinations(), SizeIs(1));
}

TEST_F(ForceIpTest, AnUnchangedConfigurationThatNobodyAcknowledgesSucceedsWhenTheCameraIsFree)
{
    EXPECT_EQ(forceWhatItHas(), RZ_OK);
    EXPECT_THAT(destinations(), SizeIs(3));
    EXPECT_THAT(network.elapsed(), Le(3s));
}

TEST_F(ForceIpTest, AnUnchangedConfigurationOfACameraThatAnApplicationHoldsFails)
{
    privilege = gvcp::Privilege::Exclusive;
    EXPECT_EQ(forceWhatItHas(), RZ_ERROR_ACCESS_DENIED) << "being where it was is no proof that it obeyed";
}

TEST_F(ForceIpTest, FailsAtOnceWhenTheAdapterCannotSend)
{
    network.brokenAdapters = {0};
    EXPECT_EQ(force(), RZ_ERROR_NETWORK);
    FakeNetwork none({});
    EXPECT_EQ(forceIp(none, {Mac, wanted}, before), RZ_ERROR_NETWORK);
}
