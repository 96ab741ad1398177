// SPDX-License-Identifier: Apache-2.0
// Site files as a user works with them, on a line of cameras.
#include "tests/network/Site.h"
#include "tests/simulator/Shown.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <stdlib.h>

using nlohmann::json;
using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr const char* Left = "02:00:00:00:01:01";
constexpr const char* Right = "02:00:00:00:01:02";
constexpr const char* Spare = "02:00:00:00:01:03"; // Lies in the drawer.

/// A computer with one camera that asks for DHCP, one that is static, and the program as its user starts it.
class WholeLine : public testing::Test
{
protected:
    WholeLine()
    {
        char name[] = "/tmp/whole-line-XXXXXX";
        folder = ::mkdtemp(name);
        path = folder / "line.yaml";
        farm = &site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
            {"mac": "02:00:00:00:01:01", "serial": "1001", "address": "192.168.1.20", "rebootTime": 300,
             "heartbeatTimeout": 1000},
            {"mac": "02:00:00:00:01:02", "serial": "1002", "ipConfiguration": "persistent", "rebootTime": 300,
             "persistent": {"address": "192.168.1.22"}, "userName": "right", "heartbeatTimeout": 1000},
            {"mac": "02:00:00:00:01:03", "serial": "1003", "address": "192.168.1.99", "rebootTime": 300,
             "plugged": false})");
        runningCamera(*farm, Right);
    }

    ~WholeLine() override { std::filesystem::remove_all(folder); }

    lab::Output run(std::vector<std::string> words) const
    {
        words.insert(words.begin(), PROGRAM);
        return site.host().execute(words);
    }

    /// Expects this exit status.
    json apply(int status, std::vector<std::string> options = {}) const
    {
        options.insert(options.begin(), {"apply", path, "--json"});
        const lab::Output output = run(options);
        EXPECT_EQ(output.status, status) << output.standardError;
        return json::parse(output.standardOutput);
    }

    static std::vector<std::string> results(const json& report)
    {
        std::vector<std::string> names;
        for (const json& each : report)
            names.push_back(each["Result"]);
        return names;
    }

    void plan(const std::string& left, const std::string& right) const
    {
        std::ofstream(path) << "version: 1\n"
                               "defaults: {mode: static, mask: 255.255.255.0, gateway: none}\n"
                               "cameras:\n"
                               "  # The one at the door.\n"
                               "  left: {match: {serial: \"1001\"}, address: "
                            << left
                            << "}\n"
                               "  right: {match: {serial: \"1002\"}, address: "
                            << right << "}\n";
    }

    std::string file() const
    {
        std::ifstream stream(path);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string addressOf(const char* mac) const { return shown(*farm, mac)["address"]; }

    /// What has been sent to both cameras that may change them.
    std::vector<json> orders() const
    {
        std::vector<json> counts;
        for (const char* mac : {Left, Right})
            for (const char* request : {"FORCEIP", "WRITEREG", "WRITEMEM"})
                counts.push_back(shown(*farm, mac)["received"][request]);
        return counts;
    }

    Site site;
    lab::Farm* farm = nullptr;
    std::filesystem::path folder;
    std::string path;
};

} // namespace

TEST_F(WholeLine, IsExportedPlannedAndSetUpAndThenLeftAlone)
{
    const auto untouched = orders();
    lab::Output output = run({"export"});
    ASSERT_EQ(output.status, 0) << output.standardError;
    const std::string before = output.standardOutput;
    std::ofstream(path) << before;
    EXPECT_THAT(results(apply(0)), ElementsAre("ok", "ok"));

    plan("192.168.1.31", "192.168.1.32");
    EXPECT_THAT(results(apply(4, {"--check"})), ElementsAre("would-change", "would-change"));
    EXPECT_EQ(orders(), untouched) << "only questions so far";

    EXPECT_THAT(results(apply(0)), ElementsAre("changed", "changed"));
    for (const char* mac : {Left, Right})
        farm->control(std::string("reset ") + mac);
    EXPECT_EQ(runningCamera(*farm, Left)["address"], "192.168.1.31");
    EXPECT_EQ(runningCamera(*farm, Left)["userName"], "left");
    EXPECT_EQ(runningCamera(*farm, Right)["address"], "192.168.1.32");
    for (const char* mac : {Left, Right})
        EXPECT_EQ(shown(*farm, mac)["privilege"], 0);

    const auto done = orders();
    EXPECT_THAT(results(apply(0)), ElementsAre("ok", "ok"));
    EXPECT_EQ(orders(), done) << "nothing was to be done";

    std::ofstream(path) << before;
    apply(0);
    EXPECT_EQ(shown(*farm, Left)["ipConfiguration"], "dhcp") << "that is the way back";
    EXPECT_EQ(addressOf(Right), "192.168.1.22");
}

TEST_F(WholeLine, SwapsAddresses)
{
    plan("192.168.1.31", "192.168.1.32");
    apply(0);
    plan("192.168.1.32", "192.168.1.31");
    EXPECT_THAT(results(apply(0)), ElementsAre("changed", "changed"));
    for (const char* mac : {Left, Right})
        farm->control(std::string("reset ") + mac);
    EXPECT_EQ(runningCamera(*farm, Left)["address"], "192.168.1.32");
    EXPECT_EQ(runningCamera(*farm, Right)["address"], "192.168.1.31");
    EXPECT_THAT(results(apply(0, {"--check"})), ElementsAre("ok", "ok"));
}

TEST_F(WholeLine, GetsAnotherCameraForABrokenOne)
{
    plan("192.168.1.31", "192.168.1.32");
    apply(0);
    farm->control(std::string("unplug ") + Left);
    EXPECT_THAT(results(apply(3)), ElementsAre("missing", "ok"));
    EXPECT_EQ(run({"replace", "left", path, "--yes"}).status, 3) << "there is no other";

    farm->control(std::string("plug ") + Spare);
    const std::string before = file();
    EXPECT_EQ(run({"replace", "left", path}).status, 1) << "nobody says yes";
    EXPECT_EQ(file(), before);
    const lab::Output output = run({"replace", "left", path, "--yes"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_EQ(addressOf(Spare), "192.168.1.31");
    EXPECT_EQ(shown(*farm, Spare)["userName"], "left");
    std::string expected = before;
    expected.replace(expected.find("1001"), 4, "1003");
    EXPECT_EQ(file(), expected);
    EXPECT_THAT(results(apply(0)), ElementsAre("ok", "ok"));
}

TEST_F(WholeLine, PutsACameraBackThatRefuses)
{
    plan("192.168.1.31", "192.168.1.32");
    farm->control(std::string("fault ") + Left + " WRITEMEM busy");
    const json report = apply(1);
    EXPECT_THAT(results(report), ElementsAre("put-back", "not-begun"));
    EXPECT_THAT(report[0]["Reason"].get<std::string>(), HasSubstr("It could not be changed: "));
    EXPECT_EQ(addressOf(Left), "192.168.1.20");
    EXPECT_EQ(addressOf(Right), "192.168.1.22");
    EXPECT_EQ(shown(*farm, Left)["privilege"], 0);
}

TEST_F(WholeLine, BringsACameraThatHasBegunToItsEndAtCtrlC)
{
    plan("192.168.1.31", "192.168.1.32");
    farm->control(std::string("fault ") + Left + " WRITEREG delay time 300");
    lab::Process program =
        site.host().start({"sh", "-c", "exec " PROGRAM " apply " + path + " 2>&1 >/dev/null"});
    while (program.readLine() != "left: store the address ...") {
    }
    ::kill(program.id(), SIGINT);
    EXPECT_EQ(program.wait(), 130);
    EXPECT_EQ(addressOf(Left), "192.168.1.31");
    EXPECT_EQ(shown(*farm, Left)["privilege"], 0);
    EXPECT_EQ(addressOf(Right), "192.168.1.22");
}

TEST_F(WholeLine, IsFinishedByTheNextRunWhenOneWasKilled)
{
    plan("192.168.1.31", "192.168.1.32");
    farm->control(std::string("fault ") + Left + " WRITEREG delay time 300");
    lab::Process program =
        site.host().start({"sh", "-c", "exec " PROGRAM " apply " + path + " 2>&1 >/dev/null"});
    while (program.readLine() != "left: store the address ...") {
    }
    ::kill(program.id(), SIGKILL);
    EXPECT_EQ(program.wait(), 128 + SIGKILL);
    EXPECT_NE(shown(*farm, Left)["privilege"], 0) << "nobody has given it back";
    farm->control(std::string("heal ") + Left);
    EXPECT_THAT(results(apply(0)), ElementsAre("changed", "changed"));
    EXPECT_EQ(addressOf(Left), "192.168.1.31");
    EXPECT_EQ(addressOf(Right), "192.168.1.32");
}
