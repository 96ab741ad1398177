// SPDX-License-Identifier: Apache-2.0
// The doctor on real networks: it finds what is wrong, nothing else, and its repairs work as printed.
#include "tests/doctor/Visit.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using nlohmann::json;
using simulator_tests::shown;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

/// A static camera, with more members.
std::string camera(int number, const std::string& address, const std::string& more = {})
{
    return R"({"mac": ")" + macOf(number) + R"(", "model": "FC-)" + std::to_string(number) +
           R"(", "address": ")" + address + R"(", "ipConfiguration": "persistent")" +
           (more.empty() ? "" : ", " + more) + "}";
}

std::string about(const std::string& id, const std::string& adapter, int number)
{
    return id + " " + adapter + " " + macOf(number);
}

class Doctor : public testing::Test
{
protected:
    Site site;
};

} // namespace

TEST_F(Doctor, FindsNothingOnANetworkInOrder)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), camera(1, "192.168.1.20"));
    const lab::Output output = site.host().execute({PROGRAM, "doctor"});
    EXPECT_EQ(output.status, 0) << output.standardError;
    EXPECT_THAT(output.standardOutput,
                StartsWith("eth0  192.168.1.5/24  10000 Mbit/s  MTU 1500  1 camera\n\nNOTE"));
    EXPECT_EQ(output.standardError, "");

    const Visit visit(site);
    EXPECT_EQ(visit.status(), 0);
    EXPECT_THAT(visit.found(), IsEmpty());
    EXPECT_EQ(visit.object()["Adapters"], json::parse(R"([{"Name": "eth0", "Addresses": ["192.168.1.5/24"],
                                                          "LinkSpeed": 10000, "Mtu": 1500, "Cameras": 1}])"));
    ASSERT_THAT(visit.object()["Findings"], SizeIs(1));
    const json& container = visit.object()["Findings"][0];
    EXPECT_EQ(container["Id"], "container");
    EXPECT_EQ(container["Severity"], "note");
    for (const char* member : {"AdapterName", "GevMACAddress"})
        EXPECT_TRUE(container.at(member).is_null());
    EXPECT_EQ(container["Repair"], json::array());
    EXPECT_THAT(container["Reason"].get<std::string>(), HasSubstr("eth0 (veth)"));
}

TEST_F(Doctor, SaysThatNoCameraIsHeardWhereNoHardwareIsSeen)
{
    site.addAdapter("eth0", "192.168.1.5/24");
    const Visit visit(site);
    EXPECT_EQ(visit.status(), 1);
    EXPECT_EQ(visit.finding("container")["Severity"], "warning");
    EXPECT_THAT(visit.complaint(), HasSubstr("found: 1 warning\n"));
}

TEST_F(Doctor, GivesCamerasTheAddressesThatTheyLack)
{
    lab::Switch& network = site.addAdapter("eth0", "192.168.1.5/24");
    lab::Farm& farm = site.addCameras(
        network, camera(1, "192.168.1.20") + "," + camera(2, "10.0.0.9") + "," + camera(3, "192.168.1.30") +
                     "," + camera(4, "192.168.1.30") + "," +
                     camera(5, "192.168.1.40",
                            R"("persistent": {"address": "192.168.1.99", "mask": "255.255.255.0"})") +
                     "," + R"({"mac": ")" + macOf(6) +
                     R"(", "address": "169.254.7.8", "mask": "255.255.0.0", "ipConfiguration": "dhcp"})");
    // By itself: cameras beside it would answer it instead of this host.
    site.addCameras(site.addAdapter("eth1", "192.168.2.5/24"), camera(8, "192.168.2.5"));
    // Nobody but an answer to ARP tells that it is there.
    const lab::Farm other(network,
                          R"({"neighbours": [{"mac": "02:A0:00:00:00:01", "address": "192.168.1.10"}]})");

    const Visit before(site);
    EXPECT_EQ(before.status(), 1);
    EXPECT_THAT(before.found(), UnorderedElementsAre(
                                    about("outside-subnet", "eth0", 2), about("duplicate-address", "eth0", 4),
                                    about("not-stored", "eth0", 5), about("outside-subnet", "eth0", 6),
                                    about("no-dhcp-server", "eth0", 6), about("host-address", "eth1", 8)));
    EXPECT_THAT(before.object().dump(), Not(HasSubstr("--ip 192.168.1.10 ")));
    // All but one of two that are about the same camera.
    repair(site,
           {before.finding("outside-subnet", macOf(2)), before.finding("duplicate-address"),
            before.finding("not-stored"), before.finding("no-dhcp-server"), before.finding("host-address")});

    const Visit after(site);
    EXPECT_THAT(after.found(), IsEmpty());
    EXPECT_EQ(after.status(), 0);
    EXPECT_EQ(shown(farm, macOf(5))["persistent"]["address"], "192.168.1.40");
    EXPECT_EQ(shown(farm, macOf(1))["address"], "192.168.1.20");
}

TEST_F(Doctor, BringsAdaptersIntoOrder)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), camera(1, "192.168.1.20"));
    site.addCameras(site.addAdapter("bare0", ""), camera(2, "192.168.9.20", R"("answer": "broadcast")"));
    site.addAdapter("bare1", "");
    site.addAdapter("off0", "192.168.7.5/24");
    site.addAdapter("off1", "");
    site.host().run("ip link set off0 down; ip link set off1 down");
    site.addAdapter("twin0", "192.168.1.6/24");
    lab::connect(site.host(), "pulled0", site.router(), "far0");
    lab::connect(site.host(), "pulled1", site.router(), "far1");
    site.host().run("ip address add 192.168.8.5/24 dev pulled0");
    site.router().run("ip link set far0 down; ip link set far1 down");

    const Visit before(site);
    EXPECT_THAT(before.found(),
                UnorderedElementsAre("no-address bare0", "no-address bare1", "adapter-down off0",
                                     "adapter-down off1", "overlapping-adapters twin0", "no-link pulled0",
                                     "no-link pulled1"));
    std::map<std::string, std::string> severities;
    for (const json& each : before.object()["Findings"])
        if (!each["AdapterName"].is_null())
            severities[each["AdapterName"]] = each["Severity"];
    EXPECT_THAT(severities,
                UnorderedElementsAre(Pair("bare0", "error"), Pair("bare1", "warning"),
                                     Pair("off0", "warning"), Pair("off1", "note"), Pair("twin0", "warning"),
                                     Pair("pulled0", "warning"), Pair("pulled1", "note")));
    EXPECT_EQ(before.finding("no-link", "pulled0")["Repair"], json::array());
    repair(site, {before.finding("no-address", "bare0"), before.finding("no-address", "bare1"),
                  before.finding("adapter-down", "off0"), before.finding("adapter-down", "off1"),
                  before.finding("overlapping-adapters")});

    const Visit after(site);
    // That one has no address, has not been seen before.
    EXPECT_THAT(after.found(), UnorderedElementsAre("no-link pulled0", "no-link pulled1", "no-address off1"));
    EXPECT_THAT(site.host().run("ip -o -4 address show bare0"), HasSubstr(" 192.168.9.10/24 "));
}

TEST_F(Doctor, LetsProgramsHearWhatTheReversePathFilterDrops)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                    camera(1, "192.168.1.20") + "," + camera(2, "10.0.0.9"));
    site.addCameras(site.addAdapter("lan0.7", "192.168.2.5/24"),
                    camera(3, "192.168.2.20") + "," + camera(4, "10.0.0.10") + "," + camera(5, "10.0.0.11"));
    site.setReversePathFilter(1);
    const Visit before(site);
    EXPECT_THAT(before.found(),
                UnorderedElementsAre(about("reverse-path-filter", "eth0", 2), "reverse-path-filter lan0.7",
                                     about("outside-subnet", "eth0", 2), about("outside-subnet", "lan0.7", 4),
                                     about("outside-subnet", "lan0.7", 5)));
    EXPECT_THAT(before.finding("reverse-path-filter", "eth0")["Reason"].get<std::string>(),
                MatchesRegex(".* dropped [1-9][0-9]* packets .*"));
    repair(site, {before.finding("reverse-path-filter", "eth0")});
    EXPECT_THAT(Visit(site).found(), AllOf(Not(Contains(about("reverse-path-filter", "eth0", 2))),
                                           Contains("reverse-path-filter lan0.7")));
    repair(site, {before.finding("reverse-path-filter", "lan0.7")});
    EXPECT_THAT(Visit(site).found(),
                UnorderedElementsAre(about("outside-subnet", "eth0", 2), about("outside-subnet", "lan0.7", 4),
                                     about("outside-subnet", "lan0.7", 5)));
}

TEST_F(Doctor, LetsCamerasThroughAllThatMayDropThemInTheFirewall)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), camera(1, "192.168.1.20"));
    site.raiseFirewall();
    site.host().run(
        "nft 'add table ip i; add chain ip i raw { type filter hook prerouting priority -300; };"
        " add chain ip i judge; add rule ip i raw udp sport vmap { 3956 : jump judge };"
        " add rule ip i judge drop;"
        " add table inet harmless; add chain inet harmless in { type filter hook input priority 0; }'");
    // As the filter of the reverse path can drop nothing here.
    site.setReversePathFilter(1);
    const Visit before(site);
    EXPECT_THAT(before.found(), UnorderedElementsAre(about("firewall", "eth0", 1)));
    EXPECT_EQ(before.finding("firewall")["Repair"],
              json({"nft insert rule inet filter input udp sport 3956 accept",
                    "nft insert rule ip i raw udp sport 3956 accept"}));
    EXPECT_EQ(before.finding("firewall")["Severity"], "warning");
    repair(site, {before.finding("firewall")});
    EXPECT_THAT(Visit(site).found(), IsEmpty());
}

TEST_F(Doctor, AsksToBeRunByRootWhereOnlyRootMayLookAtTheFirewall)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), camera(1, "192.168.1.20"));
    site.raiseFirewall();
    const Visit visit(site, {},
                      {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "--inh-caps=+net_raw",
                       "--ambient-caps=+net_raw"});
    EXPECT_THAT(visit.found(), UnorderedElementsAre(about("firewall", "eth0", 1)));
    EXPECT_EQ(visit.finding("firewall")["Repair"], json::array());
    EXPECT_THAT(visit.finding("firewall")["Text"].get<std::string>(), HasSubstr("Run this as root"));
}

TEST_F(Doctor, GivesTheListenerItsPrivilege)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), camera(1, "192.168.1.20"));
    // Root without the powers of root: what a program may do, its file alone says. In a copy of the programs,
    // on a file system of the command's own.
    const std::string doctor = "setpriv --securebits=+noroot --inh-caps=-all " PROGRAM " doctor";
    const lab::Output output = site.host().execute(
        {"unshare", "--mount", "sh", "-c",
         "set -e; copy=$(mktemp -d); trap 'rm -r $copy' EXIT; cp " PROGRAM_FOLDER "/*.so* " PROGRAM_FOLDER
         "/ip-configurator-cli " PROGRAM_FOLDER
         "/ip-configurator-hear $copy; mount -t tmpfs none " PROGRAM_FOLDER "; cp $copy/* " PROGRAM_FOLDER
         "; " +
             doctor +
             " >$copy/before || true; sed -n 's/^      //p' $copy/before >$copy/repair; . $copy/repair; " +
             doctor + " >$copy/after || true; cat $copy/before; echo AFTER; cat $copy/after"});
    const std::string& text = output.standardOutput;
    EXPECT_THAT(text.substr(0, text.find("AFTER")),
                AllOf(HasSubstr("WARNING  no-listener\n"), HasSubstr("\n      setcap cap_net_raw+ep ")))
        << output.standardError;
    EXPECT_THAT(text.substr(text.find("AFTER")), AllOf(HasSubstr("1 camera"), Not(HasSubstr("no-listener"))));
}

TEST_F(Doctor, TellsOfLinksHoldersAndLosses)
{
    lab::Farm& farm = site.addCameras(
        site.addAdapter("eth0", "192.168.1.5/24"),
        camera(1, "192.168.1.20") + "," + camera(2, "192.168.1.21", R"("linkSpeed": 100)") + "," +
            camera(3, "192.168.1.22", R"("heldBy": "192.168.1.77", "heldPrivilege": "control")") + "," +
            camera(4, "192.168.1.23",
                   R"("heldBy": "192.168.1.77", "heldPrivilege": "control", "heartbeatOff": true)") +
            "," +
            camera(5, "192.168.1.24", R"("faults": [{"command": "READREG", "action": "drop", "every": 2}])"));
    const Visit before(site);
    EXPECT_THAT(before.found(),
                UnorderedElementsAre(about("slow-link", "eth0", 2), about("in-use", "eth0", 3),
                                     about("in-use", "eth0", 4), about("in-use-for-ever", "eth0", 4),
                                     about("lossy-network", "eth0", 5)));
    EXPECT_EQ(before.finding("in-use", macOf(3))["Severity"], "note");
    EXPECT_THAT(before.finding("in-use", macOf(3))["Text"].get<std::string>(), HasSubstr("192.168.1.77"));
    EXPECT_THAT(before.finding("slow-link")["Text"].get<std::string>(), HasSubstr("100 Mbit/s"));
    EXPECT_THAT(before.finding("lossy-network")["Text"].get<std::string>(),
                HasSubstr("answered 10 of 20 questions"));
    for (const json& each : before.object()["Findings"])
        EXPECT_EQ(each["Repair"], json::array());
    // What hands do.
    farm.control("release " + macOf(3));
    farm.control("release " + macOf(4));
    farm.control("heal " + macOf(5));
    EXPECT_THAT(Visit(site).found(), UnorderedElementsAre(about("slow-link", "eth0", 2)));
}

TEST_F(Doctor, NamesTheProcessOfThisComputerThatHoldsACamera)
{
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                    camera(1, "192.168.1.20", R"("heartbeatTimeout": 60000)"));
    lab::Process holder = site.host().start({HOLDER, "192.168.1.20", "2"});
    ASSERT_EQ(holder.readLine(), "held");
    const Visit visit(site);
    EXPECT_EQ(visit.status(), 0) << "it is no fault";
    EXPECT_THAT(visit.found(), UnorderedElementsAre(about("in-use", "eth0", 1)));
    EXPECT_THAT(visit.finding("in-use")["Text"].get<std::string>(),
                HasSubstr(" by hold_camera on this computer, process " + std::to_string(holder.id()) +
                          " of the user "));
}

TEST_F(Doctor, TellsOfDevicesThatAreNoCameras)
{
    lab::Switch& network = site.addAdapter("eth0", "192.168.1.5/24");
    site.addCameras(network, camera(1, "192.168.1.20"));
    const lab::Farm others(network, R"({"neighbours": [
        {"mac": "02:A0:00:00:00:01", "asks": "dhcp", "every": 500},
        {"mac": "02:A0:00:00:00:02", "asks": "arp", "address": "169.254.7.7", "every": 500},
        {"mac": "02:A0:00:00:00:03", "asks": "announce", "address": "192.168.1.30", "every": 500},
        {"mac": "00:00:0C:00:00:04", "asks": "announce", "address": "192.168.1.20", "every": 500},
        {"mac": "02:A0:00:00:00:05", "address": "192.168.1.31"}]})");
    const Visit visit(site);
    EXPECT_THAT(visit.found(), UnorderedElementsAre(about("duplicate-address", "eth0", 1),
                                                    "silent-device eth0 02:A0:00:00:00:01",
                                                    "silent-device eth0 02:A0:00:00:00:02",
                                                    "silent-device eth0 02:A0:00:00:00:03",
                                                    "silent-device eth0 00:00:0C:00:00:04"));
    EXPECT_EQ(visit.finding("silent-device", "02:A0:00:00:00:01")["Severity"], "warning");
    EXPECT_EQ(visit.finding("silent-device", "02:A0:00:00:00:02")["Severity"], "warning");
    EXPECT_EQ(visit.finding("silent-device", "02:A0:00:00:00:03")["Severity"], "note");
    EXPECT_EQ(visit.finding("duplicate-address")["Severity"], "error");
    repair(site, {visit.finding("duplicate-address")});
    EXPECT_THAT(Visit(site).found(), Not(Contains(about("duplicate-address", "eth0", 1))));
}

TEST_F(Doctor, TellsOfOneCameraAlone)
{
    lab::Switch& network = site.addAdapter("eth0", "192.168.1.5/24");
    site.addCameras(network,
                    camera(1, "192.168.1.20") + "," + camera(2, "10.0.0.9") + "," + camera(3, "10.0.0.10"));
    site.addAdapter("off0", "192.168.7.5/24");
    site.host().run("ip link set off0 down");
    const lab::Farm others(network,
                           R"({"neighbours": [{"mac": "02:A0:00:00:00:01", "asks": "dhcp", "every": 500}]})");
    const auto outputs = runAtOnce(site.host(), {{PROGRAM, "doctor", "--json", macOf(2)},
                                                 {PROGRAM, "doctor", "020000000101", "--json"},
                                                 {PROGRAM, "doctor", "02:00:00:00:01:99"},
                                                 {PROGRAM, "doctor", "02:A0:00:00:00:01", "--json"},
                                                 {PROGRAM, "doctor", "nonsense"}});
    const auto idsIn = [](const lab::Output& output) {
        std::vector<std::string> ids;
        const json diagnosis = json::parse(output.standardOutput);
        for (const json& each : diagnosis["Findings"])
            ids.push_back(each["Id"]);
        return ids;
    };
    EXPECT_EQ(outputs[0].status, 1);
    EXPECT_THAT(idsIn(outputs[0]), ElementsAre("outside-subnet", "container"));
    EXPECT_EQ(outputs[1].status, 0) << outputs[1].standardError;
    EXPECT_THAT(idsIn(outputs[1]), ElementsAre("container"));
    EXPECT_EQ(outputs[2].status, 3);
    EXPECT_EQ(outputs[2].standardOutput, "");
    EXPECT_THAT(outputs[2].standardError,
                AllOf(HasSubstr("no camera that answered has the MAC address 02:00:00:00:01:99; found:\n"),
                      HasSubstr("    02:00:00:00:01:02  FC-2  10.0.0.9\n")));
    EXPECT_EQ(outputs[3].status, 3);
    EXPECT_THAT(outputs[3].standardError,
                HasSubstr("silent-device: The device 02:A0:00:00:00:01 on eth0 asks"));
    EXPECT_EQ(outputs[4].status, 2);
}

TEST_F(Doctor, ChangesNothing)
{
    lab::Farm& farm = site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                                      camera(1, "192.168.1.20") + "," + camera(2, "10.0.0.9") + "," +
                                          camera(3, "192.168.1.20"));
    site.raiseFirewall();
    const std::string look =
        "ip -4 address; ip link; nft list ruleset; cat /proc/sys/net/ipv4/conf/*/rp_filter";
    const std::string before = site.host().run(look);
    EXPECT_EQ(Visit(site).status(), 1);
    EXPECT_EQ(site.host().run(look), before);
    for (const int number : {1, 2, 3}) {
        const json received = shown(farm, macOf(number))["received"];
        for (const char* command : {"FORCEIP", "WRITEREG", "WRITEMEM"})
            EXPECT_EQ(received[command], 0) << number;
        EXPECT_GT(received["DISCOVERY"], 0);
    }
}
