// SPDX-License-Identifier: Apache-2.0
#include "tests/network/DiscoveryConditions.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr const char* HostAddress = "192.168.1.5/24";

/// Two cameras in the host's subnet, five in other ones; no two answer alike.
constexpr const char* MixedCameras = R"(
    {"mac": "02:00:00:00:01:01", "address": "192.168.1.20"},
    {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "answer": "broadcast"},
    {"mac": "02:00:00:00:01:03", "address": "10.0.0.9"},
    {"mac": "02:00:00:00:01:04", "address": "10.0.0.10", "answer": "broadcast"},
    {"mac": "02:00:00:00:01:05", "address": "10.0.0.11", "answer": "arp"},
    {"mac": "02:00:00:00:01:06", "address": "169.254.7.7", "mask": "255.255.0.0", "ipConfiguration": "lla"},
    {"mac": "02:00:00:00:01:07", "address": "172.16.0.9", "gateway": "172.16.0.1"})";
constexpr unsigned MixedCount = 7;

constexpr const char* Cameras256 = R"(
    {"mac": "02:00:00:00:10:00", "address": "192.168.4.1", "mask": "255.255.0.0", "repeat": 256})";

void buildMixed(Site& site)
{
    site.addCameras(site.addAdapter("eth0", HostAddress), MixedCameras);
}

void build256(Site& site)
{
    site.addCameras(site.addAdapter("eth0", "192.168.0.5/16"), Cameras256);
}

DiscoveryCondition reversePathFilter(int mode, bool hasDefaultRoute)
{
    const std::string number = std::to_string(mode);
    return {"ReversePathFilter" + number + (hasDefaultRoute ? "WithADefaultRoute" : "WithoutDefaultRoute"),
            "rp_filter " + number + (hasDefaultRoute ? ", a default route" : ", no default route"),
            MixedCount, [=](Site& site) {
                buildMixed(site);
                site.setReversePathFilter(mode);
                if (hasDefaultRoute)
                    site.host().run("ip route add default via 192.168.1.254");
            }};
}

DiscoveryCondition twoAdapters(const std::string& name, const std::string& description,
                               const std::string& mask, const std::string& firstTwoOctets)
{
    return {name, description, 6, [=](Site& site) {
                const auto cameras = [&](const std::string& number) {
                    return R"({"mac": "02:00:00:00:0)" + number + R"(:01", "address": ")" + firstTwoOctets +
                           "." + number + R"(.20", "mask": "255.255.0.0", "repeat": 3})";
                };
                for (const std::string number : {"1", "2"}) {
                    auto& network =
                        site.addAdapter("eth" + number, firstTwoOctets + "." + number + ".5/" + mask);
                    site.addCameras(network, cameras(number));
                }
            }};
}

} // namespace

std::ostream& operator<<(std::ostream& out, const DiscoveryCondition& condition)
{
    return out << condition.description;
}

const std::vector<DiscoveryCondition>& discoveryConditions()
{
    static const std::vector<DiscoveryCondition> conditions{
        {"InsideAndOutsideTheSubnet", "inside and outside the subnet, by unicast or broadcast", MixedCount,
         buildMixed},
        reversePathFilter(0, false),
        reversePathFilter(0, true),
        reversePathFilter(1, false),
        reversePathFilter(1, true),
        reversePathFilter(2, false),
        reversePathFilter(2, true),
        {"FirewallThatPassesEstablishedConnections", "firewall: input drop, established accept", MixedCount,
         [](Site& site) {
             buildMixed(site);
             site.raiseFirewall();
         }},
        {"FirewallAndStrictReversePathFilter", "the same firewall and rp_filter 1", MixedCount,
         [](Site& site) {
             buildMixed(site);
             site.raiseFirewall();
             site.setReversePathFilter(1);
         }},
        {"BehindItsGateway", "outside the subnet, answering through a router", 1,
         [](Site& site) {
             auto& network = site.addAdapter("eth0", HostAddress);
             network.attach(site.router(), "lan", "192.168.1.254/24");
             site.router().run("ip addr add 172.16.0.1/24 dev lan; echo 1 > /proc/sys/net/ipv4/ip_forward");
             site.addCameras(
                 network,
                 R"({"mac": "02:00:00:00:01:07", "address": "172.16.0.9", "gateway": "172.16.0.1"})");
         }},
        {"TenPercentLossAtTheSwitch", "20 cameras, 10 % loss at each crossing of the switch", 20,
         [](Site& site) {
             auto& network = site.addAdapter("eth0", HostAddress);
             site.addCameras(network, R"(
                {"mac": "02:00:00:00:02:01", "address": "192.168.1.20", "repeat": 10},
                {"mac": "02:00:00:00:03:01", "address": "10.0.0.20", "repeat": 10})");
             network.loseFrames(10);
         },
         // In the first one each camera in the subnet has yet to ask for the host's MAC, and may miss its
         // turn.
         40, 0.995},
        {"AnswersHeldBack950Milliseconds", "answers held back 950 ms", 20,
         [](Site& site) {
             site.addCameras(site.addAdapter("eth0", HostAddress), R"(
                {"mac": "02:00:00:00:02:01", "address": "192.168.1.20", "repeat": 10, "answerDelay": 950},
                {"mac": "02:00:00:00:03:01", "address": "10.0.0.20", "repeat": 10, "answerDelay": 950})");
         }},
        {"On256Cameras", "256 cameras on one adapter", 256, build256},
        {"On256CamerasSilentToRegisterReads", "256 cameras, silent to register reads", 256,
         [](Site& site) {
             site.addCameras(site.addAdapter("eth0", "192.168.0.5/16"), R"(
                {"mac": "02:00:00:00:10:00", "address": "192.168.4.1", "mask": "255.255.0.0", "repeat": 256,
                 "faults": [{"command": "READREG", "action": "drop"}]})");
         }},
        twoAdapters("TwoAdaptersInOneSubnet", "two adapters in one subnet", "16", "192.168"),
        twoAdapters("TwoLinkLocalAdapters", "two link-local adapters", "16", "169.254"),
        {"OneAdapterDownOneWithoutAddressOneThatCannotSend",
         "one adapter down, one without address, one that cannot send", MixedCount,
         [](Site& site) {
             site.addAdapter("down0", "192.168.7.5/24");
             site.host().run("ip link set down0 down");
             site.addAdapter("bare0", "");
             site.addAdapter("mute0", "192.168.8.5/24");
             site.host().run("nft 'add table inet mute;"
                             " add chain inet mute output { type filter hook output priority 0; };"
                             " add rule inet mute output oifname mute0 drop'");
             buildMixed(site);
         }},
        {"NoiseAmongTheAnswers", "truncated, oversized, foreign, duplicate, random answers, wrong ids", 20,
         [](Site& site) {
             site.addCameras(site.addAdapter("eth0", HostAddress), R"(
                {"mac": "02:00:00:00:02:01", "address": "192.168.1.20", "repeat": 10,
                 "noise": ["truncated", "oversized", "foreign", "duplicate", "random", "wrongId"]},
                {"mac": "02:00:00:00:03:01", "address": "10.0.0.20", "repeat": 10,
                 "noise": ["wrongId", "random", "duplicate", "foreign", "oversized", "truncated"]})");
         }},
        {"OneCameraSeenByTwoAdapters", "one camera seen by two adapters", 1,
         [](Site& site) {
             auto& network = site.addAdapter("eth0", "10.0.0.5/24");
             network.attach(site.host(), "eth1", HostAddress);
             // Each adapter says that it has the other one's address too, and the camera believes one.
             site.addCameras(network, R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20"})");
         }},
    };
    return conditions;
}

const DiscoveryCondition& discoveryCondition(const std::string& name)
{
    const auto& all = discoveryConditions();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&name](const auto& condition) { return condition.name == name; });
    if (found == all.end())
        throw std::invalid_argument("no condition is named " + name);
    return *found;
}
