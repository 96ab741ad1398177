// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/AtOnce.h"
#include "tests/network/DiscoveryConditions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// The program as a user starts it, on a computer with two adapters and these cameras behind them.
class CommandLine : public testing::Test
{
protected:
    static constexpr const char* Free = "02:00:00:00:01:01";
    static constexpr const char* Held = "02:00:00:00:01:02";
    static constexpr const char* Unreachable = "02:00:00:00:01:03";
    static constexpr const char* OnOtherAdapter = "02:00:00:00:02:01";

    CommandLine()
    {
        lan = &site.addAdapter("eth0", "192.168.1.5/24");
        farm = &site.addCameras(*lan, R"(
            {"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "gateway": "192.168.1.254", "model": "FC-1",
             "serial": "S1", "userName": "瓶盖检测", "ipConfiguration": "persistent"},
            {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "heldBy": "192.168.1.77", "model": "FC-1",
             "serial": "S2", "userName": "Held", "ipConfiguration": "dhcp"},
            {"mac": "02:00:00:00:01:03", "address": "10.0.0.9", "mask": "255.0.0.0", "model": "FC-2",
             "serial": "S3", "userName": "\u001B[2J", "ipConfiguration": "lla"})");
        site.addCameras(site.addAdapter("eth1", "172.16.0.5/16"), R"(
            {"mac": "02:00:00:00:02:01", "address": "172.16.9.9", "mask": "255.255.0.0"})");
    }

    lab::Output run(std::vector<std::string> arguments, const std::vector<std::string>& wrapper = {}) const
    {
        arguments.insert(arguments.begin(), PROGRAM);
        arguments.insert(arguments.begin(), wrapper.begin(), wrapper.end());
        return site.host().execute(arguments);
    }

    static std::vector<std::string> forceCommand(const std::string& mac, const std::string& ip)
    {
        return {PROGRAM, "force", mac, "--ip", ip, "--mask", "255.255.255.0"};
    }

    lab::Output force(const std::string& mac, const std::string& ip) const
    {
        return site.host().execute(forceCommand(mac, ip));
    }

    /// What `list --json` says of the camera.
    json listed(const std::string& mac) const
    {
        for (const json& camera : json::parse(run({"list", "--json"}).standardOutput))
            if (camera["GevMACAddress"] == mac)
                return camera;
        ADD_FAILURE() << mac << " is not listed";
        return {};
    }

    /// How many FORCEIP packets have reached the camera.
    int forced(const std::string& mac) const
    {
        return json::parse(farm->control("show " + mac))["received"]["FORCEIP"];
    }

    /// Its output, on a terminal.
    std::string onTerminal(const std::string& environment) const
    {
        return site.host().run(environment + " script -qec '" PROGRAM " list' /dev/null");
    }

    Site site;
    lab::Switch* lan = nullptr;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_F(CommandLine, ListsTheCamerasOfAllAdapters)
{
    const lab::Output output = run({"list", "--json"});
    EXPECT_EQ(output.status, 0);
    EXPECT_EQ(output.standardError, "");
    const json array = json::parse(output.standardOutput);
    ASSERT_EQ(array.size(), 4u);
    EXPECT_EQ(array[0], json::parse(R"({
        "DeviceModelName": "FC-1", "DeviceUserID": "瓶盖检测", "DeviceSerialNumber": "S1",
        "GevMACAddress": "02:00:00:00:01:01", "GevIPConfigurationStatus": "PersistentIP",
        "GevCurrentIPAddress": "192.168.1.20", "GevCurrentSubnetMask": "255.255.255.0",
        "GevCurrentDefaultGateway": "192.168.1.254", "DeviceVendorName": "Farm Cameras",
        "DeviceVersion": "1.0.0", "Status": "Free", "AdapterAddress": "192.168.1.5", "AdapterName": "eth0",
        "GevLinkSpeed": 1000, "Conflicts": []})"));
    const char* const others[][4] = {{Held, "InUse", "DHCP", "192.168.1.5"},
                                     {Unreachable, "Unreachable", "LLA", "192.168.1.5"},
                                     {OnOtherAdapter, "Free", "DHCP", "172.16.0.5"}};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto& [mac, status, configuration, adapter] = others[i];
        EXPECT_EQ(array[i + 1]["GevMACAddress"], mac);
        EXPECT_EQ(array[i + 1]["Status"], status);
        EXPECT_EQ(array[i + 1]["GevIPConfigurationStatus"], configuration);
        EXPECT_EQ(array[i + 1]["AdapterAddress"], adapter);
    }
}

TEST_F(CommandLine, PrintsUtf8AndNoControlCharactersInAnyLocale)
{
    for (const char* locale : {"LC_ALL=C", "LC_ALL=C.UTF-8"}) {
        const lab::Output output = run({"list"}, {"env", locale});
        EXPECT_EQ(output.status, 0);
        EXPECT_THAT(output.standardOutput,
                    AllOf(HasSubstr("瓶盖检测   S1 "), HasSubstr("\\x1B[2J    S3 "), Not(HasSubstr("\x1B"))));
    }
}

TEST_F(CommandLine, ColoursForATerminalUnlessToldNotTo)
{
    EXPECT_THAT(onTerminal("env -u NO_COLOR"), HasSubstr("\x1B[31mUnreachable\x1B[0m"));
    EXPECT_THAT(onTerminal("NO_COLOR="), HasSubstr("\x1B[31mUnreachable\x1B[0m"));
    EXPECT_THAT(onTerminal("NO_COLOR=1"), AllOf(HasSubstr("Unreachable"), Not(HasSubstr("\x1B"))));
}

TEST_F(CommandLine, BringsAnUnreachableCameraIntoTheSubnet)
{
    const lab::Output output = force(Unreachable, "192.168.1.50");
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(output.standardOutput, HasSubstr("LLA        192.168.1.50  255.255.255.0  0.0.0.0\n"));
    const json camera = listed(Unreachable);
    EXPECT_EQ(camera["Status"], "Free");
    EXPECT_EQ(camera["GevCurrentIPAddress"], "192.168.1.50");
    site.host().run("ping -c 1 -W 2 192.168.1.50");
    EXPECT_EQ(listed(Free)["GevCurrentIPAddress"], "192.168.1.20");
}

TEST_F(CommandLine, TakesACameraOutOfTheSubnetAndStillFindsIt)
{
    const lab::Output output = force(Free, "10.1.2.3");
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(output.standardError,
                AllOf(HasSubstr("will be listed as Unreachable"), Not(HasSubstr("another device"))));
    EXPECT_EQ(listed(Free)["Status"], "Unreachable");
}

TEST_F(CommandLine, AsksByArpAloneAndSaysSoWhereThereIsNoPingProgram)
{
    const lab::Output output =
        run({"force", Unreachable, "--ip=192.168.1.50", "--mask=255.255.255.0"}, {"env", "PATH=/nowhere"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(output.standardError, HasSubstr("another device uses 192.168.1.50 was asked by ARP alone"));
}

TEST_F(CommandLine, TellsThatAnotherApplicationHoldsTheCamera)
{
    const lab::Output output = force(Held, "192.168.1.50");
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(output.standardError,
                HasSubstr("FC-1 (02:00:00:00:01:02): another application controls the camera"));
    EXPECT_EQ(listed(Held)["GevCurrentIPAddress"], "192.168.1.21");
}

TEST_F(CommandLine, TellsWhatIsThereWhenTheCameraIsNot)
{
    const lab::Output output = force("02:00:00:00:01:09", "192.168.1.50");
    EXPECT_EQ(output.status, 3);
    EXPECT_EQ(output.standardOutput, "");
    for (const char* mac : {Free, Held, Unreachable, OnOtherAdapter})
        EXPECT_THAT(output.standardError, HasSubstr(mac));
}

TEST_F(CommandLine, SendsNothingToACameraWhoseNewAddressIsTaken)
{
    lan->attach(site.router(), "lan", "192.168.1.30/24");
    const std::vector<std::pair<std::string, std::string>> owners{
        {"192.168.1.30", " answers "},
        {"192.168.1.20", "the camera FC-1 (02:00:00:00:01:01) has it"},
        {"172.16.0.5", "an adapter of this computer has it"}};
    std::vector<std::vector<std::string>> commands;
    for (const auto& each : owners)
        commands.push_back(forceCommand(Unreachable, each.first));
    const auto outputs = runAtOnce(site.host(), commands);
    for (std::size_t i = 0; i < owners.size(); ++i) {
        EXPECT_EQ(outputs[i].status, 1);
        EXPECT_EQ(outputs[i].standardOutput, "");
        EXPECT_THAT(outputs[i].standardError, HasSubstr(owners[i].second));
    }
    EXPECT_EQ(forced(Unreachable), 0);
}

TEST_F(CommandLine, SendsNothingToACameraWhoseNewAddressAMachineHasThatAnswersNoPing)
{
    const lab::Farm machine(*lan, R"({"cameras": [{"mac": "02:00:00:00:05:01", "address": "192.168.1.90"}],
                                      "neighbours": [{"mac": "02:00:00:00:09:09", "address": "192.168.1.91"}]})");
    const auto outputs = runAtOnce(
        site.host(), {{PROGRAM, "force", Free, "--ip", "192.168.1.91", "--mask", "255.255.255.0"},
                      {PROGRAM, "set", Free, "--static", "--ip", "192.168.1.91", "--mask", "255.255.255.0"},
                      {PROGRAM, "force", Free, "--ip", "192.168.1.90", "--mask", "255.255.255.0"}});
    for (const lab::Output& output : outputs)
        EXPECT_EQ(output.status, 1);
    for (const int i : {0, 1})
        EXPECT_THAT(outputs[static_cast<std::size_t>(i)].standardError,
                    HasSubstr("192.168.1.91 is in use: the device 02:00:00:00:09:09 "));
    EXPECT_THAT(outputs[2].standardError, HasSubstr("(02:00:00:00:05:01) has it"));
    EXPECT_EQ(json::parse(farm->control(std::string("show ") + Free))["received"]["FORCEIP"], 0);
}

TEST_F(CommandLine, TakesACameraBackToWhereTheKernelRemembersIt)
{
    site.host().run("ping -c 1 -W 2 192.168.1.20");
    ASSERT_EQ(force(Free, "192.168.1.50").status, 0);
    const lab::Output output = force(Free, "192.168.1.20");
    EXPECT_EQ(output.status, 0) << output.standardError;
}

TEST_F(CommandLine, RefusesWrongArgumentsWithoutASound)
{
    const lab::Output output = run({"force", Free, "--ip", "192.168.1.50", "--mask", "255.0.255.0"});
    EXPECT_EQ(output.status, 2);
    EXPECT_EQ(output.standardOutput, "");
    EXPECT_THAT(output.standardError,
                HasSubstr("ip-configurator-cli: --mask \"255.0.255.0\" is no subnet mask"));
    EXPECT_EQ(json::parse(farm->control(std::string("show ") + Free))["received"]["DISCOVERY"], 0);
}

TEST_F(CommandLine, SaysHowToHearAllCamerasWhenItLacksThePrivilege)
{
    const lab::Output output =
        run({"list", "--json"}, {"setpriv", "--bounding-set=-net_raw", "--inh-caps=-net_raw"});
    EXPECT_EQ(output.status, 0);
    EXPECT_THAT(json::parse(output.standardOutput), Not(IsEmpty()));
    EXPECT_THAT(output.standardError, HasSubstr("sudo setcap cap_net_raw+ep " LISTENER "\n"));
}

TEST_F(CommandLine, FailsWhenItsOutputCannotBeWritten)
{
    for (const char* redirection : {">/dev/full", ">&-"}) {
        const lab::Output output =
            site.host().execute({"sh", "-c", std::string(PROGRAM " list ") + redirection});
        EXPECT_EQ(output.status, 1) << redirection;
        EXPECT_THAT(output.standardError, HasSubstr("standard output")) << redirection;
    }
}

TEST_F(CommandLine, SaysThatTheCameraHasWhatWasAskedWhenTheReportOfItCannotBeWritten)
{
    const auto outputs =
        runAtOnce(site.host(),
                  {{"sh", "-c", PROGRAM " force 02:00:00:00:01:03 --ip 10.0.0.9 --mask 255.0.0.0 >/dev/full"},
                   {"sh", "-c", PROGRAM " set 02:00:00:00:01:01 --user-id New >/dev/full"}});
    for (const lab::Output& output : outputs) {
        EXPECT_EQ(output.status, 1);
        EXPECT_THAT(output.standardError, AllOf(HasSubstr("has what was asked for"),
                                                HasSubstr("the report of it cannot be written")));
    }
    EXPECT_EQ(listed(Free)["DeviceUserID"], "New");
}

TEST(CommandLineWithoutCameras, SaysWhichAdaptersItAskedOn)
{
    Site site;
    site.addAdapter("eth0", "192.168.1.5/24");
    const auto outputs = runAtOnce(
        site.host(), {{PROGRAM, "list"},
                      {PROGRAM, "list", "--json"},
                      {"setpriv", "--bounding-set=-net_raw", "--inh-caps=-net_raw", PROGRAM, "list"}});
    for (const lab::Output& output : outputs)
        EXPECT_EQ(output.status, 0);
    EXPECT_EQ(outputs[0].standardOutput, "");
    EXPECT_EQ(outputs[0].standardError, "No camera answered on 192.168.1.5. Check the cameras' power and "
                                        "cables, and that this computer is on "
                                        "the same network.\n"
                                        "What may be wrong: ip-configurator-cli doctor\n");
    EXPECT_EQ(outputs[1].standardOutput, "[]\n");
    EXPECT_LT(outputs[2].standardError.find("sudo setcap"),
              outputs[2].standardError.find("power and cables"));
}

TEST(CommandLineWithoutCameras, SaysOfEachOtherAdapterWhatItLacks)
{
    Site site;
    site.addAdapter("eth0", "");
    // One without a broadcast address asks as well.
    site.host().run("ip address add 10.1.0.5/16 dev eth0");
    site.addAdapter("bare0", "");
    site.addAdapter("down0", "192.168.7.5/24");
    site.host().run("ip link set down0 down");
    lab::connect(site.host(), "pulled0", site.router(), "eth0");
    site.host().run("ip address add 192.168.8.5/24 dev pulled0");
    site.router().run("ip link set eth0 down");
    EXPECT_EQ(site.host().execute({PROGRAM, "list"}).standardError,
              "No camera answered on 10.1.0.5. Check the cameras' power and cables, and that this computer "
              "is on the "
              "same network.\n"
              "    bare0: no IPv4 address; any will do, but without one only cameras that answer by "
              "broadcast are heard\n"
              "    down0: switched off\n"
              "    pulled0: no carrier: no cable, or what is at its other end is off\n"
              "What may be wrong: ip-configurator-cli doctor\n");
    site.host().run("ip link set eth0 down");
    EXPECT_THAT(
        site.host().execute({PROGRAM, "list"}).standardError,
        AllOf(HasSubstr("no network adapter of this computer can hear one.\n    eth0: switched off\n"),
              HasSubstr("pulled0: no carrier")));
}

TEST(CommandLineWithoutCameras, SaysThatThereIsNoAdapter)
{
    Site site;
    const lab::Output output = site.host().execute({PROGRAM, "list"});
    EXPECT_EQ(output.status, 0);
    EXPECT_EQ(output.standardError, "No camera found: no network adapter of this computer can hear one.\n"
                                    "What may be wrong: ip-configurator-cli doctor\n");
}

TEST(CommandLineOnTwoAdapters, ListsACameraThatBothHearOnceByTheOneThatReachesIt)
{
    Site site;
    discoveryCondition("OneCameraSeenByTwoAdapters").build(site);
    const json array = json::parse(site.host().execute({PROGRAM, "list", "--json"}).standardOutput);
    ASSERT_EQ(array.size(), 1u);
    EXPECT_EQ(array[0]["Status"], "Free");
    EXPECT_EQ(array[0]["AdapterAddress"], "192.168.1.5");
}
