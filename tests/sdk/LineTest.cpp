// SPDX-License-Identifier: Apache-2.0
#include "sdk/line/Change.h"
#include "tests/sdk/LineCamera.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

constexpr base::IpSettings Target{"192.168.1.200"_ip, "255.255.255.0"_ip, "192.168.1.1"_ip};

/// The line as cameras are on it, and the orders.
class LineTest : public testing::Test
{
protected:
    struct Run
    {
        std::unique_ptr<sdk::Change> change;
        std::vector<unsigned> steps;
    };

    LineTest()
    {
        network.keepsSent = false;
        network.onSend = [this](const FakeNetwork::Sent& sent) {
            for (const auto& each : cameras)
                each->take(sent);
        };
    }

    LineCamera& add()
    {
        cameras.push_back(
            std::make_unique<LineCamera>(network, static_cast<std::uint8_t>(cameras.size() + 1)));
        return *cameras.back();
    }

    static RZ_CC_CHANGE order(const LineCamera& camera)
    {
        RZ_CC_CHANGE change{};
        const auto& mac = camera.camera.mac.bytes;
        change.stInfo.nMacHigh = base::readU16(mac, 0);
        change.stInfo.nMacLow = base::readU32(mac, 2);
        change.stInfo.stGigEInfo.nIpConfigOptions = camera.camera.ipConfigOptions;
        change.stInfo.stGigEInfo.nNetExportIndex = 1;
        change.nPatience = 30000;
        return change;
    }

    static RZ_CC_CHANGE toStatic(const LineCamera& camera, const base::IpSettings& ip = Target)
    {
        RZ_CC_CHANGE change = order(camera);
        RZ_CC_SETTINGS& wanted = change.stWanted;
        wanted.nParts = RZ_SETTING_METHOD | RZ_SETTING_ADDRESS | RZ_SETTING_STORED;
        wanted.nIpConfig = 5;
        wanted.nIp = wanted.nStoredIp = ip.address.number();
        wanted.nSubnetMask = wanted.nStoredMask = ip.mask.number();
        wanted.nGateway = wanted.nStoredGateway = ip.gateway.number();
        return change;
    }

    static RZ_CC_CHANGE toMethod(const LineCamera& camera, std::uint32_t ipConfig)
    {
        RZ_CC_CHANGE change = order(camera);
        change.stWanted.nParts = RZ_SETTING_METHOD;
        change.stWanted.nIpConfig = ipConfig;
        return change;
    }

    static RZ_CC_CHANGE named(RZ_CC_CHANGE change, const char* name)
    {
        change.stWanted.nParts |= RZ_SETTING_NAME;
        std::strncpy(change.stWanted.szUserDefinedName, name, 15);
        return change;
    }

    void begin(const RZ_CC_CHANGE& change)
    {
        auto& run = *runs.emplace_back(std::make_unique<Run>());
        run.change =
            std::make_unique<sdk::Change>(line, change, [&run](RZ_STEP step) { run.steps.push_back(step); });
        run.change->start();
    }

    /// All that have begun, to their ends.
    void serve()
    {
        const auto isOver = [this] {
            return std::ranges::all_of(runs, [](const auto& run) { return run->change->hasEnded(); });
        };
        line.serve(network.now() + 1h, isOver);
        ASSERT_TRUE(isOver()) << "a change waits for nothing";
    }

    RZ_CC_CHANGE_RESULT carryOut(const RZ_CC_CHANGE& change)
    {
        begin(change);
        serve();
        return runs.back()->change->result();
    }

    FakeNetwork network{{adapterWith(1, "192.168.1.5"_ip)}};
    sdk::Line line{network};
    std::vector<std::unique_ptr<LineCamera>> cameras;
    std::vector<std::unique_ptr<Run>> runs;
};

bool isStatic(const LineCamera& camera, const base::IpSettings& ip = Target)
{
    return (camera.camera.ipConfigCurrent & 1) != 0 && camera.camera.ip == ip && camera.stored == ip;
}

TEST_F(LineTest, AStaticCameraIsForcedStoredAndNotRestarted)
{
    LineCamera& camera = add();
    const auto result = carryOut(toStatic(camera));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_TRUE(isStatic(camera));
    EXPECT_EQ(result.nSteps, static_cast<unsigned>(RZ_STEP_FORCED | RZ_STEP_STORED));
    EXPECT_EQ(result.stNow.nIp, Target.address.number());
    EXPECT_EQ(result.stNow.nStoredIp, Target.address.number());
    EXPECT_EQ(camera.privilege, 0U);
}

TEST_F(LineTest, ACameraThatGetsAnotherKindOfAddressIsRestarted)
{
    LineCamera& camera = add();
    camera.camera.ipConfigCurrent = 0x80000006;
    camera.camera.ip = camera.leased;
    const auto result = carryOut(named(toStatic(camera), "left"));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_TRUE(isStatic(camera));
    EXPECT_EQ(camera.camera.userDefinedName, "left");
    EXPECT_EQ(camera.camera.ipConfigCurrent, 0x80000005U) << "bits that are not ours stay";
    EXPECT_EQ(runs.back()->steps, (std::vector<unsigned>{RZ_STEP_FORCED, RZ_STEP_STORED, RZ_STEP_NAMED,
                                                         RZ_STEP_CONFIGURED, RZ_STEP_RESTARTED}));
}

TEST_F(LineTest, DhcpIsDoneWhenTheCameraHasLeftItsAddress)
{
    LineCamera& camera = add();
    const auto result = carryOut(toMethod(camera, 6));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_EQ(camera.camera.ip, camera.leased);
    EXPECT_EQ(result.stNow.nIp, camera.leased.address.number());
    EXPECT_EQ(camera.stored, base::IpSettings({"192.168.1.21"_ip, "255.255.255.0"_ip, {}}));
}

TEST_F(LineTest, DhcpWithoutAServerEndsWithALinkLocalAddress)
{
    LineCamera& camera = add();
    camera.leased = {};
    const auto result = carryOut(toMethod(camera, 6));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_EQ(result.stNow.nIp, camera.linkLocal.address.number());
}

TEST_F(LineTest, TheDhcpServerMayGiveTheAddressThatTheCameraHad)
{
    LineCamera& camera = add();
    camera.leased = camera.stored;
    const auto result = carryOut(toMethod(camera, 6));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_LT(network.elapsed(), 5s);
}

TEST_F(LineTest, ALinkLocalAddressIsOne)
{
    LineCamera& camera = add();
    const auto result = carryOut(toMethod(camera, 4));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_EQ(camera.camera.ip, camera.linkLocal);
}

TEST_F(LineTest, ACameraThatDoesNotRestartIsNoSuccess)
{
    LineCamera& camera = add();
    camera.ignoresRestarts = true;
    const auto result = carryOut(toMethod(camera, 6));
    EXPECT_NE(result.nError, RZ_OK);
    EXPECT_THAT(result.szError, HasSubstr("restarting"));
    EXPECT_EQ(result.stNow.nIp, camera.camera.ip.address.number());
}

TEST_F(LineTest, WhatIsAsWantedIsNotWritten)
{
    LineCamera& camera = add();
    const auto result = carryOut(named(toStatic(camera, camera.stored), "before"));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_EQ(camera.writes, 0U);
    EXPECT_EQ(result.nSteps, 0U);
}

TEST_F(LineTest, ACameraInTheWrongSubnetIsReachedByItsMac)
{
    LineCamera& camera = add();
    camera.camera.ip = camera.stored = {"10.0.0.5"_ip, "255.0.0.0"_ip, {}};
    const auto result = carryOut(toStatic(camera));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_TRUE(isStatic(camera));
}

TEST_F(LineTest, ACameraThatIsToLeaveTheSubnetStoresItsAddressWhileItIsInReach)
{
    LineCamera& camera = add();
    camera.camera.ipConfigCurrent = 5;
    const base::IpSettings far{"10.0.0.5"_ip, "255.0.0.0"_ip, {}};
    const auto result = carryOut(toStatic(camera, far));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_TRUE(isStatic(camera, far));
    EXPECT_EQ(runs.back()->steps.front(), RZ_STEP_STORED);
    EXPECT_EQ(runs.back()->steps.back(), RZ_STEP_FORCED);
}

TEST_F(LineTest, AMoveLastsUntilTheNextRestart)
{
    LineCamera& camera = add();
    const auto before = camera.stored;
    RZ_CC_CHANGE change = toStatic(camera);
    change.stWanted.nParts = RZ_SETTING_ADDRESS;
    EXPECT_EQ(carryOut(change).nError, RZ_OK);
    EXPECT_EQ(camera.camera.ip, Target);
    EXPECT_EQ(camera.stored, before);
    EXPECT_EQ(camera.writes, 0U);
}

TEST_F(LineTest, ACameraWithoutBlocksOfMemoryIsNamedByRegisters)
{
    LineCamera& camera = add();
    camera.canWriteMemory = false;
    const auto result = carryOut(named(order(camera), "sixteen letters"));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_EQ(camera.camera.userDefinedName, "sixteen letters");
}

TEST_F(LineTest, ACameraInUseIsLeftAsItIs)
{
    LineCamera& camera = add();
    camera.privilege = gvcp::Privilege::Control;
    camera.isHeldByOther = true;
    const auto before = camera.camera;
    const auto result = carryOut(toStatic(camera));
    EXPECT_EQ(result.nError, RZ_ERROR_ACCESS_DENIED);
    EXPECT_STREQ(result.szError, "another application holds it");
    EXPECT_EQ(camera.camera, before);
    EXPECT_EQ(result.nSteps, 0U);
}

TEST_F(LineTest, ARefusalNamesRegisterAndStatus)
{
    LineCamera& camera = add();
    camera.writeProtected = gvcp::reg::PersistentIp;
    const auto result = carryOut(toStatic(camera));
    EXPECT_STREQ(result.szError, "writing 0x0000064C: 192.168.1.200 answers write protected (0x8004)");
    EXPECT_EQ(camera.privilege, 0U) << "control is given back";
    EXPECT_EQ(result.stNow.nIp, Target.address.number()) << "it has been forced";
    EXPECT_NE(result.stNow.nStoredIp, Target.address.number());
}

TEST_F(LineTest, WhatACameraCannotDoIsRefusedBeforeAnythingIsSent)
{
    LineCamera& camera = add();
    camera.camera.ipConfigOptions = 4;
    EXPECT_STREQ(carryOut(toMethod(camera, 6)).szError, "it cannot ask a DHCP server for an address");
    EXPECT_STREQ(carryOut(toStatic(camera)).szError, "it cannot store an address");
    EXPECT_EQ(camera.writes, 0U);
}

TEST_F(LineTest, AnotherCameraAtItsAddressGetsNothing)
{
    LineCamera& camera = add();
    LineCamera& other = add();
    other.camera.ip = other.stored = camera.stored;
    // Which of the two gets what is sent to the address is the network's affair: here, the other.
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        other.take(sent);
        if (sent.destination != camera.camera.ip.address)
            camera.take(sent);
    };
    const auto result = carryOut(named(order(camera), "left"));
    EXPECT_EQ(result.nError, RZ_ERROR_OTHER_CAMERA);
    EXPECT_THAT(result.szError, HasSubstr("02:00:00:00:00:02"));
    EXPECT_EQ(other.writes, 0U);
    EXPECT_EQ(other.privilege, 0U);
}

TEST_F(LineTest, TwoCamerasOfOneAddressAreToldApartByForcing)
{
    LineCamera& camera = add();
    LineCamera& other = add();
    other.camera.ip = other.stored = camera.stored;
    const auto result = carryOut(toStatic(camera));
    EXPECT_EQ(result.nError, RZ_OK) << result.szError;
    EXPECT_TRUE(isStatic(camera));
    EXPECT_EQ(other.writes, 0U);
}

TEST_F(LineTest, ManyCamerasTakeHardlyLongerThanOne)
{
    carryOut(toMethod(add(), 6));
    const auto one = network.elapsed();
    runs.clear();
    for (int i = 0; i < 60; ++i) {
        LineCamera& camera = add();
        begin(toMethod(camera, 6));
    }
    serve();
    EXPECT_LT(network.elapsed() - one, 2 * one);
    for (const auto& run : runs)
        EXPECT_EQ(run->change->result().nError, RZ_OK) << run->change->result().szError;
}

TEST_F(LineTest, CamerasAreNotAskedMoreOftenWhereMoreOfThemAreWaitedFor)
{
    std::map<sdk::Clock::duration, int> looks; // By when they were sent.
    network.onSend = [this, &looks, toCameras = network.onSend](const FakeNetwork::Sent& sent) {
        if (sent.command().command == gvcp::Command::Discovery)
            ++looks[sent.time];
        toCameras(sent);
    };
    for (int i = 0; i < 60; ++i) {
        begin(toMethod(add(), 6));
        const auto later = network.now() + 7ms; // Each has questions at moments of its own.
        line.serve(later, [] { return false; });
    }
    serve();
    ASSERT_GT(looks.size(), 8u);
    for (const auto& [time, count] : looks)
        EXPECT_LE(std::distance(looks.lower_bound(time), looks.lower_bound(time + 1s)), 8) << "in a second";
}

/// What is changed in the tests where something goes wrong, and what the camera has at first.
struct Case
{
    const char* name;
    std::uint32_t before;
    std::uint32_t after;
    bool isNamed;
};

class FaultTest : public LineTest, public testing::WithParamInterface<Case>
{
protected:
    LineCamera& addCamera()
    {
        LineCamera& camera = add();
        camera.camera.ipConfigCurrent = GetParam().before;
        if ((GetParam().before & 1) == 0)
            camera.camera.ip = camera.leased;
        return camera;
    }
    static RZ_CC_CHANGE change(const LineCamera& camera)
    {
        const Case& wanted = GetParam();
        RZ_CC_CHANGE result = (wanted.after & 1) != 0 ? toStatic(camera) : toMethod(camera, wanted.after);
        return wanted.isNamed ? named(result, "left") : result;
    }
    static bool isAsWanted(const LineCamera& camera)
    {
        const Case& wanted = GetParam();
        const bool hasName = !wanted.isNamed || camera.camera.userDefinedName == "left";
        if ((wanted.after & 1) != 0)
            return isStatic(camera) && hasName;
        return (camera.camera.ipConfigCurrent & 7) == wanted.after && camera.camera.ip == camera.leased &&
               hasName;
    }

    static void judge(const LineCamera& camera, const RZ_CC_CHANGE_RESULT& result, bool isHeldByUs)
    {
        const RZ_CC_SETTINGS& now = result.stNow;
        EXPECT_TRUE(result.nError != RZ_OK || isAsWanted(camera));
        EXPECT_EQ(result.nError == RZ_OK, *result.szError == '\0');
        const auto& has = camera.camera;
        const auto isKnown = [&now](RZ_SETTING part) { return (now.nParts & part) != 0; };
        EXPECT_TRUE(!isKnown(RZ_SETTING_METHOD) || now.nIpConfig == has.ipConfigCurrent);
        EXPECT_TRUE(!isKnown(RZ_SETTING_ADDRESS) || now.nIp == has.ip.address.number())
            << base::Ipv4(now.nIp).toText() << ", has " << has.ip.address.toText();
        EXPECT_TRUE(!isKnown(RZ_SETTING_STORED) || now.nStoredIp == camera.stored.address.number());
        EXPECT_TRUE(!isKnown(RZ_SETTING_NAME) || now.szUserDefinedName == has.userDefinedName);
        EXPECT_FALSE(isHeldByUs) << "control is not given back";
    }
};

TEST_P(FaultTest, AtEachPacketTheCameraIsAsWantedOrItIsToldWhatItHas)
{
    using Event = LineCamera::Event;
    unsigned packets = 0;
    {
        LineCamera& camera = addCamera();
        ASSERT_EQ(carryOut(change(camera)).nError, RZ_OK);
        packets = camera.packets;
    }
    ASSERT_GT(packets, 3U);
    for (const Event event :
         {Event::CommandLost, Event::AnswerLost, Event::Unplugged, Event::Rebooted, Event::Held})
        for (unsigned at = 1; at <= packets; ++at) {
            SCOPED_TRACE("event " + std::to_string(static_cast<int>(event)) + " at packet " +
                         std::to_string(at));
            runs.clear();
            cameras.clear();
            LineCamera& camera = addCamera();
            camera.event = event;
            camera.eventAt = at;
            const auto result = carryOut(change(camera));
            const bool isThere = event != Event::Unplugged;
            judge(camera, result, isThere && camera.privilege != 0 && !camera.isHeldByOther);
            const bool isLoss = event == Event::CommandLost || event == Event::AnswerLost;
            EXPECT_TRUE(!isLoss || result.nError == RZ_OK) << result.szError;
            if (HasFailure())
                return;
        }
}

TEST_P(FaultTest, WhereThreeOfTenPacketsAreLostEachWayItIsDoneAllTheSame)
{
    std::mt19937 random(20261122);
    unsigned done = 0;
    for (unsigned i = 0; i < 200; ++i) {
        SCOPED_TRACE("run " + std::to_string(i));
        runs.clear();
        cameras.clear();
        LineCamera& camera = addCamera();
        camera.isLost = [&random] { return random() % 10 < 3; };
        const auto result = carryOut(change(camera));
        judge(camera, result, false);
        done += result.nError == RZ_OK ? 1 : 0;
    }
    EXPECT_GE(done, 198U);
}

INSTANTIATE_TEST_SUITE_P(Changes, FaultTest,
                         testing::Values(Case{"StaticToStatic", 5, 5, false},
                                         Case{"DhcpToStatic", 6, 5, true}, Case{"StaticToDhcp", 5, 6, false},
                                         Case{"Name", 5, 5, true}),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
