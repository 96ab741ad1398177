// SPDX-License-Identifier: Apache-2.0
// What a look finds out beyond the list: from registers, from how answers came, from questions that got lost.
#include "gvcp/Memory.h"
#include "gvcp/Registers.h"
#include "sdk/discovery/Enumeration.h"
#include "tests/sdk/FakeNetwork.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::Command;
using gvcp::Status;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::SizeIs;

namespace {

constexpr base::Ipv4 Host = "192.168.1.5"_ip;
constexpr base::Ipv4 Address = "192.168.1.20"_ip;
constexpr std::uint32_t Concatenation = 1;

/// A camera with registers. Answers a millisecond after each question.
struct Camera
{
    explicit Camera(std::uint8_t number, base::Ipv4 address = Address) : identity(cameraAt(number, address))
    {
        identity.ipConfigOptions = 7;
        registers = {{0x0008, 0x0200},     {0x000C, number}, {0x0600, 1},     {0x0904, 1},
                     {0x0934, 0x38000000}, {0x0938, 3000},   {0x0A00, 2},     {0x0A04, 50123},
                     {0x0A14, 0xC0A8014D}, {0x0954, 1},      {0x0670, 100},   {0x064C, 0xC0A80116},
                     {0x065C, 0xFFFFFF00}, {0x066C, 0},      {0x0D00, 50020}, {0x0D18, 0xC0A8014E}};
    }

    /// The register's value; its absence is answered with an error.
    Status read(const std::vector<std::uint32_t>& addresses, base::Bytes& values) const
    {
        if (refusal != Status::Success)
            return refusal;
        if (addresses.size() > 1 && (registers.at(0x0934) & Concatenation) == 0)
            return Status::InvalidParameter;
        std::vector<std::uint32_t> words;
        for (const std::uint32_t each : addresses) {
            const auto found = registers.find(each);
            if (found == registers.end())
                return Status::InvalidAddress;
            words.push_back(found->second);
        }
        values = gvcp::encodeWords(words);
        return Status::Success;
    }

    gvcp::DiscoveryAck identity;
    std::map<std::uint32_t, std::uint32_t> registers;
    Status refusal = Status::Success;
    bool answersRegisters = true;
};

class LookTest : public testing::Test
{
protected:
    LookTest()
    {
        network.onSend = [this](const FakeNetwork::Sent& sent) {
            const auto command = sent.command();
            for (const Camera& camera : cameras) {
                const base::Ipv4 ip = camera.identity.ip.address;
                if (command.command == Command::Discovery)
                    network.deliver(1ms, sent.adapter, ip, discoveryAnswer(command.id, camera.identity));
                else if (sent.destination == ip && command.command == Command::ReadRegister) {
                    asked.push_back(*gvcp::parseWords(command.payload));
                    answer(camera, sent.adapter, command);
                    return; // The first of several at one address.
                }
            }
        };
    }

    void answer(const Camera& camera, std::size_t adapter, const gvcp::CommandPacket& command)
    {
        if (!camera.answersRegisters || isLost(asked.size()))
            return;
        base::Bytes values;
        const Status status = camera.read(*gvcp::parseWords(command.payload), values);
        network.deliver(std::max<Clock::duration>(1ms, busyUntil - network.elapsed()), adapter,
                        camera.identity.ip.address,
                        gvcp::encodeAcknowledge(Command::ReadRegister, status, command.id, values));
    }

    std::vector<FoundCamera> look()
    {
        LookPlan complete = plan;
        complete.onCamera = [this](const FoundCamera& camera) {
            told.push_back(camera.identity.mac);
            toldAfter = network.elapsed();
        };
        complete.onArrival = [](const Arrival&) {};
        RequestIds ids;
        return lookForCameras(
                   network, ids, [](auto&, auto&) { return false; }, complete)
            .cameras;
    }

    RZ_CC_SIGHTING sighting()
    {
        const auto found = look();
        EXPECT_THAT(found, SizeIs(1));
        return found.at(0).sighting;
    }

    std::vector<std::uint32_t> allAsked() const
    {
        std::vector<std::uint32_t> all;
        for (const auto& each : asked)
            all.insert(all.end(), each.begin(), each.end());
        return all;
    }

    FakeNetwork network{{adapterWith(1, Host)}};
    std::vector<Camera> cameras{Camera(1)};
    LookPlan plan;
    std::function<bool(std::size_t)> isLost = [](std::size_t) { return false; };
    Clock::duration busyUntil{};                   ///< No register is told before.
    std::vector<std::vector<std::uint32_t>> asked; ///< The registers, question by question.
    std::vector<base::MacAddress> told;            ///< Before the end.
    Clock::duration toldAfter{};
};

} // namespace

TEST_F(LookTest, TellsWhatTheRegistersSay)
{
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nReachable, 1u);
    EXPECT_EQ(seen.nAccessible, 0u);
    EXPECT_EQ(seen.nRegisters, unsigned{RZ_REGISTERS_TOLD});
    EXPECT_EQ(seen.nTold, 127u);
    EXPECT_EQ(seen.nPrivilege, 2u);
    EXPECT_EQ(seen.nHolderIp, 0xC0A8014Du);
    EXPECT_EQ(seen.nHolderPort, 50123u);
    EXPECT_EQ(seen.nHeartbeatTimeout, 3000u);
    EXPECT_EQ(seen.nHeartbeatOff, 1u);
    EXPECT_EQ(seen.nLinkSpeed, 100u);
    EXPECT_EQ(seen.nStoredIp, 0xC0A80116u);
    EXPECT_EQ(seen.nStoredMask, 0xFFFFFF00u);
    EXPECT_EQ(seen.nStoredGateway, 0u);
    EXPECT_EQ(seen.nStreamIp, 0xC0A8014Eu);
    EXPECT_EQ(seen.nStreamPort, 50020u);
}

TEST_F(LookTest, AsksForOptionalRegistersOnlyWhatTheCapabilitiesName)
{
    cameras[0].registers[0x0934] = 0;
    cameras[0].registers[0x0904] = 0;
    cameras[0].identity.ipConfigOptions = 6;
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nTold, unsigned{RZ_TOLD_PRIVILEGE} | RZ_TOLD_HEARTBEAT_TIMEOUT);
    for (const std::uint32_t optional : {0x0A04, 0x0A14, 0x0954, 0x0670, 0x064C, 0x0D00, 0x0D18})
        EXPECT_THAT(allAsked(), Not(Contains(optional)));
}

TEST_F(LookTest, AsksSeveralAtOnceOnlyWhereTheCameraCan)
{
    look();
    for (const auto& each : asked)
        EXPECT_THAT(each, SizeIs(1));

    asked.clear();
    cameras[0].registers[0x0934] |= Concatenation;
    EXPECT_EQ(sighting().nTold, 127u);
    EXPECT_LE(asked.size(), 5u);
}

TEST_F(LookTest, OneRegisterThatIsMissingAmongSeveralDoesNotHideTheOthers)
{
    cameras[0].registers[0x0934] |= Concatenation;
    cameras[0].registers.erase(0x0670);
    EXPECT_EQ(sighting().nTold, 127u & ~RZ_TOLD_LINK_SPEED);
}

TEST_F(LookTest, ACameraThatIsHeldExclusivelyIsAskedNoFurther)
{
    cameras[0].refusal = Status::AccessDenied;
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nRegisters, unsigned{RZ_REGISTERS_REFUSED});
    EXPECT_EQ(seen.nTold, 0u);
    EXPECT_THAT(asked, ElementsAre(ElementsAre(0x0A00)));
}

TEST_F(LookTest, ASilentCameraCostsNoMoreThanTheSearch)
{
    cameras[0].answersRegisters = false;
    EXPECT_EQ(sighting().nRegisters, unsigned{RZ_REGISTERS_SILENT});
    EXPECT_LT(network.elapsed(), 1400ms);
}

TEST_F(LookTest, ACameraThatWasGivenUpAndAnswersAfterAllTellsAllTheSame)
{
    busyUntil = 800ms;
    EXPECT_EQ(sighting().nTold, 127u);
    EXPECT_EQ(told, std::vector{cameras[0].identity.mac});
    EXPECT_LT(toldAfter, busyUntil);
}

TEST_F(LookTest, ACameraThatFallsSilentIsNotAskedForAllTheRest)
{
    plan.time = 4500ms;
    isLost = [](std::size_t number) { return number > 2; };
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nRegisters, unsigned{RZ_REGISTERS_TOLD});
    EXPECT_EQ(seen.nTold, unsigned{RZ_TOLD_PRIVILEGE});
    EXPECT_THAT(asked, SizeIs(2 + 2 * 3)) << "the next two registers, three times each";
}

TEST_F(LookTest, APortIsTheLowerHalfOfItsRegister)
{
    cameras[0].registers[0x0A04] = 0xABCD0000u | 50123;
    cameras[0].registers[0x0D00] = 0xABCD0000u | 50020;
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nHolderPort, 50123u);
    EXPECT_EQ(seen.nStreamPort, 50020u);
}

TEST_F(LookTest, ACameraOutOfReachIsAskedNothing)
{
    cameras = {Camera(1, "10.0.0.20"_ip)};
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nReachable, 0u);
    EXPECT_EQ(seen.nRegisters, unsigned{RZ_REGISTERS_NOT_ASKED});
    EXPECT_THAT(asked, SizeIs(0));
}

TEST_F(LookTest, WhatAnotherCameraSaysAtItsAddressIsNotItsOwn)
{
    cameras = {Camera(1), Camera(2)}; // The first one answers.
    const auto found = look();
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0].sighting.nRegisters, unsigned{RZ_REGISTERS_TOLD});
    EXPECT_EQ(found[0].sighting.nStoredIp, 0xC0A80116u);
    EXPECT_EQ(found[1].sighting.nRegisters, unsigned{RZ_REGISTERS_OTHER_CAMERA});
    EXPECT_EQ(found[1].sighting.nTold, 0u);
}

TEST_F(LookTest, TheStoredAddressAndTheLinkAreThoseOfTheInterfaceThatWasHeard)
{
    Camera& camera = cameras[0];
    camera.registers[0x0600] = 2;
    camera.registers[0x0680] = 0x0200; // The second one's MAC ends in 1, the first one's in 9.
    camera.registers[0x0684] = 1;
    camera.registers[0x000C] = 9;
    camera.registers[0x06F0] = 2500;
    camera.registers[0x06CC] = 0xC0A80117;
    camera.registers[0x06DC] = 0xFFFF0000;
    camera.registers[0x06EC] = 0xC0A80101;
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nRegisters, unsigned{RZ_REGISTERS_TOLD});
    EXPECT_EQ(seen.nLinkSpeed, 2500u);
    EXPECT_EQ(seen.nStoredIp, 0xC0A80117u);
    EXPECT_EQ(seen.nStoredMask, 0xFFFF0000u);
    EXPECT_EQ(seen.nStoredGateway, 0xC0A80101u);
}

TEST_F(LookTest, TellsACameraAtOnceAndAllOfThemAtTheEnd)
{
    plan.time = 3s;
    EXPECT_THAT(look(), SizeIs(1));
    EXPECT_THAT(told, ElementsAre(cameras[0].identity.mac));
    EXPECT_LT(toldAfter, 200ms);
    EXPECT_GE(network.elapsed(), 3s);
}

TEST_F(LookTest, CountsHowManyQuestionsGetLost)
{
    plan.lossQuestions = 20;
    plan.time = 4500ms;
    const std::size_t before = 14;
    isLost = [&](std::size_t number) { return number > before && number % 4 == 0; };
    RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nQuestions, 20u);
    EXPECT_EQ(seen.nReplies, 15u);

    asked.clear();
    isLost = [](std::size_t) { return false; };
    seen = sighting();
    EXPECT_EQ(seen.nQuestions, 20u);
    EXPECT_EQ(seen.nReplies, 20u);
}

TEST_F(LookTest, LossesAreCountedAlsoOfACameraThatRefuses)
{
    plan.lossQuestions = 20;
    plan.time = 4500ms;
    cameras[0].refusal = Status::AccessDenied;
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nQuestions, 20u);
    EXPECT_EQ(seen.nReplies, 20u);
}

TEST_F(LookTest, CountsWhichSearchesWereAnswered)
{
    int discoveries = 0;
    const auto answerAll = network.onSend;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        // Each goes to two addresses; the answers to the second and the fifth are lost.
        if (sent.command().command == Command::Discovery) {
            const int number = discoveries++ / 2;
            if (number == 1 || number == 4)
                return;
        }
        answerAll(sent);
    };
    const RZ_CC_SIGHTING seen = sighting();
    EXPECT_EQ(seen.nSearches, 6u);
    EXPECT_EQ(seen.nSearchAnswers, 4u);
}

TEST_F(LookTest, AnAdapterWithoutAnAddressAsksAllFromWhateverSourceThereIs)
{
    network.setAdapters({{"eth0", 7, {}}});
    const auto found = look();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_FALSE(found[0].isReachable);
    EXPECT_TRUE(found[0].adapterAddress.isUnspecified());
    const auto sent = network.sentCommands(Command::Discovery);
    EXPECT_THAT(sent, SizeIs(6));
    for (const auto& each : sent) {
        EXPECT_EQ(each.destination, base::LimitedBroadcast);
        EXPECT_TRUE(each.source.isUnspecified());
    }
}

TEST_F(LookTest, TheIdsGoOnFromOneLookToTheNext)
{
    RequestIds ids;
    plan.onCamera = [](const FoundCamera&) {};
    plan.onArrival = [](const Arrival&) {};
    std::set<std::uint16_t> before;
    for (const int round : {1, 2}) {
        const std::size_t first = network.sent().size();
        lookForCameras(
            network, ids, [](auto&, auto&) { return false; }, plan);
        for (std::size_t i = first; i < network.sent().size(); ++i) {
            const auto command = network.sent()[i].command();
            if (command.command != Command::Discovery)
                continue;
            if (round == 1)
                before.insert(command.id);
            else
                EXPECT_EQ(before.count(command.id), 0u);
        }
    }
}

TEST_F(LookTest, EndsAtOnceWhenItIsOverWithWhatItHas)
{
    plan.time = 3s;
    for (const auto end : {0ms, 120ms, 1000ms, 2000ms}) {
        const auto begin = network.elapsed();
        plan.isOver = [this, begin, end] { return network.elapsed() - begin >= end; };
        EXPECT_THAT(look(), SizeIs(end == 0ms ? 0 : 1)) << end.count();
        EXPECT_GE(network.elapsed() - begin, end);
        EXPECT_LE(network.elapsed() - begin, end + 20ms);
    }
}
