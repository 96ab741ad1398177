// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/Enumeration.h"

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

constexpr base::Ipv4 Host = "192.168.1.5"_ip;
constexpr base::Ipv4 Camera1 = "192.168.1.20"_ip;
constexpr base::Ipv4 Stranger = "10.0.0.9"_ip;

bool isDiscovery(const FakeNetwork::Sent& sent)
{
    return sent.command().command == gvcp::Command::Discovery;
}

bool knowsNone(const base::MacAddress&, const Adapter&)
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
                network.deliver(delay, sent.adapter, camera.ip.address,
                                discoveryAnswer(sent.command().id, camera));
            else if (sent.destination == camera.ip.address && privilege)
                network.deliver(1ms, sent.adapter, camera.ip.address,
                                registerAnswer(sent.command().id, *privilege));
        }
    };
}

} // namespace

TEST(Enumeration, AsksByBothBroadcastsFromEachAddressOfEachAdapter)
{
    FakeNetwork network({{"eth1", 1, {{Host, "255.255.255.0"_ip}, {"10.1.1.5"_ip, "255.255.0.0"_ip}}},
                         adapterWith(2, "172.16.0.5"_ip)});
    enumerateCameras(network, knowsNone);

    std::set<std::tuple<std::size_t, base::Ipv4, base::Ipv4>> ways;
    for (const auto& sent : network.sentCommands(gvcp::Command::Discovery)) {
        ways.insert({sent.adapter, sent.source, sent.destination});
        EXPECT_EQ(sent.command().flags, 0x11);
        EXPECT_TRUE(sent.command().payload.empty());
    }
    EXPECT_THAT(ways, ElementsAre(std::tuple(0u, "10.1.1.5"_ip, "10.1.255.255"_ip),
                                  std::tuple(0u, "10.1.1.5"_ip, "255.255.255.255"_ip),
                                  std::tuple(0u, Host, "192.168.1.255"_ip),
                                  std::tuple(0u, Host, "255.255.255.255"_ip),
                                  std::tuple(1u, "172.16.0.5"_ip, "172.16.0.255"_ip),
                                  std::tuple(1u, "172.16.0.5"_ip, "255.255.255.255"_ip)));
}

TEST(Enumeration, ASubnetWithoutBroadcastAddressIsAskedByTheLimitedBroadcastAlone)
{
    FakeNetwork network(
        {adapterWith(1, Host, "255.255.255.255"_ip), adapterWith(2, Host, "255.255.255.254"_ip)});
    enumerateCameras(network, knowsNone);
    for (const auto& sent : network.sentCommands(gvcp::Command::Discovery))
        EXPECT_EQ(sent.destination, base::LimitedBroadcast);
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
        if (isDiscovery(sent) && sent.destination == base::LimitedBroadcast && ++asked == 4)
            network.deliver(1000ms, 0, Stranger, discoveryAnswer(sent.command().id, cameraAt(1, Stranger)));
    };
    EXPECT_THAT(enumerateCameras(network, knowsNone).cameras, SizeIs(1));
}

TEST(Enumeration, TakesNoLongerWhenNobodyAnswersRegisterReads)
{
    std::vector<gvcp::DiscoveryAck> cameras;
    for (int i = 0; i < 256; ++i)
        cameras.push_back(
            cameraAt(static_cast<std::uint8_t>(i), "192.168.2.0"_ip.plus(static_cast<std::uint32_t>(i))));

    FakeNetwork prompt({adapterWith(1, Host, "255.255.0.0"_ip)});
    answer(prompt, cameras);
    EXPECT_THAT(enumerateCameras(prompt, knowsNone).cameras, SizeIs(256));

    FakeNetwork silent({adapterWith(1, Host, "255.255.0.0"_ip)});
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
    FakeNetwork network({{"eth1", 1, {{Host, "255.255.255.0"_ip}, {"10.0.0.1"_ip, "255.0.0.0"_ip}}}});
    answer(network, {cameraAt(1, Camera1), cameraAt(2, Stranger), cameraAt(3, "172.16.0.9"_ip)});
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_EQ(found[0].adapterAddress, Host);
    EXPECT_EQ(found[1].adapterAddress, "10.0.0.1"_ip);
    EXPECT_TRUE(found[1].isReachable);
    EXPECT_EQ(found[2].adapterAddress, Host) << "in none of the subnets: the adapter's first address";
}

TEST(Enumeration, ListsACameraOnceForEachAdapterThatHearsIt)
{
    FakeNetwork network({adapterWith(1, Host), adapterWith(2, "172.16.0.5"_ip)});
    answer(network, {cameraAt(1, Camera1)});
    const auto found = enumerateCameras(network, knowsNone).cameras;
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_TRUE(found[0].isReachable);
    EXPECT_FALSE(found[1].isReachable);
    EXPECT_EQ(found[1].adapterAddress, "172.16.0.5"_ip);
}

TEST(Enumeration, OneAdaptersFailureCostsTheOthersNothing)
{
    FakeNetwork network({adapterWith(1, Host), adapterWith(2, "172.16.0.5"_ip)});
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
    const auto cut = [](base::Bytes bytes, std::size_t size) {
        bytes.resize(size);
        return bytes;
    };
    const std::map<std::string, std::function<base::Bytes(std::uint16_t)>> rows{
        {"empty", [](auto) { return base::Bytes{}; }},
        {"header cut", [&](auto id) { return cut(good(id), 7); }},
        {"payload cut", [&](auto id) { return cut(good(id), 8 + 247); }},
        {"another id", [&](auto id) { return good(static_cast<std::uint16_t>(id ^ 0x4000)); }},
        {"too short for addresses",
         [](auto id) {
             return gvcp::encodeAcknowledge(gvcp::Command::Discovery, gvcp::Status::Success, id,
                                            base::Bytes(71));
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
        network.deliver(1ms, 0, first.ip.address, discoveryAnswer(sent.command().id, first));
        network.deliver(900ms, 0, second.ip.address, discoveryAnswer(sent.command().id, second));
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
            auto forged = cameraAt(0, "10.0.0.0"_ip.plus(i));
            base::writeU32(forged.mac.bytes, 2, 0xBAD00000 + i);
            network.deliver(1ms, 0, forged.ip.address, discoveryAnswer(sent.command().id, forged));
        }
        network.deliver(2ms, 0, Camera1, discoveryAnswer(sent.command().id, known));
    };
    const auto found = enumerateCameras(network, [&](const base::MacAddress& mac, const Adapter&) {
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
            auto forged = cameraAt(0, "10.0.0.0"_ip.plus(i));
            base::writeU32(forged.mac.bytes, 2, 0xBAD00000 + i);
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
            network.deliver(1ms, 0, Camera1.plus(1), discoveryAnswer(id, cameraAt(2, Camera1.plus(1))));
            network.deliver(1ms, 0, Camera1.plus(2), discoveryAnswer(id, cameraAt(3, Camera1.plus(2))));
            network.deliver(1ms, 0, Camera1.plus(9), discoveryAnswer(id, cameraAt(4, Camera1)));
        } else if (sent.destination == Camera1) {
            network.deliver(1ms, 0, Camera1, registerAnswer(id, gvcp::Privilege::Open));
        } else if (sent.destination == Camera1.plus(1)) {
            network.deliver(
                1ms, 0, Camera1.plus(1),
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
    FakeNetwork network({adapterWith(1, Host), adapterWith(2, Host.plus(1))});
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
    FakeNetwork network({adapterWith(1, Host, "255.255.0.0"_ip)});
    bool isFirst = true;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        if (sent.destination == Camera1)
            network.deliver(1ms, 0, Camera1, registerAnswer(sent.command().id, gvcp::Privilege::Open));
        if (!isDiscovery(sent) || !std::exchange(isFirst, false))
            return;
        for (unsigned i = 0; i < 10'000; ++i) {
            const auto forged = cameraAt(9, "192.168.64.0"_ip.plus(i));
            network.deliver(1ms, 0, forged.ip.address, discoveryAnswer(sent.command().id, forged));
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
