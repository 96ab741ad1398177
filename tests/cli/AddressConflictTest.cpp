// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/AddressConflict.h"

#include "cli/cameras/Cameras.h"
#include "cli/session/Failure.h"
#include "device/HearingAdapter.h"
#include "tests/cli/ProgramFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace base::literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr base::Ipv4 Wanted = "192.168.1.6"_ip;
constexpr base::MacAddress Device{{0xAA, 0, 0, 0, 0, 9}};
constexpr base::MacAddress OtherCamera{{0, 0, 0, 0, 0, 2}};

/// The computer's adapters, the first of which hears the camera.
constexpr base::Ipv4 Hearing = "192.168.1.5"_ip;
constexpr base::Ipv4 Unused = "172.16.0.1"_ip;

class AddressConflictTest : public ProgramFixture
{
protected:
    AddressConflictTest()
    {
        camera.m_strMacAddress = "00:00:00:00:00:01";
        camera.m_strIpAddress = "10.0.0.9";
        camera.m_nNetExport = Hearing.number();
        camera.m_vecHostAdapter = {{Hearing.number(), ("255.255.0.0"_ip).number()},
                                   {Unused.number(), ("255.255.255.0"_ip).number()}};
        other.m_strMacAddress = "00:00:00:00:00:02";
        other.m_strModelName = "FC-1";
        other.m_strIpAddress = "192.168.1.7";
    }

    void require(base::Ipv4 address)
    {
        const cli::Camera found(camera);
        cli::requireUnusedAddress({found, {found, cli::Camera(other)}, nullptr}, address, session);
    }

    bool isOutside(base::Ipv4 address) const
    {
        return cli::isOutsideAdapterSubnet(cli::Camera(camera), address);
    }

    /// What is said when the address is refused.
    std::string refusal(base::Ipv4 address)
    {
        try {
            require(address);
        } catch (const cli::Failure& failure) {
            EXPECT_EQ(failure.status(), cli::ExitStatus::Failed);
            return failure.what();
        }
        ADD_FAILURE() << "nothing was refused";
        return {};
    }

    QDevice camera;
    QDevice other;
};

} // namespace

TEST_F(AddressConflictTest, IsSeenWithEveryAdapterOfTheComputer)
{
    for (const base::Ipv4 address : {Hearing, Unused})
        EXPECT_THAT(refusal(address), HasSubstr("an adapter of this computer has it"));
    EXPECT_NO_THROW(require(Wanted));
    EXPECT_EQ(err.str(), "");
}

TEST_F(AddressConflictTest, IsSeenWithACameraOfALookOrOneThatAnsweredBefore)
{
    sdk.listed = {sdk.record({.mac = "00:00:00:00:00:01", .ip = "192.168.1.6", .model = "Itself"}),
                  sdk.record({.mac = "00:00:00:00:00:03", .ip = "192.168.1.8", .model = "FC-2"})};
    EXPECT_THAT(refusal("192.168.1.8"_ip), HasSubstr("the camera FC-2 (00:00:00:00:00:03) has it"));
    EXPECT_THAT(refusal("192.168.1.7"_ip), HasSubstr("the camera FC-1 (00:00:00:00:00:02) has it"));
    EXPECT_NO_THROW(require(Wanted)) << "the address may be the camera's own by now";
    EXPECT_EQ(questions.size(), 1u);
}

TEST_F(AddressConflictTest, IsSeenWithADeviceThatSaysByArpThatItHasTheAddress)
{
    sdk.look = [this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
        const auto adapter = static_cast<unsigned>(HearingAdapterIndex(camera));
        const RZ_CC_ARRIVAL said[] = {{RZ_ARRIVAL_SPEECH, adapter, 0xAA00, 9, Wanted.number()},
                                      {RZ_ARRIVAL_PROBE, adapter, 0xAA00, 9, Wanted.plus(1).number()},
                                      {RZ_ARRIVAL_SPEECH, adapter + 1, 0xAA00, 9, Wanted.plus(2).number()}};
        for (const RZ_CC_ARRIVAL& each : said)
            sink.pOnArrival(sink.pContext, &each);
        return RZ_OK;
    };
    EXPECT_THAT(refusal(Wanted), HasSubstr("the device AA:00:00:00:00:09 says by ARP that it has it"));
    EXPECT_TRUE(questions.empty());
    EXPECT_NO_THROW(require("192.168.1.9"_ip)) << "of another adapter";
}

TEST_F(AddressConflictTest, IsAskedForThoughNothingCanBeLookedAt)
{
    sdk.openLook = [] { return RZ_ERROR_NETWORK; };
    EXPECT_NO_THROW(require(Wanted));
    EXPECT_EQ(questions.size(), 1u);
    EXPECT_THAT(refusal("192.168.1.7"_ip), HasSubstr("the camera FC-1"));
}

TEST_F(AddressConflictTest, IsAskedForWithTheMacAddressesOfAllCameras)
{
    session.findOwner = [](const cli::OwnerQuestion& question) {
        EXPECT_EQ(question.address, Wanted);
        EXPECT_EQ(question.camera.toText(), "00:00:00:00:00:01");
        EXPECT_THAT(question.otherCameras, testing::ElementsAre(OtherCamera));
        return cli::OwnerAnswer{};
    };
    EXPECT_NO_THROW(require(Wanted));
}

TEST_F(AddressConflictTest, NamesTheOwnerAndHowItWasHeard)
{
    const struct
    {
        cli::AddressOwner owner;
        const char* text;
    } table[] = {
        {{Device, true, {}}, "the device AA:00:00:00:00:09 answers ping"},
        {{Device, false, {}}, "the device AA:00:00:00:00:09 answers ARP"},
        {{Device, false, 12700ms},
         "the device AA:00:00:00:00:09 was heard there 12 seconds ago; if it has just been taken away, the "
         "address counts as free in a minute"},
        {{{}, true, {}}, "a device with this address answers ping"},
        {{OtherCamera, false, {}}, "the camera FC-1 (00:00:00:00:00:02) answers ARP"},
    };
    for (const auto& each : table) {
        ownerAnswer.owner = each.owner;
        EXPECT_EQ(refusal(Wanted),
                  std::string("192.168.1.6 is in use: ") + each.text + "; nothing was sent to the camera");
    }
}

TEST_F(AddressConflictTest, NotesWhatCouldNotBeAsked)
{
    const struct
    {
        const char* ping;
        const char* arp;
        const char* note;
    } table[] = {
        {"", "", ""},
        {"no ping", "", "was asked by ARP alone, as ping does not work (no ping)"},
        {"", "no table", "was asked by ping alone, as ARP could not be watched (no table)"},
        {"no ping", "no table", "could not be checked (no ping; no table)"},
        {"gone", "gone", "could not be checked (gone)"},
    };
    for (const auto& each : table) {
        err.str({});
        ownerAnswer.pingFailure = each.ping;
        ownerAnswer.arpFailure = each.arp;
        require(Wanted);
        EXPECT_EQ(err.str(),
                  *each.note == '\0'
                      ? std::string()
                      : std::string("note: whether another device uses 192.168.1.6 ") + each.note + "\n");
    }
}

TEST_F(AddressConflictTest, TellsSomebodyWhoWatchesWhatIsWaitedFor)
{
    session.interactive = true;
    session.findOwner = [this](const cli::OwnerQuestion&) {
        EXPECT_THAT(err.str(), HasSubstr("Asking whether anybody has 192.168.1.6, which takes 6 seconds"));
        return cli::OwnerAnswer{};
    };
    require(Wanted);
}

TEST_F(AddressConflictTest, KnowsTheSubnetByTheMaskOfTheAdapterThatHearsTheCamera)
{
    EXPECT_FALSE(isOutside("192.168.254.1"_ip));
    EXPECT_TRUE(isOutside("192.169.1.1"_ip));
    EXPECT_TRUE(isOutside("172.16.0.9"_ip)) << "another adapter's";
    camera.m_vecHostAdapter.clear();
    EXPECT_FALSE(isOutside("192.168.1.254"_ip));
    EXPECT_TRUE(isOutside("192.168.2.1"_ip));
}
