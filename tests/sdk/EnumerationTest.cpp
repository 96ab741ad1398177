// SPDX-License-Identifier: Apache-2.0
#include "sdk/Enumeration.h"

#include "gvcp/Registers.h"
#include "tests/sdk/FakeNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::Le;
using testing::SizeIs;

namespace {

constexpr gvcp::Ipv4 Host = 0xC0A80105;     // 192.168.1.5
constexpr gvcp::Ipv4 Camera1 = 0xC0A80114;  // 192.168.1.20
constexpr gvcp::Ipv4 Stranger = 0x0A000009; // 10.0.0.9

bool isDiscovery(const FakeNetwork::Sent& sent)
{
    return sent.command().command == gvcp::Command::Discovery;
}

bool knowsNone(const gvcp::MacAddress&, const Adapter&)
{
    return false;
}

/// Each of the cameras answers every discovery after `delay`, and register reads with `privilege`.
void answer(FakeNetwork& network, std::vector<gvcp::DiscoveryAck> cameras, Clock::duration delay = 1ms,
            std::optional<std::uint32_t> privilege = gvcp::Privilege::Open)
{
    network.onSend = [&network, cameras = std::move(cameras), delay,
                      privilege](const FakeNetwork::Sent& sent) {
        for (const auto& camera : cameras) {
            if (isDiscovery(sent))
                network.deliver(delay, sent.adapter, camera.ip, discoveryAnswer(sent.command().id, camera));
            else if (sent.destination == camera.ip && privilege)
                network.deliver(1ms, sent.adapter, camera.ip, registerAnswer(sent.command().id, *privilege));
        }
    };
}

} // namespace

TEST(Enumeration, AsksByBothBroadcastsFromEachAddressOfEachAdapter)
{
    FakeNetwork network(
        {{"eth1", 1, {{Host, 0xFFFFFF00}, {0x0A010105, 0xFFFF0000}}}, adapterWith(2, 0xAC100005)});
    enumerateCameras(network, knowsNone);

    std::set<std::tuple<std::size_t, gvcp::Ipv4, gvcp::Ipv4>> ways;
    for (const auto& sent : network.sentCommands(gvcp::Command::Discovery)) {
        ways.insert({sent.adapter, sent.source, sent.destination});
        EXPECT_EQ(sent.command().flags, 0x11);
        EXPECT_TRUE(sent.command().payload.empty());
    }
    EXPECT_THAT(ways, ElementsAre(std::tuple(0u, 0x0A010105u, 0x0A01FFFFu),
                                  std::tuple(0u, 0x0A010105u, 0xFFFFFFFFu), std::tuple(0u, Host, 0xC0A801FFu),
                                  std::tuple(0u, Host, 0xFFFFFFFFu), std::tuple(1u, 0xAC100005u, 0xAC1000FFu),
                                  std::tuple(1u, 0xAC100005u, 0xFFFFFFFFu)));
}

TEST(Enumeration, ASubnetWithoutBroadcastAddressIsAskedByTheLimitedBroadcastAlone)
{
    FakeNetwork network({adapterWith(1, Host, 0xFFFFFFFF), adapterWith(2, Host, 0xFFFFFFFE)});
    enumerateCameras(network, knowsNone);
    for (const auto& sent : network.sentCommands(gvcp::Command::Discovery))
        EXPECT_EQ(sent.destination, gvcp::LimitedBroadcast);
}

TEST(Enumeration, AsksSeveralTimesWithANewIdEachTime)
{
    FakeNetwork network({adapterWith(1, Host)});
    enumerateCameras(network, knowsNone);
    std::map<Clock::duration, std::set<std::uint16_t>> idsByTime;
    std::set<std::uint16_t> ids;
    for (const auto& sent : network.sentCommands(gvcp::Command::Discovery)) {
        idsByTime[sent.time].insert(sent.command().id);
        ids.insert(sent.command().id);
    }
    EXPECT_GE(idsByTime.size(), 4u);
    EXPECT_EQ(ids.size(), idsByTime.size());
    EXPECT_EQ(ids.count(0), 0u);
}

TEST(Enumeration, ListsACameraWithAllItsFields)
{
    FakeNetwork network({adapterWith(1, Host)});
    answer(network, {cameraAt(1, Camera1)});
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].identity, cameraAt(1, Camera1));
    EXPECT_EQ(found[0].adapterAddress, Host);
    EXPECT_TRUE(found[0].isReachable);
    EXPECT_TRUE(found[0].isAccessible);
}

TEST(Enumeration, HearsACameraThatHoldsItsAnswerBackForASecond)
{
    FakeNetwork network({adapterWith(1, Host)});
    answer(network, {cameraAt(1, Camera1)}, 1000ms);
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_TRUE(found[0].isAccessible) << "and still learns that it is free";
}

TEST(Enumeration, HearsAHeldBackAnswerAfterThreeLostOnes)
{
    FakeNetwork network({adapterWith(1, Host)});
    int asked = 0;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (isDiscovery(sent) && sent.destination == gvcp::LimitedBroadcast && ++asked == 4)
            network.deliver(1000ms, 0, Stranger, discoveryAnswer(sent.command().id, cameraAt(1, Stranger)));
    };
    EXPECT_THAT(enumerateCameras(network, knowsNone).cameras, SizeIs(1));
}

TEST(Enumeration, TakesNoLongerWhenNobodyAnswersRegisterReads)
{
    std::vector<gvcp::DiscoveryAck> cameras;
    for (int i = 0; i < 256; ++i)
        cameras.push_back(cameraAt(static_cast<std::uint8_t>(i), 0xC0A80200u + static_cast<gvcp::Ipv4>(i)));

    FakeNetwork prompt({adapterWith(1, Host, 0xFFFF0000)});
    answer(prompt, cameras);
    EXPECT_THAT(enumerateCameras(prompt, knowsNone).cameras, SizeIs(256));

    FakeNetwork silent({adapterWith(1, Host, 0xFFFF0000)});
    answer(silent, cameras, 1ms, std::nullopt);
    const auto found = enumerateCameras(silent, knowsNone).cameras;
    EXPECT_THAT(found, SizeIs(256));
    EXPECT_THAT(found, Each(testing::Field(&FoundCamera::isAccessible, false)));
    EXPECT_EQ(silent.elapsed(), prompt.elapsed());
}

TEST(Enumeration, WaitsALittleForALateSilentCameraAndNotForEver)
{
    FakeNetwork network({adapterWith(1, Host)});
    answer(network, {cameraAt(1, Camera1)}, 950ms, std::nullopt);
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_FALSE(found[0].isAccessible);
    EXPECT_LE(network.elapsed(), 1450ms);
}

TEST(Enumeration, TakesAnAnswerOfTheControlChannelAsLongAsItListens)
{
    FakeNetwork network({adapterWith(1, Host)});
    network.onSend = [&network](const FakeNetwork::Sent& sent) {
        if (isDiscovery(sent))
            network.deliver(1ms, 0, Camera1, discoveryAnswer(sent.command().id, cameraAt(1, Camera1)));
        else
            network.deliver(1000ms, 0, Camera1, registerAnswer(sent.command().id, gvcp::Privilege::Open));
    };
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_TRUE(found[0].isAccessible) << "a camera that is slow is not in use";
    EXPECT_THAT(network.sentCommands(gvcp::Command::ReadRegister), SizeIs(4));
}

TEST(Enumeration, AsksOnlyReachableCamerasForTheirControlChannel)
{
    FakeNetwork network({adapterWith(1, Host)});
    answer(network, {cameraAt(1, Camera1), cameraAt(2, Stranger)});
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_FALSE(found[1].isReachable);
    EXPECT_FALSE(found[1].isAccessible);
    const auto reads = network.sentCommands(gvcp::Command::ReadRegister);
    ASSERT_THAT(reads, SizeIs(1)) << "answered at once, asked once";
    EXPECT_EQ(reads[0].destination, Camera1);
}

TEST(Enumeration, NamesTheAdaptersAddressInTheCamerasSubnet)
{
    FakeNetwork network({{"eth1", 1, {{Host, 0xFFFFFF00}, {0x0A000001, 0xFF000000}}}});
    answer(network, {cameraAt(1, Camera1), cameraAt(2, Stranger), cameraAt(3, 0xAC100009)});
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_EQ(found[0].adapterAddress, Host);
    EXPECT_EQ(found[1].adapterAddress, 0x0A000001u);
    EXPECT_TRUE(found[1].isReachable);
    EXPECT_EQ(found[2].adapterAddress, Host) << "in none of the subnets: the adapter's first address";
}

TEST(Enumeration, ListsACameraOnceForEachAdapterThatHearsIt)
{
    FakeNetwork network({adapterWith(1, Host), adapterWith(2, 0xAC100005)});
    answer(network, {cameraAt(1, Camera1)});
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_TRUE(found[0].isReachable);
    EXPECT_FALSE(found[1].isReachable);
    EXPECT_EQ(found[1].adapterAddress, 0xAC100005u);
}

TEST(Enumeration, OneAdaptersFailureCostsTheOthersNothing)
{
    FakeNetwork network({adapterWith(1, Host), adapterWith(2, 0xAC100005)});
    answer(network, {cameraAt(1, Camera1)});
    network.brokenAdapters = {0};
    const auto found = enumerateCameras(network, knowsNone);
    ASSERT_THAT(found.cameras, SizeIs(1));
    EXPECT_EQ(found.cameras[0].adapter, 1u);
    EXPECT_THAT(found.failures, ElementsAre("eth1: nothing could be sent"));
}

TEST(Enumeration, WithoutAdaptersEndsAtOnce)
{
    FakeNetwork network({});
    EXPECT_THAT(enumerateCameras(network, knowsNone).cameras, SizeIs(0));
    EXPECT_EQ(network.elapsed(), 0ms);
}

TEST(Enumeration, DropsWhatIsNoAnswerToItsQuestions)
{
    const auto good = [](std::uint16_t id) { return discoveryAnswer(id, cameraAt(9, Camera1)); };
    const auto cut = [](gvcp::Bytes bytes, std::size_t size) {
        bytes.resize(size);
        return bytes;
    };
    const std::map<std::string, std::function<gvcp::Bytes(std::uint16_t)>> rows{
        {"empty", [](auto) { return gvcp::Bytes{}; }},
        {"header cut", [&](auto id) { return cut(good(id), 7); }},
        {"payload cut", [&](auto id) { return cut(good(id), 8 + 247); }},
        {"another id", [&](auto id) { return good(static_cast<std::uint16_t>(id ^ 0x4000)); }},
        {"too short for addresses",
         [](auto id) {
             return gvcp::encodeAcknowledge(gvcp::Command::Discovery, gvcp::Status::Success, id,
                                            gvcp::Bytes(71));
         }},
        {"error status",
         [](auto id) {
             return gvcp::encodeAcknowledge(gvcp::Command::Discovery, gvcp::Status::Error, id,
                                            gvcp::encodeDiscoveryAck(cameraAt(9, Camera1)));
         }},
        {"another acknowledge",
         [](auto id) {
             return gvcp::encodeAcknowledge(gvcp::Command::ReadMemory, gvcp::Status::Success, id,
                                            gvcp::encodeDiscoveryAck(cameraAt(9, Camera1)));
         }},
        {"a command", [](auto id) { return gvcp::encodeCommand(gvcp::Command::Discovery, 0x11, id); }},
    };
    for (const auto& [name, bytes] : rows) {
        FakeNetwork network({adapterWith(1, Host)});
        network.onSend = [&network, &make = bytes](const FakeNetwork::Sent& sent) {
            network.deliver(1ms, 0, Camera1, make(sent.command().id));
        };
        EXPECT_THAT(enumerateCameras(network, knowsNone).cameras, SizeIs(0)) << name;
    }
}

TEST(Enumeration, TakesEachRecordWholeFromTheLatestPacket)
{
    FakeNetwork network({adapterWith(1, Host)});
    auto first = cameraAt(1, Camera1);
    first.userDefinedName = "before";
    first.manufacturerInfo = "only in the first";
    auto second = cameraAt(1, Stranger);
    second.userDefinedName = "after";
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (!isDiscovery(sent))
            return;
        network.deliver(1ms, 0, first.ip, discoveryAnswer(sent.command().id, first));
        network.deliver(900ms, 0, second.ip, discoveryAnswer(sent.command().id, second));
    };
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].identity, second);
    EXPECT_FALSE(found[0].isReachable);
}

TEST(Enumeration, AFloodOfForgedAnswersIsBoundedAndCrowdsOutNoKnownCamera)
{
    FakeNetwork network({adapterWith(1, Host)});
    const auto known = cameraAt(1, Camera1);
    bool isFirst = true;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (!isDiscovery(sent) || !std::exchange(isFirst, false))
            return;
        for (unsigned i = 0; i < 10'000; ++i) {
            auto forged = cameraAt(0, 0x0A000000 + i);
            gvcp::writeU32(forged.mac.bytes, 2, 0xBAD00000 + i);
            network.deliver(1ms, 0, forged.ip, discoveryAnswer(sent.command().id, forged));
        }
        network.deliver(2ms, 0, Camera1, discoveryAnswer(sent.command().id, known));
    };
    const auto found = enumerateCameras(network, [&](const gvcp::MacAddress& mac, const Adapter&) {
                           return mac == known.mac;
                       }).cameras;
    EXPECT_THAT(found.size(), Le(1100u));
    EXPECT_THAT(found, testing::Contains(testing::Field(&FoundCamera::identity, known)));
    EXPECT_LE(network.elapsed(), 1450ms);
}

TEST(Enumeration, AFloodOfAnswersThatComeFromElsewhereThanTheySayCrowdsOutNoNewCamera)
{
    FakeNetwork network({adapterWith(1, Host)});
    const auto fresh = cameraAt(1, Stranger);
    bool isFirst = true;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (!isDiscovery(sent) || !std::exchange(isFirst, false))
            return;
        for (unsigned i = 0; i < 10'000; ++i) {
            auto forged = cameraAt(0, 0x0A000000 + i);
            gvcp::writeU32(forged.mac.bytes, 2, 0xBAD00000 + i);
            network.deliver(1ms, 0, Camera1, discoveryAnswer(sent.command().id, forged));
        }
        network.deliver(2ms, 0, Stranger, discoveryAnswer(sent.command().id, fresh));
    };
    const auto found = enumerateCameras(network, knowsNone).cameras;
    EXPECT_THAT(found.size(), Le(1100u));
    EXPECT_THAT(found, testing::Contains(testing::Field(&FoundCamera::identity, fresh)));
}

TEST(Enumeration, KnowsWhichCamerasAnsweredACommandFromTheAddressThatTheyName)
{
    FakeNetwork network({adapterWith(1, Host)});
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        const auto id = sent.command().id;
        if (isDiscovery(sent)) {
            network.deliver(1ms, 0, Camera1, discoveryAnswer(id, cameraAt(1, Camera1)));
            network.deliver(1ms, 0, Camera1 + 1, discoveryAnswer(id, cameraAt(2, Camera1 + 1)));
            network.deliver(1ms, 0, Camera1 + 2, discoveryAnswer(id, cameraAt(3, Camera1 + 2)));
            network.deliver(1ms, 0, Camera1 + 9, discoveryAnswer(id, cameraAt(4, Camera1)));
        } else if (sent.destination == Camera1) {
            network.deliver(1ms, 0, Camera1, registerAnswer(id, gvcp::Privilege::Open));
        } else if (sent.destination == Camera1 + 1) {
            network.deliver(
                1ms, 0, Camera1 + 1,
                gvcp::encodeAcknowledge(gvcp::Command::ReadRegister, gvcp::Status::AccessDenied, id));
        }
    };
    std::vector<bool> proven;
    for (const auto& camera : enumerateCameras(network, knowsNone).cameras)
        proven.push_back(camera.isProven);
    EXPECT_THAT(proven, ElementsAre(true, true, false, false)) << "free, held, silent, and from elsewhere";
}

TEST(Enumeration, TakesTheAnswerToAQuestionOnWhicheverAdapterItComesIn)
{
    FakeNetwork network({adapterWith(1, Host), adapterWith(2, Host + 1)});
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (isDiscovery(sent))
            network.deliver(1ms, 0, Camera1, discoveryAnswer(sent.command().id, cameraAt(1, Camera1)));
        else
            network.deliver(1ms, 1, Camera1, registerAnswer(sent.command().id, gvcp::Privilege::Open));
    };
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(1)) << "heard on the first alone";
    EXPECT_EQ(found[0].adapter, 0u);
    EXPECT_TRUE(found[0].isAccessible);
}

TEST(Enumeration, WhoAnswersFromEverMoreAddressesIsAskedAtFewOfThem)
{
    FakeNetwork network({adapterWith(1, Host, 0xFFFF0000)});
    bool isFirst = true;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (sent.destination == Camera1)
            network.deliver(1ms, 0, Camera1, registerAnswer(sent.command().id, gvcp::Privilege::Open));
        if (!isDiscovery(sent) || !std::exchange(isFirst, false))
            return;
        for (unsigned i = 0; i < 10'000; ++i) {
            const auto forged = cameraAt(9, 0xC0A84000 + i);
            network.deliver(1ms, 0, forged.ip, discoveryAnswer(sent.command().id, forged));
        }
        network.deliver(2ms, 0, Camera1, discoveryAnswer(sent.command().id, cameraAt(1, Camera1)));
    };
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_TRUE(found[0].isAccessible) << "the others are asked as ever";
    EXPECT_THAT(network.sentCommands(gvcp::Command::ReadRegister), SizeIs(Le(40u)));
}

TEST(Enumeration, AnEndlessStreamOfAnswersDoesNotHoldItBeyondItsTime)
{
    FakeNetwork network({adapterWith(1, Host)});
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (isDiscovery(sent))
            for (int i = 0; i < 100'000; ++i)
                network.deliver(1149ms, 0, Camera1,
                                discoveryAnswer(sent.command().id, cameraAt(1, Stranger)));
    };
    EXPECT_THAT(enumerateCameras(network, knowsNone).cameras, SizeIs(1));
    EXPECT_LE(network.elapsed(), 1450ms);
}
