// SPDX-License-Identifier: Apache-2.0
// The installed programs, as a user without rights has them.
#include "tests/network/Site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

namespace {

constexpr const char* Inside = "02:00:00:00:01:01";
constexpr const char* Outside = "02:00:00:00:01:02";

const std::string Command = PREFIX "/bin/ip-configurator-cli";
const std::string Hear = PREFIX "/libexec/ip-configurator-hear";

/// What `cmake --install` makes, once for all tests.
class Installation
{
public:
    Installation()
    {
        std::string pattern = (fs::temp_directory_path() / "installation-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("no folder " + pattern);
        m_folder = pattern;
        const lab::Namespace nowhere;
        nowhere.run("DESTDIR=" + pattern + " cmake --install " BUILD_FOLDER " --strip");
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    ~Installation()
    {
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }

    /// The shell command with it in its place, on a file system that knows capabilities and in a mount
    /// namespace of the command's own. `asUser` runs there what follows it without any rights.
    std::vector<std::string> with(const std::string& command) const
    {
        const std::string preparation = "set -e; mount -t tmpfs -o mode=0755 none " PREFIX "; cp -r " +
                                        (m_folder / "." PREFIX).string() +
                                        "/. " PREFIX "; asUser() { setpriv --reuid=65534 --regid=65534 "
                                        "--clear-groups env HOME=/ LC_ALL=C.UTF-8 \"$@\"; }; ";
        return {"unshare", "--mount", "sh", "-c", preparation + command};
    }

private:
    fs::path m_folder;
};

class OrdinaryUser : public testing::Test
{
protected:
    static void SetUpTestSuite() { installation = new Installation; }
    static void TearDownTestSuite() { delete installation; }

    OrdinaryUser()
    {
        site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
            {"mac": "02:00:00:00:01:01", "address": "192.168.1.20"},
            {"mac": "02:00:00:00:01:02", "address": "10.0.0.9", "ipConfiguration": "persistent"})");
    }

    lab::Output run(const std::string& command) const
    {
        return site.host().execute(installation->with(command));
    }

    /// Each camera that `list --json` says, with its status.
    static std::map<std::string, std::string> camerasIn(const lab::Output& list)
    {
        EXPECT_EQ(list.status, 0) << list.standardError;
        std::map<std::string, std::string> cameras;
        for (const json& camera : json::parse(list.standardOutput))
            cameras[camera["GevMACAddress"]] = camera["Status"];
        return cameras;
    }

    void expectAllToWork() const
    {
        const std::string grant = "setcap cap_net_raw+ep " + Hear + "; ";
        const lab::Output list = run(grant + "asUser " + Command + " list --json");
        EXPECT_EQ(list.standardError, "");
        EXPECT_THAT(camerasIn(list),
                    UnorderedElementsAre(Pair(Inside, "Free"), Pair(Outside, "Unreachable")));

        const lab::Output force = run(grant + "asUser " + Command + " force " + Outside +
                                      " --ip 192.168.1.50 --mask 255.255.255.0");
        EXPECT_EQ(force.status, 0) << force.standardError;
        const lab::Output set = run(grant + "asUser " + Command + " set " + Outside +
                                    " --static --ip 192.168.1.51 --mask 255.255.255.0 --user-id Right");
        EXPECT_EQ(set.status, 0) << set.standardError;
        const lab::Output after = run(grant + "asUser " + Command + " list --json");
        EXPECT_THAT(camerasIn(after), UnorderedElementsAre(Pair(Inside, "Free"), Pair(Outside, "Free")));
        EXPECT_THAT(after.standardOutput, HasSubstr("\"Right\""));
    }

    /// After this was done to the listener: what is in the subnet is listed all the same, and a note has the
    /// command with which root changes it; once that has been run as printed, all are listed.
    void expectToBeRepairedByTheNote(const std::string& damage) const
    {
        const std::string list = "asUser " + Command + " list --json";
        const lab::Output without = run(damage + "; " + list);
        EXPECT_THAT(camerasIn(without), UnorderedElementsAre(Pair(Inside, "Free"))) << damage;
        // There need be no sudo here, and root has no need of it.
        const lab::Output repaired =
            run("sudo() { \"$@\"; }; " + damage + "; " + list +
                " 2>&1 >/dev/null | sed -n 's/^    //p' >" PREFIX "/repair; . " PREFIX "/repair; " + list);
        EXPECT_THAT(camerasIn(repaired),
                    UnorderedElementsAre(Pair(Inside, "Free"), Pair(Outside, "Unreachable")))
            << without.standardError;
        EXPECT_EQ(repaired.standardError, "");
    }

    Site site;

private:
    static inline Installation* installation = nullptr;
};

} // namespace

TEST_F(OrdinaryUser, ListsForcesAndSetsAllCamerasUnderAStrictReversePathFilter)
{
    site.setReversePathFilter(1);
    expectAllToWork();
}

TEST_F(OrdinaryUser, ListsForcesAndSetsAllCamerasBehindAFirewall)
{
    site.raiseFirewall();
    expectAllToWork();
}

TEST_F(OrdinaryUser, WhoseListenerHasNoPrivilegeGetsItByTheCommandThatIsPrinted)
{
    site.setReversePathFilter(1);
    expectToBeRepairedByTheNote("true");
}

TEST_F(OrdinaryUser, WhoseListenerMayNotBeRunGetsItByTheCommandThatIsPrinted)
{
    site.setReversePathFilter(1);
    expectToBeRepairedByTheNote("chmod a-x " + Hear);
}

TEST_F(OrdinaryUser, WhoseListenerIsMissingHasAllElseAndIsTold)
{
    site.setReversePathFilter(1);
    const lab::Output list = run("rm " + Hear + "; asUser " + Command + " list --json");
    EXPECT_THAT(camerasIn(list), UnorderedElementsAre(Pair(Inside, "Free")));
    EXPECT_THAT(list.standardError, HasSubstr(Hear + ", which hears them all, is not there"));
}

TEST_F(OrdinaryUser, OutsideOfAListenersGroupIsToldWhichToJoinAndInsideHearsAll)
{
    site.setReversePathFilter(1);
    const std::string keep =
        "chgrp daemon " + Hear + "; chmod 0750 " + Hear + "; setcap cap_net_raw+ep " + Hear + "; ";
    const lab::Output outside = run(keep + "asUser " + Command + " list --json");
    EXPECT_THAT(camerasIn(outside), UnorderedElementsAre(Pair(Inside, "Free")));
    EXPECT_THAT(outside.standardError, HasSubstr("only the group daemon may run"));
    const lab::Output inside =
        run(keep + "setpriv --reuid=65534 --regid=65534 --groups 1 env HOME=/ " + Command + " list --json");
    EXPECT_THAT(camerasIn(inside), UnorderedElementsAre(Pair(Inside, "Free"), Pair(Outside, "Unreachable")));
    EXPECT_EQ(inside.standardError, "");
}

TEST_F(OrdinaryUser, HasNoRawSocketByWayOfAPlugInInTheWindow)
{
    const std::string probe = "setcap cap_net_raw+ep " + Hear +
                              "; mount -t tmpfs none /run; touch /run/ip-configurator.pid; "
                              "chmod 0666 /run/ip-configurator.pid; mkdir -p " PREFIX
                              "/probe/generic; cp " PLUG_IN " " PREFIX "/probe/generic; ";
    const std::string window = "QT_PLUGIN_PATH=" PREFIX "/probe QT_QPA_GENERIC_PLUGINS=raw-socket " PREFIX
                               "/bin/ip-configurator -platform offscreen";
    // That the plug-in can tell: where it is run by root, it has one.
    EXPECT_THAT(run(probe + "env " + window).standardOutput, HasSubstr("plug-in: a raw socket\n"));
    const lab::Output user = run(probe + "asUser env " + window);
    EXPECT_THAT(user.standardOutput, HasSubstr("plug-in: Operation not permitted\n"));
}
