// SPDX-License-Identifier: Apache-2.0
#include "sdk/camera/ControlChannel.h"

#include "gvcp/Memory.h"
#include "gvcp/PendingAck.h"
#include "sdk/network/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::Status;
using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;
using testing::SizeIs;

namespace {

constexpr std::uint32_t Register = 0xA000;

class ControlChannelTest : public testing::Test
{
protected:
    ControlChannelTest() { camera.words[Register] = 0x12345678; }

    /// How the command fails; fails the test when it does not.
    template <typename Command>
    CameraError errorOf(Command command)
    {
        try {
            command();
        } catch (const CameraError& error) {
            return error;
        }
        ADD_FAILURE() << "the command succeeded";
        return {RZ_OK, ""};
    }

    CameraError readingError()
    {
        return errorOf([this] { channel.readRegister(Register); });
    }

    /// The first `times` commands are answered with this status.
    void refuse(Status status, int times = 1)
    {
        camera.onCommand = [=, this, left = times](const auto& command) mutable {
            if (left-- <= 0)
                return false;
            camera.answer(command, status);
            return true;
        };
    }

    void pend(const gvcp::CommandPacket& command, std::chrono::milliseconds time)
    {
        camera.network.deliver(1ms, 0, FakeCamera::Ip,
                               gvcp::encodeAcknowledge(gvcp::PendingCommand, Status::Success, command.id,
                                                       gvcp::encodePendingAck(time)));
    }

    const std::vector<FakeNetwork::Sent>& sent() const { return camera.network.sent(); }

    FakeCamera camera;
    ControlChannel channel{camera.connect(), FakeCamera::Ip};
};

} // namespace

TEST_F(ControlChannelTest, ReadsAndWritesRegisters)
{
    EXPECT_EQ(channel.readRegister(Register), 0x12345678u);
    channel.writeRegister(Register, 0xCAFE);
    EXPECT_EQ(camera.words[Register], 0xCAFEu);
    EXPECT_THAT(camera.log(), ElementsAre("READREG 0000A000", "WRITEREG 0000A000=0000CAFE"));
}

TEST_F(ControlChannelTest, ReadsAndWritesMemory)
{
    camera.setBytes(0xB000, "one two ");
    base::Bytes bytes(8);
    channel.readMemory(0xB000, bytes);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "one two ");
    channel.writeMemory(0xB004, base::Bytes{'s', 'i', 'x', '!'});
    EXPECT_EQ(camera.bytes(0xB000, 8), "one six!");
}

TEST_F(ControlChannelTest, SendsUnicastFromTheAddressInTheCamerasSubnetAndAsksForAcknowledgement)
{
    channel.readRegister(Register);
    EXPECT_EQ(sent().at(0).destination, FakeCamera::Ip);
    EXPECT_EQ(sent().at(0).source, FakeCamera::Host);
    EXPECT_EQ(sent().at(0).command().flags, gvcp::FlagAcknowledge);
}

TEST_F(ControlChannelTest, SendsAgainWithTheSameIdUntilAnswered)
{
    int received = 0;
    camera.onCommand = [&](const auto&) { return ++received < 4; };
    EXPECT_EQ(channel.readRegister(Register), 0x12345678u);
    ASSERT_THAT(sent(), SizeIs(4));
    for (const auto& each : sent())
        EXPECT_EQ(each.bytes, sent()[0].bytes);
    for (std::size_t i = 1; i < sent().size(); ++i)
        EXPECT_THAT(sent()[i].time - sent()[i - 1].time, AllOf(Ge(200ms), Le(500ms)));
}

TEST_F(ControlChannelTest, GivesUpOnAnAbsentCameraWithinTwoSeconds)
{
    camera.onCommand = [](const auto&) { return true; };
    const auto error = readingError();
    EXPECT_EQ(error.code(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(error.what(), AllOf(HasSubstr("0x0000A000"), HasSubstr("192.168.1.20")));
    EXPECT_THAT(camera.network.elapsed(), Le(2s));
    EXPECT_THAT(sent(), SizeIs(ControlChannel::Tries));
}

TEST_F(ControlChannelTest, NeverUsesTheIdZeroAndStartsAgainAtOne)
{
    camera.network.keepsSent = false;
    std::vector<unsigned> uses(0x10000);
    camera.onCommand = [&](const gvcp::CommandPacket& command) {
        ++uses[command.id];
        return false;
    };
    for (int i = 0; i < 0xFFFF + 10; ++i)
        channel.readRegister(Register);
    EXPECT_EQ(uses[0], 0u);
    EXPECT_GE(uses[1], 1u);
    EXPECT_GE(uses[0xFFFF], 1u);
}

TEST_F(ControlChannelTest, DropsAnswersThatAreNotToThisCommandAndNeverWaitsLongerForThem)
{
    const auto value = gvcp::encodeWords({0xBAD});
    camera.onCommand = [&](const gvcp::CommandPacket& command) {
        const auto wrongId = static_cast<std::uint16_t>(command.id - 1);
        auto& network = camera.network;
        for (auto delay = 0ms; delay < 3s; delay += 10ms) {
            network.deliver(delay, 0, FakeCamera::Ip, registerAnswer(wrongId, 0xBAD));
            network.deliver(delay, 0, "192.168.1.99"_ip, registerAnswer(command.id, 0xBAD));
            network.deliver(
                delay, 0, FakeCamera::Ip,
                gvcp::encodeAcknowledge(gvcp::Command::ReadMemory, Status::Success, command.id, value));
            network.deliver(delay, 0, FakeCamera::Ip, base::Bytes{0, 0, 0, 0x81});
            network.deliver(
                delay, 0, FakeCamera::Ip,
                gvcp::encodeAcknowledge(command.command, Status::Success, command.id, base::Bytes{1, 2}));
        }
        return true;
    };
    EXPECT_EQ(readingError().code(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(camera.network.elapsed(), Le(2s));
}

TEST_F(ControlChannelTest, IsNotConfusedByALateAnswerToThePreviousCommand)
{
    bool isFirst = true;
    camera.onCommand = [&](const gvcp::CommandPacket& command) {
        if (std::exchange(isFirst, false))
            for (const auto delay : {1ms, 2ms, 300ms}) // once in time, twice more later
                camera.network.deliver(delay, 0, FakeCamera::Ip, registerAnswer(command.id, 1));
        else
            camera.network.deliver(5ms, 0, FakeCamera::Ip, registerAnswer(command.id, 2));
        return true;
    };
    EXPECT_EQ(channel.readRegister(Register), 1u);
    EXPECT_EQ(channel.readRegister(Register), 2u);
}

TEST_F(ControlChannelTest, WaitsLongerAndDoesNotSendAgainWhenTheCameraAsksForTime)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        pend(command, 3000ms);
        camera.network.deliver(2900ms, 0, FakeCamera::Ip, registerAnswer(command.id, 7));
        return true;
    };
    EXPECT_EQ(channel.readRegister(Register), 7u);
    EXPECT_THAT(sent(), SizeIs(1));
}

TEST_F(ControlChannelTest, WaitsForNoCameraLongerThanTenSecondsAltogether)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        pend(command, 65535ms);
        return true;
    };
    EXPECT_EQ(readingError().code(), RZ_ERROR_NO_ANSWER);
    EXPECT_THAT(camera.network.elapsed(), AllOf(Ge(5s), Le(12s)));
    EXPECT_THAT(sent(), SizeIs(1));
}

TEST_F(ControlChannelTest, IgnoresTheTimeThatSomebodyElseAsksFor)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        camera.network.deliver(1ms, 0, "192.168.1.99"_ip,
                               gvcp::encodeAcknowledge(gvcp::PendingCommand, Status::Success, command.id,
                                                       gvcp::encodePendingAck(60000ms)));
        camera.network.deliver(1ms, 0, FakeCamera::Ip,
                               gvcp::encodeAcknowledge(gvcp::PendingCommand, Status::Success,
                                                       static_cast<std::uint16_t>(command.id + 1),
                                                       gvcp::encodePendingAck(60000ms)));
        return true;
    };
    readingError();
    EXPECT_THAT(camera.network.elapsed(), Le(2s));
}

TEST_F(ControlChannelTest, ABusyCameraIsAskedAgainALittleLaterWithANewId)
{
    refuse(Status::Busy, 2);
    EXPECT_EQ(channel.readRegister(Register), 0x12345678u);
    ASSERT_THAT(sent(), SizeIs(3));
    EXPECT_NE(sent()[0].command().id, sent()[1].command().id);
    EXPECT_THAT(sent()[1].time - sent()[0].time, Ge(100ms));
}

TEST_F(ControlChannelTest, ACameraThatIsAlwaysBusyIsLeftAloneInTheEnd)
{
    refuse(Status::Busy, 1000);
    EXPECT_EQ(readingError().code(), RZ_ERROR_REFUSED);
    EXPECT_THAT(camera.network.elapsed(), Le(2s));
}

TEST_F(ControlChannelTest, OneComplaintAboutAlignmentIsOverlookedTwoAreNot)
{
    refuse(Status::BadAlignment);
    EXPECT_EQ(channel.readRegister(Register), 0x12345678u);
    refuse(Status::BadAlignment, 2);
    EXPECT_EQ(readingError().status(), Status::BadAlignment);
}

TEST_F(ControlChannelTest, TellsWhatTheCameraAnsweredAndWhere)
{
    struct Row
    {
        Status status;
        RZ_ERROR code;
        const char* text;
    };
    const Row rows[] = {
        {Status::AccessDenied, RZ_ERROR_ACCESS_DENIED, "access denied (0x8006)"},
        {Status::InvalidAddress, RZ_ERROR_REFUSED, "invalid address (0x8003)"},
        {Status::NotImplemented, RZ_ERROR_REFUSED, "not implemented (0x8001)"},
        {Status::WriteProtect, RZ_ERROR_REFUSED, "write protected (0x8004)"},
        {Status{0x8ABC}, RZ_ERROR_REFUSED, "error (0x8ABC)"},
    };
    for (const Row& row : rows) {
        refuse(row.status);
        const auto error = errorOf([this] { channel.writeRegister(Register, 1); });
        EXPECT_EQ(error.code(), row.code) << row.text;
        EXPECT_EQ(error.status(), row.status) << row.text;
        EXPECT_THAT(error.what(),
                    AllOf(HasSubstr(row.text), HasSubstr("writing 0x0000A000"), HasSubstr("192.168.1.20")));
    }
    EXPECT_THAT(sent(), SizeIs(std::size(rows))) << "a definite answer is not asked for twice";
}

TEST_F(ControlChannelTest, ARegisterThatTheCameraDoesNotHaveIsNotFound)
{
    EXPECT_EQ(channel.findRegister(Register), 0x12345678u);
    EXPECT_EQ(channel.findRegister(0xC000), std::nullopt);
    camera.onCommand = [](const auto&) { return true; };
    EXPECT_EQ(errorOf([this] { channel.findRegister(Register); }).code(), RZ_ERROR_NO_ANSWER);
}

TEST_F(ControlChannelTest, TakesMemoryWithoutItsAddressToo)
{
    camera.onCommand = [this](const auto& command) {
        camera.answer(command, Status::Success, {1, 2, 3, 4});
        return true;
    };
    base::Bytes bytes(4);
    channel.readMemory(0xB000, bytes);
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4));
}

TEST_F(ControlChannelTest, TakesWhatItAskedForOutOfALongerAnswer)
{
    base::Bytes payload;
    camera.onCommand = [&](const auto& command) {
        camera.answer(command, Status::Success, payload);
        return true;
    };
    payload = gvcp::encodeMemoryBlock({0xB000, base::Bytes{1, 2, 3, 4, 0xEE, 0xEE, 0xEE}});
    base::Bytes bytes(4);
    channel.readMemory(0xB000, bytes);
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4));
    payload = {0x12, 0x34, 0x56, 0x78, 0xEE};
    EXPECT_EQ(channel.readRegister(Register), 0x12345678u);
    payload = {0, 0, 0, 1, 0xEE, 0xEE, 0xEE, 0xEE};
    EXPECT_NO_THROW(channel.writeRegister(Register, 1));
}

TEST_F(ControlChannelTest, DoesNotTakeMemoryOfAnotherAddressOrSize)
{
    const base::Bytes rows[] = {
        gvcp::encodeMemoryBlock({0xB004, base::Bytes{1, 2, 3, 4}}),
        gvcp::encodeMemoryBlock({0xB000, base::Bytes{1, 2}}),
        {},
    };
    for (const auto& row : rows) {
        camera.onCommand = [&](const auto& command) {
            camera.answer(command, Status::Success, row);
            return true;
        };
        base::Bytes bytes(4);
        EXPECT_EQ(errorOf([&] { channel.readMemory(0xB000, bytes); }).code(), RZ_ERROR_NO_ANSWER)
            << testing::PrintToString(row);
    }
}

TEST_F(ControlChannelTest, DoesNothingAnyMoreOnceItIsClosed)
{
    EXPECT_NE(channel.close(), nullptr);
    EXPECT_EQ(readingError().code(), RZ_ERROR_NOT_OPEN);
    EXPECT_EQ(channel.close(), nullptr);
    EXPECT_THAT(sent(), SizeIs(0));
    EXPECT_FALSE(channel.isOpen());
}

TEST_F(ControlChannelTest, FailsForTheReasonThatItWasClosedFor)
{
    EXPECT_NO_THROW(channel.requireOpen());
    channel.close(CameraError(RZ_ERROR_OTHER_CAMERA, "another one answers"));
    channel.close(CameraError(RZ_ERROR_REFUSED, "too late"));
    EXPECT_EQ(readingError().code(), RZ_ERROR_OTHER_CAMERA);
    EXPECT_THAT(readingError().what(), testing::HasSubstr("another one answers"));
    EXPECT_EQ(errorOf([this] { channel.requireOpen(); }).code(), RZ_ERROR_OTHER_CAMERA);
}

TEST_F(ControlChannelTest, WaitsLessInPartingFromACameraThatHasJustBeenSilent)
{
    EXPECT_EQ(channel.triesForFarewell(), ControlChannel::FewTries);
    camera.onCommand = [](const auto&) { return true; };
    EXPECT_EQ(readingError().code(), RZ_ERROR_NO_ANSWER);
    EXPECT_EQ(channel.triesForFarewell(), 1);
    camera.onCommand = [](const auto&) { return false; };
    channel.readRegister(Register);
    EXPECT_EQ(channel.triesForFarewell(), ControlChannel::FewTries);
}

TEST_F(ControlChannelTest, FailsAtOnceWhenTheHostCannotSend)
{
    camera.network.brokenAdapters = {0};
    EXPECT_EQ(readingError().code(), RZ_ERROR_NETWORK);
    EXPECT_EQ(camera.network.elapsed(), 0ms);
    EXPECT_EQ(errorOf([] {
                  ControlChannel(std::make_unique<FakeNetwork>(std::vector<Adapter>()), FakeCamera::Ip);
              }).code(),
              RZ_ERROR_NETWORK);
}
