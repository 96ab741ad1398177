// SPDX-License-Identifier: Apache-2.0
#include "tests/hear/Frames.h"
#include "tests/hear/Listener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

using frames::Answer;

namespace {

const std::string None(16, '0');

/// Runs a copy of the program, to which `preparation` was done, as an ordinary user with these options of
/// setpriv. The copy lies on a file system that only this process sees, and that is known to heed what stands
/// on files.
Listener runAsUser(const Cable& cable, const std::string& preparation, const std::string& options = {})
{
    const std::string script = "mount -t tmpfs -o mode=0755 tmpfs /mnt\n"
                               "install -m 0755 " LISTENER " /mnt/hear\n"
                               "cd /mnt\n" +
                               preparation + "\nexec setpriv --reuid=65534 --regid=65534 --clear-groups " +
                               options + " /mnt/hear " + cable.index() + " 40000";
    return Listener(cable.host(), {"unshare", "--mount", "sh", "-ec", script});
}

const char GiveCapability[] = "setcap cap_net_raw+ep hear";

/// It listens, and has nothing left that an attacker could use.
void expectHarmless(const Cable& cable, Listener& listener)
{
    ASSERT_EQ(listener.read(), base::Bytes()) << "it listens";
    for (const char* const set : {"CapInh", "CapPrm", "CapEff", "CapAmb"})
        EXPECT_EQ(listener.status(set), None) << set;
    EXPECT_EQ(listener.status("NoNewPrivs"), "1");
    EXPECT_EQ(listener.status("Seccomp"), "2");
    cable.send(Answer);
    EXPECT_EQ(listener.read(), Answer);
}

uid_t ownerOfProcessFiles(const Listener& listener)
{
    struct stat info
    {};
    EXPECT_EQ(::stat(("/proc/" + std::to_string(listener.id()) + "/mem").c_str(), &info), 0);
    return info.st_uid;
}

} // namespace

TEST(Privileges, AreLeftToNoneThatRootStarts)
{
    const Cable cable;
    Listener listener = Listener::started(cable.host(), {cable.index(), "40000"});
    expectHarmless(cable, listener);
    EXPECT_EQ(listener.status("CapBnd"), None);
}

TEST(Privileges, OfItsFileAreLeftToNoneThatAnOrdinaryUserStarts)
{
    const Cable cable;
    Listener listener = runAsUser(cable, GiveCapability);
    expectHarmless(cable, listener);
    EXPECT_EQ(listener.status("Uid"), "65534\t65534\t65534\t65534");
}

TEST(Privileges, OfItsFilesOwnerAndGroupAreGivenBack)
{
    const Cable cable;
    Listener listener = runAsUser(cable, "chmod ug+s hear");
    expectHarmless(cable, listener);
    EXPECT_EQ(listener.status("Uid"), "65534\t65534\t65534\t65534");
    EXPECT_EQ(listener.status("Gid"), "65534\t65534\t65534\t65534");
    EXPECT_EQ(listener.status("CapBnd"), None);
}

TEST(Privileges, ThatItsCallerHandsOnAreGivenUpAndItsMemoryIsClosedToThem)
{
    const Cable cable;
    Listener listener = runAsUser(cable, "", "--inh-caps=+net_raw --ambient-caps=+net_raw");
    expectHarmless(cable, listener);
    EXPECT_EQ(ownerOfProcessFiles(listener), 0u) << "not the user, who started it without a change of rights";
}

TEST(Privileges, ThatAreMissingAreNamed)
{
    const Cable cable;
    Listener listener = runAsUser(cable, "");
    EXPECT_EQ(listener.rest(), "");
    EXPECT_EQ(listener.complaints(),
              "ip-configurator-hear may not hear: its file lacks the capability cap_net_raw.\n");
    EXPECT_EQ(listener.wait(), 3);
}

TEST(Privileges, AreNotHadByThoseWhoMayNotGetNewOnes)
{
    const Cable cable;
    Listener listener = runAsUser(cable, GiveCapability, "setpriv --no-new-privs");
    EXPECT_EQ(listener.rest(), "");
    EXPECT_EQ(listener.wait(), 3);
}

TEST(Privileges, AreNotHadWhereTheyAreOutOfBounds)
{
    const Cable cable;
    Listener listener = runAsUser(cable, GiveCapability, "--bounding-set=-net_raw");
    EXPECT_EQ(listener.rest(), "");
    EXPECT_NE(listener.wait(), 0);
    EXPECT_THAT(listener.complaints(), testing::HasSubstr("/mnt/hear"))
        << "the kernel does not even start it";
}

TEST(Privileges, AreInNoHandsButItsOwnAndTheCLibrarys)
{
    const lab::Namespace host;
    const std::string section =
        host.run("readelf --wide --dynamic " LISTENER " | sed -n 's/.*NEEDED.*\\[\\(.*\\)\\]/\\1/p'");
    EXPECT_THAT(section, testing::MatchesRegex("libc\\.so\\.6\n(ld-linux-[a-z0-9-]*\\.so\\.[0-9]\n)?"));
}
