// SPDX-License-Identifier: Apache-2.0
#include "sdk/ForceIpExchange.h"

#include "gvcp/Registers.h"
#include "tests/sdk/FakeNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using testing::Le;
using testing::SizeIs;

namespace {

constexpr gvcp::Ipv4 Host = 0xC0A80105;
constexpr gvcp::Ipv4 OldIp = 0x0A000009;
constexpr gvcp::Ipv4 NewIp = 0xC0A80114;
constexpr gvcp::Ipv4 Mask = 0xFFFFFF00;
const gvcp::MacAddress Mac{{0x02, 0, 0, 0, 0, 1}};

/// A camera of a few lines: what it does with FORCEIP is the test's to say, discovery it answers truly.
class ForceIpTest : public testing::Test
{
protected:
    ForceIpTest()
    {
        network.onSend = [this](const FakeNetwork::Sent& sent) { take(sent); };
    }

    RZ_ERROR force() { return forceIp(network, wanted, before); }
    RZ_ERROR forceWhatItHas() { return forceIp(network, before, before); }

    void obey() { present = wanted; }
    void acknowledge(const FakeNetwork::Sent& sent, gvcp::Ipv4 source,
                     gvcp::Status status = gvcp::Status::Success)
    {
        network.deliver(1ms, 0, source,
                        gvcp::encodeAcknowledge(gvcp::Command::ForceIp, status, sent.command().id));
    }

    FakeNetwork network{{adapterWith(1, Host)}};
    const gvcp::ForceIp before{Mac, OldIp, Mask, 0};
    const gvcp::ForceIp wanted{Mac, NewIp, Mask, 0xC0A801FE};
    gvcp::ForceIp present = before;
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
            auto camera = cameraAt(1, present.ip);
            camera.subnetMask = present.subnetMask;
            camera.gateway = present.gateway;
            network.deliver(discoveryDelay, 0, present.ip, discoveryAnswer(command.id, camera));
        } else if (sent.destination == present.ip) {
            network.deliver(1ms, 0, present.ip, registerAnswer(command.id, privilege));
        }
    }
};

} // namespace

TEST_F(ForceIpTest, GoesOutByBothBroadcastsWithTheCamerasMacAndTheThreeValues)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp); };
    EXPECT_EQ(force(), RZ_OK);
    const auto sent = network.sentCommands(gvcp::Command::ForceIp);
    ASSERT_THAT(sent, SizeIs(2));
    EXPECT_EQ(sent[0].destination, gvcp::LimitedBroadcast);
    EXPECT_EQ(sent[1].destination, 0xC0A801FFu);
    for (const auto& one : sent) {
        EXPECT_EQ(one.command().flags, 0x11);
        EXPECT_EQ(gvcp::parseForceIp(one.command().payload), wanted);
    }
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
}

TEST_F(ForceIpTest, IsDoneWhenTheCameraObeysSilentlyAndAnswersDiscoveryLate)
{
    discoveryDelay = 1000ms;
    onForceIp = [this](const auto&) { obey(); };
    EXPECT_EQ(force(), RZ_OK);
}

TEST_F(ForceIpTest, IsSentAgainWithTheSameIdWhenItWasLost)
{
    int received = 0;
    onForceIp = [&](const auto& sent) {
        if (++received > 2) // The first try's two broadcasts are lost.
            acknowledge(sent, OldIp);
    };
    EXPECT_EQ(force(), RZ_OK);
    const auto sent = network.sentCommands(gvcp::Command::ForceIp);
    ASSERT_THAT(sent, SizeIs(4));
    EXPECT_EQ(sent.front().bytes, sent.back().bytes);
}

TEST_F(ForceIpTest, FailsWithinThreeSecondsWhenTheCameraIsGone)
{
    isThere = false;
    EXPECT_EQ(force(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(network.elapsed(), Le(3s));
}

TEST_F(ForceIpTest, FailsWhenTheCameraIsHeardAndStaysWhereItIs)
{
    EXPECT_EQ(force(), RZ_ERROR_ACCESS_DENIED);
    EXPECT_THAT(network.elapsed(), Le(3s));
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
    EXPECT_LE(network.elapsed(), 10ms);
}

TEST_F(ForceIpTest, DoesNotBelieveAcknowledgesFromElsewhereOrWithAnotherId)
{
    onForceIp = [this](const auto& sent) {
        acknowledge(sent, 0xC0A80163);
        network.deliver(1ms, 0, OldIp,
                        gvcp::encodeAcknowledge(gvcp::Command::ForceIp, gvcp::Status::Success,
                                                static_cast<std::uint16_t>(sent.command().id ^ 0x4000)));
    };
    EXPECT_EQ(force(), RZ_ERROR_ACCESS_DENIED);
}

TEST_F(ForceIpTest, DoesNotTakeAnotherCameraAtTheNewAddressForThisOne)
{
    onForceIp = [this](const auto&) {
        for (const auto& asked : network.sentCommands(gvcp::Command::Discovery))
            network.deliver(1ms, 0, NewIp, discoveryAnswer(asked.command().id, cameraAt(2, NewIp)));
    };
    EXPECT_EQ(force(), RZ_ERROR_ACCESS_DENIED);
}

TEST_F(ForceIpTest, IsNotDoneWhenOnlyTheAddressTook)
{
    onForceIp = [this](const auto&) { present.ip = NewIp; };
    EXPECT_EQ(force(), RZ_ERROR_ACCESS_DENIED) << "mask and gateway are not what was asked for";
}

TEST_F(ForceIpTest, AnUnchangedConfigurationIsSentAllTheSameAndSucceeds)
{
    onForceIp = [this](const auto& sent) { acknowledge(sent, OldIp); };
    EXPECT_EQ(forceWhatItHas(), RZ_OK);
    EXPECT_THAT(network.sentCommands(gvcp::Command::ForceIp), SizeIs(2));
}

TEST_F(ForceIpTest, AnUnchangedConfigurationThatNobodyAcknowledgesSucceedsWhenTheCameraIsFree)
{
    EXPECT_EQ(forceWhatItHas(), RZ_OK);
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
    EXPECT_EQ(forceIp(none, wanted, before), RZ_ERROR_NETWORK);
}
