// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/Session.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::reg::ControlChannelPrivilege;
using testing::Contains;
using testing::Not;
using testing::StartsWith;

namespace {

/// The heartbeat runs in true time beside the test: what the test looks at, it looks at when the session is
/// closed. Or the test beats itself.
class SessionTest : public testing::Test
{
protected:
    Session::StartHeartbeat byTheTest()
    {
        return [this](std::chrono::milliseconds time, std::function<bool()> function) {
            interval = time;
            beat = std::move(function);
            return nullptr;
        };
    }

    FakeCamera camera;
    std::chrono::milliseconds interval{};
    std::function<bool()> beat;
};

} // namespace

TEST_F(SessionTest, HoldsTheCameraUntilItEnds)
{
    {
        Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
        EXPECT_TRUE(session.isOpen());
        EXPECT_EQ(session.channel().readRegister(ControlChannelPrivilege), 1u);
    }
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
}

TEST_F(SessionTest, GivesTheCameraBackWhenItIsClosedAndIsOfNoUseAfterwards)
{
    Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    session.close();
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
    const auto commands = camera.log().size();
    EXPECT_THROW(session.channel().readRegister(ControlChannelPrivilege), CameraError);
    session.close();
    EXPECT_EQ(camera.log().size(), commands);
}

TEST_F(SessionTest, GivesTheCameraBackWhenOpeningFailsHalfWay)
{
    camera.onCommand = [](const gvcp::CommandPacket& command) {
        return base::readU32(command.payload, 0) == gvcp::reg::HeartbeatTimeout; // Its answer is lost.
    };
    EXPECT_THROW(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac), CameraError);
    EXPECT_THAT(camera.log(), Contains("WRITEREG 00000A00=00000001"));
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
}

TEST_F(SessionTest, OpensACameraThatDoesNotTellItsTimeOut)
{
    camera.words.erase(gvcp::reg::HeartbeatTimeout);
    EXPECT_TRUE(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac).isOpen());
}

TEST_F(SessionTest, ShowsTheCameraSignsOfLifeWithoutBeingUsed)
{
    camera.words[gvcp::reg::HeartbeatTimeout] = 800;
    const Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac, ControlChannel::Tries,
                          byTheTest());
    EXPECT_EQ(interval, 200ms);
    const auto atStart = camera.log().size();
    EXPECT_TRUE(beat());
    EXPECT_GT(camera.log().size(), atStart);
    EXPECT_TRUE(beat()) << "time and again";
}

TEST_F(SessionTest, BeatsNoMoreWhenControlIsLost)
{
    const Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac, ControlChannel::Tries,
                          byTheTest());
    camera.onCommand = [](const auto&) { return true; };
    EXPECT_TRUE(beat()) << "a camera that is silent may be back soon";
    camera.onCommand = [](const auto&) { return false; };
    camera.words[ControlChannelPrivilege] = 0;
    EXPECT_FALSE(beat());
}

TEST_F(SessionTest, ClosedByTwoThreadsAtOnceIsClosedForBothWhenTheyReturn)
{
    Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    std::atomic<int> closed = 0;
    const auto close = [&] {
        session.close();
        if (!session.isOpen() && camera.words.at(ControlChannelPrivilege) == 0)
            ++closed;
    };
    std::thread other(close);
    close();
    other.join();
    EXPECT_EQ(closed, 2);
}

TEST_F(SessionTest, IsNotOpenedOnAnotherCameraAtThatAddressWhichGetsControlBackAtOnce)
{
    camera.becomeAnother();
    std::string text;
    try {
        Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    } catch (const CameraError& error) {
        EXPECT_EQ(error.code(), RZ_ERROR_OTHER_CAMERA);
        text = error.what();
    }
    EXPECT_EQ(text,
              "at its address 192.168.1.20 the camera 02:00:00:00:00:02 answers and not 02:00:00:00:00:01");
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
    EXPECT_THAT(camera.log(),
                testing::ElementsAre("WRITEREG 00000A00=00000001", "READREG 00000A00", "READMEM 00000008+8",
                                     "READREG 00000600", "WRITEREG 00000A00=00000000"));
}

TEST_F(SessionTest, EndsWhenAnotherCameraAnswersAtItsAddress)
{
    Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    session.requireSameCamera();
    camera.becomeAnother();
    EXPECT_THROW(session.requireSameCamera(), CameraError);
    EXPECT_FALSE(session.isOpen());
    try {
        session.channel().readRegister(ControlChannelPrivilege);
        ADD_FAILURE() << "the channel still works";
    } catch (const CameraError& error) {
        EXPECT_EQ(error.code(), RZ_ERROR_OTHER_CAMERA);
        EXPECT_THAT(error.what(), testing::HasSubstr("02:00:00:00:00:02"));
    }
}

TEST_F(SessionTest, FindsOutByItselfThatAnotherCameraAnswersAtItsAddress)
{
    const Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac, ControlChannel::Tries,
                          byTheTest());
    camera.becomeAnother();
    EXPECT_FALSE(beat());
    EXPECT_FALSE(session.isOpen());
}

TEST_F(SessionTest, KnowsTheNetworkInterfaceOfTheCameraByItsMac)
{
    camera.words[gvcp::reg::MacLow] = 0xFF;
    camera.words[gvcp::reg::InterfaceCount] = 3;
    camera.words[0x0680] = 0x0200;
    camera.words[0x0684] = 0xFE;
    camera.words[0x0700] = 0x0200;
    camera.words[0x0704] = 0x00000001;
    EXPECT_EQ(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac).interface(), 2u);
    camera.words[gvcp::reg::InterfaceCount] = 2;
    EXPECT_THROW(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac), CameraError)
        << "it has only two of them";
    camera.words[gvcp::reg::InterfaceCount] = 0xFFFFFFFF;
    EXPECT_EQ(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac).interface(), 2u);
}

TEST_F(SessionTest, LetsACameraAskForTimeWhichCanAndPutsThatBack)
{
    camera.words[gvcp::reg::GvcpCapability] |= 1u << 5;
    camera.words[0x0954] = 0x80000004;
    {
        const Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    }
    const auto log = camera.log();
    EXPECT_THAT(log, Contains("WRITEREG 00000954=80000006"));
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[log.size() - 2], "WRITEREG 00000954=80000004") << "while it is still in control";
    EXPECT_EQ(log[log.size() - 1], "WRITEREG 00000A00=00000000");
}

TEST_F(SessionTest, LeavesACameraAloneThatCannotAskForTimeOrDoesSoAlready)
{
    camera.words[0x0954] = 0;
    {
        const Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    }
    camera.words[gvcp::reg::GvcpCapability] |= 1u << 5;
    camera.words[0x0954] = 2;
    {
        const Session session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac);
    }
    EXPECT_THAT(camera.log(), Not(Contains(StartsWith("WRITEREG 00000954"))));
}

TEST_F(SessionTest, OpensACameraThatDoesNotLetItBeSwitchedOnToAskForTime)
{
    camera.words[gvcp::reg::GvcpCapability] |= 1u << 5;
    camera.words[0x0954] = 0;
    camera.writeProtected = 0x0954;
    EXPECT_TRUE(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac).isOpen());
}

TEST_F(SessionTest, WaitsForACameraThatIsChangingItsAddressAsLongAsItMayTake)
{
    camera.onCommand = [this](const auto&) { return camera.network.elapsed() < 5500ms; };
    EXPECT_THROW(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac), CameraError);
    EXPECT_TRUE(
        Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac, ControlChannel::ManyTries).isOpen());
}

TEST_F(SessionTest, WaitsUntilASlowCameraIsSwitchedOnToAskForTime)
{
    camera.words[gvcp::reg::GvcpCapability] |= 1u << 5;
    camera.words[0x0954] = 0;
    std::optional<Clock::duration> first;
    camera.onCommand = [&](const gvcp::CommandPacket& command) {
        const bool isSwitch =
            command.command == gvcp::Command::WriteRegister && base::readU32(command.payload, 0) == 0x0954;
        if (isSwitch && !first)
            first = camera.network.elapsed();
        return isSwitch && camera.network.elapsed() - *first < 3s;
    };
    EXPECT_TRUE(Session(camera.connect(), FakeCamera::Ip, FakeCamera::Mac).isOpen());
}
