// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/ExclusiveControl.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::reg::ControlChannelPrivilege;
using testing::ElementsAre;

namespace {

class ExclusiveControlTest : public testing::Test
{
protected:
    RZ_ERROR takeError()
    {
        try {
            const ExclusiveControl control(channel);
        } catch (const CameraError& error) {
            return error.code();
        }
        return RZ_OK;
    }

    /// Answers the commands that `isMeant` picks with this status.
    template <typename Predicate>
    void refuse(gvcp::Status status, Predicate isMeant)
    {
        camera.onCommand = [=, this](const gvcp::CommandPacket& command) {
            if (!isMeant(command))
                return false;
            camera.answer(command, status);
            return true;
        };
    }

    FakeCamera camera;
    ControlChannel channel{camera.connect(), FakeCamera::Ip};
};

bool isWrite(const gvcp::CommandPacket& command)
{
    return command.command == gvcp::Command::WriteRegister;
}

bool isRead(const gvcp::CommandPacket& command)
{
    return command.command == gvcp::Command::ReadRegister;
}

} // namespace

TEST_F(ExclusiveControlTest, IsTakenReadBackAndGivenBack)
{
    {
        ExclusiveControl control(channel);
        EXPECT_EQ(camera.words[ControlChannelPrivilege], 1u);
        EXPECT_TRUE(control.isHeld());
    }
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
    EXPECT_THAT(camera.log(), ElementsAre("WRITEREG 00000A00=00000001", "READREG 00000A00",
                                          "READREG 00000A00", "WRITEREG 00000A00=00000000"));
}

TEST_F(ExclusiveControlTest, IsRefusedByACameraThatAnotherApplicationHolds)
{
    refuse(gvcp::Status::AccessDenied, isWrite);
    EXPECT_EQ(takeError(), RZ_ERROR_ACCESS_DENIED);
}

TEST_F(ExclusiveControlTest, IsRefusedAsWellWhenThatTakesTheCameraASecondTry)
{
    camera.onCommand = [this, received = 0](const gvcp::CommandPacket& command) mutable {
        if (++received > 1)
            camera.answer(command, gvcp::Status::AccessDenied);
        return true;
    };
    EXPECT_EQ(takeError(), RZ_ERROR_ACCESS_DENIED) << "the camera is there, and another's";
}

TEST_F(ExclusiveControlTest, IsNotBelievedUntilItReadsBack)
{
    refuse(gvcp::Status::Success, isWrite); // says yes and does nothing
    EXPECT_EQ(takeError(), RZ_ERROR_ACCESS_DENIED);
}

TEST_F(ExclusiveControlTest, IsGivenBackWhenReadingItBackFails)
{
    refuse(gvcp::Status::Error, isRead);
    EXPECT_EQ(takeError(), RZ_ERROR_REFUSED);
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
}

TEST_F(ExclusiveControlTest, IsGivenBackWhenOnlyTheAnswersWereLost)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        if (isWrite(command))
            camera.words[ControlChannelPrivilege] = base::readU32(command.payload, 4);
        return true;
    };
    EXPECT_EQ(takeError(), RZ_ERROR_NO_ANSWER);
    EXPECT_EQ(camera.words[ControlChannelPrivilege], 0u);
    EXPECT_LE(camera.network.elapsed(), 2s) << "an absent camera fails fast";
}

TEST_F(ExclusiveControlTest, IsGoneWhenTheCameraSaysSoButNotWhenItIsSilent)
{
    ExclusiveControl control(channel);
    camera.words[ControlChannelPrivilege] = 0;
    EXPECT_FALSE(control.isHeld()) << "dropped";
    refuse(gvcp::Status::AccessDenied, isRead);
    EXPECT_FALSE(control.isHeld()) << "another application has it";
    camera.onCommand = [this, received = 0](const gvcp::CommandPacket& command) mutable {
        if (++received > 1)
            camera.answer(command, gvcp::Status::AccessDenied);
        return true;
    };
    EXPECT_FALSE(control.isHeld()) << "another application has it, and one answer was lost";
    camera.onCommand = [](const auto&) { return true; };
    EXPECT_TRUE(control.isHeld()) << "silent";
}

TEST_F(ExclusiveControlTest, OfACameraThatIsGoneIsNotWaitedForLongWhenItEnds)
{
    {
        const ExclusiveControl control(channel);
        camera.onCommand = [](const auto&) { return true; };
    }
    EXPECT_LE(camera.network.elapsed(), 1s);
}
