// SPDX-License-Identifier: Apache-2.0
#include "cli/AddressConflict.h"

#include "cli/Failure.h"
#include "tests/cli/ProgramFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr quint32 Wanted = 0xC0A80106;

class AddressConflictTest : public ProgramFixture
{
protected:
    AddressConflictTest()
    {
        camera.m_strMacAddress = "00:00:00:00:00:01";
        camera.m_strIpAddress = "10.0.0.9";
        camera.m_nNetExport = 0xC0A80105;
        camera.m_vecHostAdapter = {{0xC0A80105, 0xFFFF0000}, {0xAC100001, 0xFFFFFF00}};
        other.m_strMacAddress = "00:00:00:00:00:02";
        other.m_strModelName = "FC-1";
        other.m_strIpAddress = "192.168.1.7";
    }

    void require(quint32 address) { cli::requireUnusedAddress(camera, {camera, other}, address, session); }

    /// What is said when the address is refused.
    std::string refusal(quint32 address)
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
    for (const quint32 address : {0xC0A80105u, 0xAC100001u})
        EXPECT_THAT(refusal(address), HasSubstr("an adapter of this computer has it"));
    EXPECT_NO_THROW(require(Wanted));
    EXPECT_EQ(err.str(), "");
}

TEST_F(AddressConflictTest, IsAskedForWithTheMacAddressesOfAllCameras)
{
    session.findOwner = [](const cli::OwnerQuestion& question) {
        EXPECT_EQ(question.address, Wanted);
        EXPECT_EQ(question.camera, "00:00:00:00:00:01");
        EXPECT_EQ(question.otherCameras, QSet<QString>{"00:00:00:00:00:02"});
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
        {{"AA:00:00:00:00:09", true, {}}, "the device AA:00:00:00:00:09 answers ping"},
        {{"AA:00:00:00:00:09", false, {}}, "the device AA:00:00:00:00:09 answers ARP"},
        {{"AA:00:00:00:00:09", false, 12700ms},
         "the device AA:00:00:00:00:09 was heard there 12 seconds ago; if it has just been taken away, the "
         "address counts as free in a minute"},
        {{"", true, {}}, "a device with this address answers ping"},
        {{"00:00:00:00:00:02", false, {}}, "the camera FC-1 (00:00:00:00:00:02) answers ARP"},
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
    EXPECT_FALSE(cli::isOutsideAdapterSubnet(camera, 0xC0A8FE01));
    EXPECT_TRUE(cli::isOutsideAdapterSubnet(camera, 0xC0A90101));
    EXPECT_TRUE(cli::isOutsideAdapterSubnet(camera, 0xAC100009)) << "another adapter's";
    camera.m_vecHostAdapter.clear();
    EXPECT_FALSE(cli::isOutsideAdapterSubnet(camera, 0xC0A801FE));
    EXPECT_TRUE(cli::isOutsideAdapterSubnet(camera, 0xC0A80201));
}
