// SPDX-License-Identifier: Apache-2.0
#include "sdk/LastingAddress.h"

#include "gvcp/Registers.h"
#include "sdk/CameraError.h"
#include "tests/sdk/FakeCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sdk;
using namespace std::chrono_literals;
using gvcp::IpConfig::Dhcp;
using gvcp::IpConfig::LinkLocal;
using gvcp::IpConfig::Persistent;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;
namespace reg = gvcp::reg;

namespace {

const gvcp::MacAddress Mac{{0x02, 0, 0, 0, 0, 1}};
constexpr std::uint32_t All = Persistent | Dhcp | LinkLocal;

/// A camera that has just been forced to FakeCamera::Ip and has another address stored.
class LastingAddressTest : public testing::Test
{
protected:
    LastingAddressTest()
    {
        camera.words[reg::SupportedIpConfig] = All;
        camera.words[reg::CurrentIpConfig] = Persistent | LinkLocal;
        camera.words[reg::PersistentIp] = before[0];
        camera.words[reg::PersistentSubnetMask] = before[1];
        camera.words[reg::PersistentGateway] = before[2];
    }

    /// With what the camera said of itself before it was forced.
    RZ_ERROR makeLast(std::uint32_t options = All, std::uint32_t configuration = Persistent | LinkLocal)
    {
        return makeAddressLast(camera.connect(), wanted, options, configuration, forced);
    }

    std::vector<std::uint32_t> stored()
    {
        return {camera.words[reg::PersistentIp], camera.words[reg::PersistentSubnetMask],
                camera.words[reg::PersistentGateway]};
    }

    FakeCamera camera;
    ForcedAddresses forced;
    const gvcp::ForceIp wanted{Mac, FakeCamera::Ip, 0xFFFFFF00, 0xC0A801FE};
    const std::vector<std::uint32_t> wantedWords{wanted.ip, wanted.subnetMask, wanted.gateway};
    const std::vector<std::uint32_t> before{0x0A000009, 0xFF000000, 0x0A000001};
};

} // namespace

TEST_F(LastingAddressTest, IsStoredByACameraThatStartsWithAStoredOne)
{
    EXPECT_EQ(makeLast(), RZ_OK);
    EXPECT_EQ(stored(), wantedWords);
    EXPECT_EQ(camera.words[reg::ControlChannelPrivilege], 0u) << "the camera is free again";
    EXPECT_THAT(camera.log(), Contains("WRITEREG 00000A00=00000001")) << "it took control for that";
}

TEST_F(LastingAddressTest, IsNotWrittenAgainWhenItIsStoredAlready)
{
    ASSERT_EQ(makeLast(), RZ_OK);
    const auto commands = static_cast<std::ptrdiff_t>(camera.log().size());
    EXPECT_EQ(makeLast(), RZ_OK);
    const auto log = camera.log();
    EXPECT_THAT(std::vector(log.begin() + commands, log.end()), Each(StartsWith("READREG")));
}

TEST_F(LastingAddressTest, WritesOnlyWhatIsWrong)
{
    camera.words[reg::PersistentIp] = wanted.ip;
    EXPECT_EQ(makeLast(), RZ_OK);
    EXPECT_EQ(stored(), wantedWords);
    EXPECT_THAT(camera.log(), Not(Contains(StartsWith("WRITEREG 0000064C"))));
}

TEST_F(LastingAddressTest, IsOnlyKeptForACameraThatStartsOtherwise)
{
    camera.words[reg::CurrentIpConfig] = Dhcp | LinkLocal;
    EXPECT_EQ(makeLast(), RZ_OK) << "what the camera says now counts";
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(forced.of(Mac), wanted);
    EXPECT_THAT(camera.log(), Each(StartsWith("READREG")));
}

TEST_F(LastingAddressTest, IsForgottenForACameraThatCannotStoreAny)
{
    forced.keep(wanted);
    camera.words[reg::SupportedIpConfig] = Dhcp | LinkLocal;
    EXPECT_EQ(makeLast(), RZ_OK);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(forced.of(Mac), std::nullopt);
}

TEST_F(LastingAddressTest, IsStoredByACameraThatTakesTwoSecondsToAnswerAtItsNewAddress)
{
    camera.onCommand = [this](const auto&) { return camera.network.elapsed() < 2s; };
    EXPECT_EQ(makeLast(), RZ_OK);
    EXPECT_EQ(stored(), wantedWords);
}

TEST_F(LastingAddressTest, OfACameraThatIsNotReachedIsReportedAsNotStoredIfItShouldBe)
{
    camera.onCommand = [](const auto&) { return true; };
    EXPECT_EQ(makeLast(), RZ_ERROR_NOT_STORED);
    EXPECT_LE(camera.network.elapsed(), 3s);
    EXPECT_EQ(makeLast(All, Dhcp | LinkLocal), RZ_OK) << "nothing to store";
    EXPECT_EQ(forced.of(Mac), wanted) << "for when it shall start with a stored address";
    EXPECT_EQ(makeLast(LinkLocal, Persistent), RZ_OK) << "it could not store any";
    EXPECT_EQ(forced.of(Mac), std::nullopt);
}

TEST_F(LastingAddressTest, ThatTheCameraRefusesToStoreIsReported)
{
    camera.writeProtected = reg::PersistentGateway;
    EXPECT_EQ(makeLast(), RZ_ERROR_NOT_STORED);
    EXPECT_EQ(camera.words[reg::ControlChannelPrivilege], 0u) << "the camera is free again";
}

TEST_F(LastingAddressTest, OfACameraThatAnotherApplicationTakesMeanwhileIsReportedAsNotStored)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        if (command.command != gvcp::Command::WriteRegister)
            return false;
        camera.answer(command, gvcp::Status::AccessDenied);
        return true;
    };
    EXPECT_EQ(makeLast(), RZ_ERROR_NOT_STORED);
}

TEST(ForcedAddressesTest, KeepsTheLatestOfEachCamera)
{
    ForcedAddresses forced;
    const gvcp::MacAddress other{{0x02, 0, 0, 0, 0, 2}};
    forced.keep({Mac, 1, 2, 3});
    forced.keep({other, 4, 5, 6});
    forced.keep({Mac, 7, 8, 9});
    EXPECT_EQ(forced.of(Mac), (gvcp::ForceIp{Mac, 7, 8, 9}));
    forced.forget(Mac);
    EXPECT_EQ(forced.of(Mac), std::nullopt);
    EXPECT_EQ(forced.of(other), (gvcp::ForceIp{other, 4, 5, 6}));
}
