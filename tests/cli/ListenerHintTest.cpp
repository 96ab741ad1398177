// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/ListenerHint.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using cli::listenerHint;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* Beginning = "note: cameras outside this computer's subnets may be missing, because ";

/// A file that stands for the program; who may run it is asked of the file system.
class ListenerHint : public testing::Test
{
protected:
    ListenerHint() { EXPECT_TRUE(QFile(QString::fromStdString(path())).open(QIODevice::WriteOnly)); }

    std::string path() const { return folder.filePath(QStringLiteral("hear")).toStdString(); }

    std::string hint(ListenerState state) const
    {
        return listenerHint({state, QString::fromStdString(path())});
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(ListenerHint, IsNoneWhenAllIsHeard)
{
    EXPECT_EQ(hint(ListenerState::Hears), "");
}

TEST_F(ListenerHint, IsAlsoADoubtOfOneCameraUnlessAllIsHeard)
{
    EXPECT_EQ(cli::listenerDoubt({ListenerState::Hears, {}}), "");
    EXPECT_EQ(cli::listenerDoubt({ListenerState::Missing, {}}),
              "as the listener has not its privilege, a camera outside the subnet may not be heard");
}

TEST_F(ListenerHint, GivesThePrivilegeByACommandThatAShellTakesAsItStands)
{
    EXPECT_THAT(hint(ListenerState::Unprivileged),
                AllOf(StartsWith(Beginning), EndsWith(":\n    sudo setcap cap_net_raw+ep " + path() + "\n")));
    EXPECT_THAT(listenerHint({ListenerState::Unprivileged, QStringLiteral("/home/o'neill/my tools/hear")}),
                HasSubstr("sudo setcap cap_net_raw+ep '/home/o'\\''neill/my tools/hear'\n"));
}

TEST_F(ListenerHint, DoesNotGiveAPrivilegeThatTheFileHasAlready)
{
    // As the kernel keeps it: revision 2, in effect from the start, CAP_NET_RAW (bit 13) permitted.
    constexpr unsigned char NetRaw[20] = {1, 0, 0, 2, 0, 0x20};
    ASSERT_EQ(setxattr(path().c_str(), "security.capability", NetRaw, sizeof NetRaw, 0), 0)
        << "needs a file system and a user that may";
    EXPECT_THAT(hint(ListenerState::Unprivileged),
                AllOf(StartsWith(Beginning), HasSubstr("nosuid"), Not(HasSubstr("setcap"))));
}

TEST_F(ListenerHint, MakesAProgramThatNobodyMayRunOneForAll)
{
    ASSERT_EQ(chmod(path().c_str(), 0644), 0);
    EXPECT_THAT(hint(ListenerState::Forbidden),
                AllOf(StartsWith(Beginning), EndsWith("\n    sudo chmod 0755 " + path() +
                                                      " && sudo setcap cap_net_raw+ep " + path() + "\n")));
}

TEST_F(ListenerHint, NamesTheGroupToWhichTheProgramIsKept)
{
    ASSERT_EQ(chown(path().c_str(), 0, 1), 0);
    ASSERT_EQ(chmod(path().c_str(), 0750), 0);
    EXPECT_THAT(hint(ListenerState::Forbidden),
                AllOf(StartsWith(Beginning), HasSubstr("only the group daemon may run " + path()),
                      EndsWith("\n    sudo usermod -a -G daemon root\n"), Not(HasSubstr("chmod"))));
}

TEST_F(ListenerHint, LeadsNobodyIntoRootsGroup)
{
    ASSERT_EQ(chmod(path().c_str(), 0750), 0);
    EXPECT_THAT(hint(ListenerState::Forbidden),
                AllOf(StartsWith(Beginning), HasSubstr(path()), Not(HasSubstr("sudo"))));
}

TEST_F(ListenerHint, HasNoCommandForWhatIsNotThereOrFails)
{
    EXPECT_THAT(hint(ListenerState::Missing),
                AllOf(StartsWith(Beginning), HasSubstr(path() + ", which hears them all, is not there"),
                      Not(HasSubstr("setcap"))));
    EXPECT_THAT(hint(ListenerState::Failed),
                AllOf(StartsWith(Beginning), HasSubstr("did not start"), Not(HasSubstr("setcap"))));
}
