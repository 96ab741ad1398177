// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/IpRestart.h"

#include "gvcp/ForceIp.h"
#include "sdk/camera/Session.h"
#include "sdk/network/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::Status;
using testing::SizeIs;

namespace {

const base::MacAddress Mac{{0x02, 0, 0, 0, 0, 1}};

class IpRestartTest : public testing::Test
{
protected:
    void restart() { restartIp(camera.network, Mac, FakeCamera::Ip); }

    void answerWith(Status status, base::Ipv4 source)
    {
        camera.onCommand = [=, this](const gvcp::CommandPacket& command) {
            camera.network.deliver(1ms, 0, source,
                                   gvcp::encodeAcknowledge(command.command, status, command.id));
            return true;
        };
    }

    FakeCamera camera;
};

} // namespace

TEST_F(IpRestartTest, IsForceIpOfNoAddressByBothBroadcasts)
{
    restart();
    const auto& sent = camera.network.sent();
    ASSERT_THAT(sent, SizeIs(2));
    EXPECT_EQ(sent[0].destination, base::LimitedBroadcast);
    EXPECT_EQ(sent[1].destination, "192.168.1.255"_ip);
    for (const auto& each : sent) {
        EXPECT_EQ(gvcp::parseForceIp(each.command().payload), (gvcp::ForceIp{Mac, {}}));
        EXPECT_EQ(each.command().flags, 0x11);
    }
}

TEST_F(IpRestartTest, IsDoneWhenTheCameraAcknowledgesFromWherever)
{
    answerWith(Status::Success, "169.254.1.2"_ip);
    restart();
    EXPECT_LE(camera.network.elapsed(), 10ms);
}

TEST_F(IpRestartTest, IsSentAgainWithTheSameIdToACameraThatIsSilentOrBusyAndThenLetBe)
{
    camera.onCommand = [](const auto&) { return true; };
    restart();
    answerWith(Status::Busy, FakeCamera::Ip);
    restart();
    const auto& sent = camera.network.sent();
    ASSERT_THAT(sent, SizeIs(12));
    EXPECT_EQ(sent[0].bytes, sent[5].bytes);
    EXPECT_LE(camera.network.elapsed(), 2s);
}

TEST_F(IpRestartTest, FailsWhenTheCameraRefuses)
{
    answerWith(Status::AccessDenied, FakeCamera::Ip);
    EXPECT_THROW(restart(), CameraError);
}

TEST_F(IpRestartTest, IsNotRefusedBySomebodyElse)
{
    answerWith(Status::AccessDenied, "192.168.1.99"_ip);
    EXPECT_NO_THROW(restart());
}

TEST_F(IpRestartTest, FailsWhenTheHostCannotSend)
{
    camera.network.brokenAdapters = {0};
    EXPECT_THROW(restart(), CameraError);
}

TEST_F(IpRestartTest, OfAnOpenCameraComesAfterItIsGivenBack)
{
    Session session(camera.connect(), FakeCamera::Ip, Mac);
    closeWithIpRestart(session);
    EXPECT_FALSE(session.isOpen());
    const auto log = camera.log();
    ASSERT_GE(log.size(), 3u);
    EXPECT_EQ(log[log.size() - 3], "WRITEREG 00000A00=00000000");
    EXPECT_EQ(log[log.size() - 2], "FORCEIP 0.0.0.0") << "by both broadcasts";
    EXPECT_EQ(log[log.size() - 1], "FORCEIP 0.0.0.0");
    EXPECT_THROW(closeWithIpRestart(session), CameraError);
}
