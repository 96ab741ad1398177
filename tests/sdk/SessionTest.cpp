// SPDX-License-Identifier: Apache-2.0
#include "sdk/Session.h"

#include "gvcp/Registers.h"
#include "sdk/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::reg::ControlChannelPrivilege;
using testing::Contains;

namespace {

const gvcp::MacAddress Mac{{0x02, 0, 0, 0, 0, 1}};

/// The heartbeat runs in true time beside the test: what the test looks at, it looks at when the session is
/// closed.
class SessionTest : public testing::Test
{
protected:
    FakeCamera camera;
};

} // namespace

TEST_F(SessionTest, HoldsTheCameraUntilItEnds)
{
    {
        Session session(camera.connect(), FakeCamera::Ip);
        EXPECT_TRUE(session.isOpen());
        EXPECT_EQ(session.channel().readRegister(ControlChannelPrivilege), 1u);
    }
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
}

TEST_F(SessionTest, GivesTheCameraBackWhenItIsClosedAndIsOfNoUseAfterwards)
{
    Session session(camera.connect(), FakeCamera::Ip);
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
        return gvcp::readU32(command.payload, 0) == gvcp::reg::HeartbeatTimeout; // Its answer is lost.
    };
    EXPECT_THROW(Session(camera.connect(), FakeCamera::Ip), CameraError);
    EXPECT_THAT(camera.log(), Contains("WRITEREG 00000A00=00000001"));
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
}

TEST_F(SessionTest, OpensACameraThatDoesNotTellItsTimeOut)
{
    camera.words.erase(gvcp::reg::HeartbeatTimeout);
    EXPECT_TRUE(Session(camera.connect(), FakeCamera::Ip).isOpen());
}

TEST_F(SessionTest, ShowsTheCameraSignsOfLifeWithoutBeingUsed)
{
    camera.words[gvcp::reg::HeartbeatTimeout] = 400;
    std::atomic<int> signs = 0;
    camera.onCommand = [&](const auto&) {
        ++signs;
        return false;
    };
    const Session session(camera.connect(), FakeCamera::Ip);
    const int atStart = signs;
    for (int i = 0; i < 2000 && signs < atStart + 3; ++i)
        std::this_thread::sleep_for(10ms);
    EXPECT_GE(signs, atStart + 3);
}

TEST_F(SessionTest, ClosedByTwoThreadsAtOnceIsClosedForBothWhenTheyReturn)
{
    Session session(camera.connect(), FakeCamera::Ip);
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

TEST_F(SessionTest, RestartsTheCamerasAddressAfterGivingTheCameraBack)
{
    Session session(camera.connect(), FakeCamera::Ip);
    session.closeWithIpRestart(Mac);
    EXPECT_FALSE(session.isOpen());
    const auto log = camera.log();
    ASSERT_GE(log.size(), 3u);
    EXPECT_EQ(log[log.size() - 3], "WRITEREG 00000A00=00000000");
    EXPECT_EQ(log[log.size() - 2], "FORCEIP 0.0.0.0") << "by both broadcasts";
    EXPECT_EQ(log[log.size() - 1], "FORCEIP 0.0.0.0");
    EXPECT_THROW(session.closeWithIpRestart(Mac), CameraError);
}
