// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/LastingAddress.h"

#include "gvcp/Registers.h"
#include "sdk/network/CameraError.h"
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

constexpr base::MacAddress Mac = FakeCamera::Mac;
constexpr std::uint32_t All = Persistent | Dhcp | LinkLocal;

/// A camera that has just been forced to FakeCamera::Ip and has another address stored.
class LastingAddressTest : public testing::Test
{
protected:
    LastingAddressTest()
    {
        camera.words[reg::SupportedIpConfig] = All;
        camera.words[reg::CurrentIpConfig] = Persistent | LinkLocal;
        camera.storeAddress(before);
        forced.keep(Mac, wanted, {});
    }

    /// With what the camera said of itself before it was forced.
    void makeLast(std::uint32_t options = All, std::uint32_t configuration = Persistent | LinkLocal)
    {
        makeAddressLast(camera.connect(), Mac, wanted, options, configuration, forced);
    }

    base::IpSettings stored() { return camera.storedAddress(); }

    const base::IpSettings wanted{FakeCamera::Ip, "255.255.255.0"_ip, "192.168.1.254"_ip};
    const base::IpSettings before{"10.0.0.9"_ip, "255.0.0.0"_ip, "10.0.0.1"_ip};
    FakeCamera camera;
    ForcedAddresses forced;
};

} // namespace

TEST_F(LastingAddressTest, IsStoredByACameraThatStartsWithAStoredOne)
{
    makeLast();
    EXPECT_EQ(stored(), wanted);
    EXPECT_FALSE(forced.isWaiting(Mac));
    EXPECT_EQ(camera.words[reg::ControlChannelPrivilege], 0u) << "the camera is free again";
    EXPECT_THAT(camera.log(), Contains("WRITEREG 00000A00=00000001")) << "it took control for that";
}

TEST_F(LastingAddressTest, IsNotWrittenAgainWhenItIsStoredAlready)
{
    makeLast();
    const auto commands = static_cast<std::ptrdiff_t>(camera.log().size());
    makeLast();
    const auto log = camera.log();
    EXPECT_THAT(std::vector(log.begin() + commands, log.end()), Each(StartsWith("READ")));
}

TEST_F(LastingAddressTest, WritesOnlyWhatIsWrong)
{
    camera.words[reg::PersistentIp] = wanted.address.number();
    makeLast();
    EXPECT_EQ(stored(), wanted);
    EXPECT_THAT(camera.log(), Not(Contains(StartsWith("WRITEREG 0000064C"))));
}

TEST_F(LastingAddressTest, IsStoredForTheNetworkInterfaceThatWasHeard)
{
    camera.words[reg::MacLow] = 0xFF;
    camera.words[reg::InterfaceCount] = 2;
    camera.words[0x0680] = 0x0200;
    camera.words[0x0684] = 0x00000001;
    camera.words[0x0688] = All;
    camera.words[0x068C] = Persistent | LinkLocal;
    camera.storeAddress({}, 0x06CC);
    camera.words[reg::CurrentIpConfig] = Dhcp | LinkLocal; // The first interface's.
    makeLast();
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(camera.storedAddress(0x06CC), wanted);
}

TEST_F(LastingAddressTest, IsOnlyKeptForACameraThatStartsOtherwise)
{
    camera.words[reg::CurrentIpConfig] = Dhcp | LinkLocal;
    makeLast(); // What the camera says now counts.
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(forced.of(Mac), wanted);
    EXPECT_FALSE(forced.isWaiting(Mac));
    EXPECT_THAT(camera.log(), Each(StartsWith("READ")));
}

TEST_F(LastingAddressTest, IsForgottenForACameraThatCannotStoreAny)
{
    camera.words[reg::SupportedIpConfig] = Dhcp | LinkLocal;
    makeLast();
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(forced.of(Mac), std::nullopt);
    EXPECT_FALSE(forced.isWaiting(Mac));
}

TEST_F(LastingAddressTest, IsStoredByACameraThatTakesFiveSecondsToAnswerAtItsNewAddress)
{
    camera.onCommand = [this](const auto&) { return camera.network.elapsed() < 5s; };
    makeLast();
    EXPECT_EQ(stored(), wanted);
}

TEST_F(LastingAddressTest, WaitsOnACameraThatIsNotReachedIfItOughtToBeStored)
{
    camera.onCommand = [](const auto&) { return true; };
    makeLast();
    EXPECT_TRUE(forced.isWaiting(Mac));
    EXPECT_LE(camera.network.elapsed(), 6500ms);
    EXPECT_EQ(forced.of(Mac), wanted);
}

TEST_F(LastingAddressTest, DoesNotWaitOnACameraThatIsNotReachedAndStartsOtherwise)
{
    camera.onCommand = [](const auto&) { return true; };
    makeLast(All, Dhcp | LinkLocal);
    EXPECT_FALSE(forced.isWaiting(Mac));
    EXPECT_LE(camera.network.elapsed(), 1s) << "and is not waited for";
    EXPECT_EQ(forced.of(Mac), wanted) << "for when it shall start with a stored address";
    makeLast(LinkLocal, Persistent);
    EXPECT_EQ(forced.of(Mac), std::nullopt) << "it could not store any";
    EXPECT_FALSE(forced.isWaiting(Mac));
}

TEST_F(LastingAddressTest, WaitsWhenTheCameraRefusesToStoreIt)
{
    camera.writeProtected = reg::PersistentGateway;
    makeLast();
    EXPECT_TRUE(forced.isWaiting(Mac));
    EXPECT_EQ(camera.words[reg::ControlChannelPrivilege], 0u) << "the camera is free again";
}

TEST_F(LastingAddressTest, IsNotStoredInAnotherCameraThatAnswersThere)
{
    camera.onCommand = [this](const gvcp::CommandPacket& command) {
        if (command.command == gvcp::Command::WriteRegister)
            camera.becomeAnother(); // As soon as control is taken.
        return false;
    };
    makeLast();
    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(forced.isWaiting(Mac));
    EXPECT_EQ(camera.words[reg::ControlChannelPrivilege], 0u);
}

class WaitingAddressTest : public LastingAddressTest
{
protected:
    WaitingAddressTest() { forced.setWaiting(Mac, true); }

    /// The error's text; empty when all went well.
    std::string store()
    {
        Session session(camera.connect(), FakeCamera::Ip, Mac);
        try {
            storeWaitingAddress(session, forced);
        } catch (const CameraError& error) {
            EXPECT_EQ(error.code(), RZ_ERROR_NOT_STORED);
            return error.what();
        }
        return {};
    }
};

TEST_F(WaitingAddressTest, IsStoredOnceTheCameraIsOpen)
{
    EXPECT_EQ(store(), "");
    EXPECT_EQ(stored(), wanted);
    EXPECT_FALSE(forced.isWaiting(Mac));
}

TEST_F(WaitingAddressTest, IsAllThatIsStored)
{
    forced.setWaiting(Mac, false);
    EXPECT_EQ(store(), "");
    EXPECT_EQ(stored(), before);
}

TEST_F(WaitingAddressTest, IsNotStoredInACameraThatIsElsewhereByNow)
{
    forced.keep(Mac, {FakeCamera::Ip.plus(1), "255.255.255.0"_ip, {}}, {});
    forced.setWaiting(Mac, true);
    EXPECT_EQ(store(), "");
    EXPECT_EQ(stored(), before);
    EXPECT_FALSE(forced.isWaiting(Mac));
}

TEST_F(WaitingAddressTest, SaysWhyItCouldNotBeStoredAndWaitsOn)
{
    camera.writeProtected = reg::PersistentIp;
    EXPECT_EQ(store(),
              "its address could not be stored (writing 0x0000064C: 192.168.1.20 answers write protected "
              "(0x8004))");
    EXPECT_TRUE(forced.isWaiting(Mac));
    EXPECT_EQ(stored(), before);
}

TEST_F(WaitingAddressTest, SaysWhenItIsStoredInPart)
{
    camera.writeProtected = reg::PersistentGateway;
    EXPECT_THAT(store(),
                testing::HasSubstr("it may have stored some of the old address and some of the new"));
    camera.writeProtected = 1;
    camera.onCommand = [](const gvcp::CommandPacket& command) {
        return base::readU32(command.payload, 0) == reg::PersistentGateway &&
               command.command == gvcp::Command::WriteRegister; // It may have heard it, who knows.
    };
    EXPECT_THAT(store(),
                testing::HasSubstr("it may have stored some of the old address and some of the new"));
}

TEST(ForcedAddressesTest, KeepsTheLatestOfEachCamera)
{
    ForcedAddresses forced;
    const base::MacAddress other{{0x02, 0, 0, 0, 0, 2}};
    const base::IpSettings earlier{"10.0.0.1"_ip, "10.0.0.2"_ip, "10.0.0.3"_ip};
    const base::IpSettings others{"10.0.0.4"_ip, "10.0.0.5"_ip, "10.0.0.6"_ip};
    const base::IpSettings latest{"10.0.0.7"_ip, "10.0.0.8"_ip, "10.0.0.9"_ip};
    forced.keep(Mac, earlier, {});
    forced.keep(other, others, {});
    forced.keep(Mac, latest, {});
    EXPECT_EQ(forced.of(Mac), latest);
    forced.forget(Mac);
    EXPECT_EQ(forced.of(Mac), std::nullopt);
    EXPECT_EQ(forced.of(other), others);
}

TEST(ForcedAddressesTest, KnowsHowLatelyACameraWasForced)
{
    ForcedAddresses forced;
    const Clock::time_point now{1h};
    EXPECT_FALSE(forced.wasJustForced(Mac, now));
    forced.keep(Mac, {}, now);
    EXPECT_TRUE(forced.wasJustForced(Mac, now + 9s));
    EXPECT_FALSE(forced.wasJustForced(Mac, now + 11s));
}
