// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/AtOnce.h"
#include "tests/network/Site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// The program with so many files that it may have open.
std::vector<std::string> withFiles(int limit, const std::string& arguments)
{
    return {"sh", "-c", "ulimit -n " + std::to_string(limit) + "; exec " PROGRAM " " + arguments};
}

} // namespace

TEST(IncompleteSearch, TellsWhichAdaptersWereNotSearchedAndWhy)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers need files of their own to look at an object's type";
#endif
    Site site;
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
        {"mac": "02:00:00:00:01:01", "address": "192.168.1.20"})");
    site.addAdapter("eth1", "172.16.0.5/16");
    // The program has four open without any of the search; each adapter takes two, and one more at first. A
    // look takes three, and two more at first.
    const auto outputs = runAtOnce(
        site.host(), {withFiles(9, "list --json"), withFiles(10, "list --json"), withFiles(5, "list --json"),
                      withFiles(7, "force 02:00:00:00:02:01 --ip 172.16.9.9 --mask 255.255.0.0"),
                      withFiles(7, "set 02:00:00:00:02:01 --dhcp")});
    for (const lab::Output& part : {outputs[0], outputs[1]}) {
        EXPECT_EQ(part.status, 1);
        EXPECT_EQ(json::parse(part.standardOutput).size(), 1u);
        EXPECT_EQ(part.standardError,
                  "ip-configurator-cli: cameras may be missing, as not all networks were searched "
                  "(eth1: Too many open files)\n");
    }

    const lab::Output& nothing = outputs[2];
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.standardOutput, "[]\n");
    EXPECT_THAT(nothing.standardError,
                AllOf(HasSubstr("not all networks were searched"), HasSubstr("Too many open files"),
                      Not(HasSubstr("sudo setcap"))));

    for (const lab::Output& missing : {outputs[3], outputs[4]}) {
        EXPECT_EQ(missing.status, 3);
        EXPECT_THAT(missing.standardError,
                    AllOf(HasSubstr("not all networks were searched (eth1: Too many open files); found:\n"),
                          HasSubstr("02:00:00:00:01:01")));
    }
}

TEST(ManyCameras, AreAllListedAndFoundByTheirMac)
{
    Site site;
    // By broadcast, from outside: the kernel has room for a thousand neighbours, in all networks together.
    lab::Switch& lan = site.addAdapter("eth0", "192.168.1.5/24");
    for (int i = 1; i <= 4; ++i)
        site.addCameras(lan, R"({"mac": "02:00:00:00:0)" + std::to_string(i) + R"(:00", "address": "10.0.)" +
                                 std::to_string(10 + i) + R"(.1", "repeat": 250, "answer": "broadcast"})");
    const lab::Output list = site.host().execute({PROGRAM, "list", "--json"});
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.standardError, "");
    std::set<std::string> macs;
    for (const json& camera : json::parse(list.standardOutput)) {
        macs.insert(camera["GevMACAddress"]);
        EXPECT_EQ(camera["Status"], "Unreachable");
        EXPECT_EQ(camera["Conflicts"], json::array());
    }
    EXPECT_EQ(macs.size(), 1000u);

    std::vector<std::vector<std::string>> commands;
    for (const char* mac : {"02:00:00:00:01:00", "02:00:00:00:02:80", "02:00:00:00:04:F9"})
        commands.push_back({PROGRAM, "force", mac, "--ip",
                            "192.168.20." + std::to_string(1 + commands.size()), "--mask", "255.255.0.0"});
    for (const lab::Output& output : runAtOnce(site.host(), commands))
        EXPECT_EQ(output.status, 0) << output.standardError;
}
