// SPDX-License-Identifier: Apache-2.0
// Each finding in its situation, and not in one that only just differs from it.
#include "tests/doctor/Situation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

using doctor::Severity;
using inventory::Arrival;
using inventory::IpMethod;
using inventory::Listener;
using inventory::Privilege;
using inventory::Registers;
using inventory::Status;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

constexpr const char* Other = "00:1A:2B:00:00:02";
constexpr const char* Device = "00:1A:2B:00:00:99";

using Change = std::function<void(Situation&)>;

struct Trouble
{
    const char* name;
    const char* id;
    Severity severity;
    Change make;      ///< Makes the trouble,
    Change neighbour; ///< and this something like it that is none.
};

void PrintTo(const Trouble& trouble, std::ostream* out)
{
    *out << trouble.name;
}

/// As a filter or a firewall leaves it.
void hearOnlyByListener(inventory::Camera& camera)
{
    camera.hearing.bySocket = false;
}

void dropByFilter(Situation& at)
{
    at.addCamera("eth0", Other, "10.0.0.9");
    hearOnlyByListener(at.camera(1));
    at.adapter().reversePathFilter = 2;
    at.inventory.reversePathDrops = 6;
}

void hold(inventory::Camera& camera, bool isHeartbeatOff = false)
{
    camera.status = Status::InUse;
    camera.privilege = Privilege::Control;
    camera.isHeartbeatOff = isHeartbeatOff;
}

const Trouble Troubles[] = {
    {"NoLinkWithAnAddress", "no-link", Severity::Warning,
     [](Situation& at) { at.addAdapter("eth1", "192.168.2.5").hasCarrier = false; },
     [](Situation& at) { at.addAdapter("eth1", "192.168.2.5"); }},
    {"NoLinkWithoutAnAddress", "no-link", Severity::Note,
     [](Situation& at) { at.addAdapter("eth1").hasCarrier = false; },
     [](Situation& at) {
         // Where nothing is virtual yet, there is no cable to plug in.
         auto& bridge = at.addAdapter("docker0", "172.17.0.1", 16);
         bridge.kind = "bridge";
         bridge.hasCarrier = false;
     }},
    {"NoLinkOfABridgeWithPorts", "no-link", Severity::Warning,
     [](Situation& at) {
         at.addAdapter("eth1").hasCarrier = false;
         auto& bridge = at.addAdapter("br0", "192.168.2.5");
         bridge.kind = "bridge";
         bridge.hasCarrier = false;
         at.adapter("eth1").master = bridge.index;
         at.adapter("eth1").hasCarrier = true;
     },
     [](Situation& at) {
         auto& tunnel = at.addAdapter("wg0", "10.8.0.1");
         tunnel.isEthernet = tunnel.hasCarrier = false;
     }},
    {"AdapterDownWithAnAddress", "adapter-down", Severity::Warning,
     [](Situation& at) { at.addAdapter("eth1", "192.168.2.5").isUp = false; },
     [](Situation& at) { at.addAdapter("eth1", "192.168.2.5").hasCarrier = false; }},
    {"AdapterDownWithoutAnAddress", "adapter-down", Severity::Note,
     [](Situation& at) { at.addAdapter("eth1").isUp = false; },
     [](Situation& at) {
         auto& dummy = at.addAdapter("dummy0");
         dummy.isUp = false;
         dummy.kind = "dummy";
     }},
    {"NoAddressAndNoCamera", "no-address", Severity::Warning, [](Situation& at) { at.addAdapter("eth1"); },
     [](Situation& at) {
         auto& bridge = at.addAdapter("br0", "192.168.2.5");
         bridge.kind = "bridge";
         const unsigned index = bridge.index;
         at.addAdapter("eth1").master = index;
     }},
    {"NoAddressAndACamera", "no-address", Severity::Error,
     [](Situation& at) {
         at.addAdapter("eth1");
         at.addCamera("eth1", Other, "192.168.2.20");
     },
     [](Situation& at) {
         at.addAdapter("eth1", "192.168.2.5");
         at.addCamera("eth1", Other, "192.168.2.20");
     }},
    {"OutsideSubnet", "outside-subnet", Severity::Error,
     [](Situation& at) { at.addCamera("eth0", Other, "10.0.0.9"); },
     [](Situation& at) {
         // Another adapter that hears it reaches it.
         at.addAdapter("eth1", "10.0.0.5");
         at.addCamera("eth0", Other, "10.0.0.9");
         at.addCamera("eth1", Other, "10.0.0.9");
     }},
    {"OutsideSubnetOfWhoHasNone", "outside-subnet", Severity::Error,
     [](Situation& at) { at.addCamera("eth0", Other, "192.168.2.20"); },
     [](Situation& at) {
         // That the adapter has no address is what is wrong, not the camera's.
         at.addAdapter("eth1");
         at.addCamera("eth1", Other, "192.168.2.20");
     }},
    {"TwoCamerasOfOneAddress", "duplicate-address", Severity::Error,
     [](Situation& at) { at.addCamera("eth0", Other, "192.168.1.20"); },
     [](Situation& at) { at.addCamera("eth0", Other, "192.168.1.21"); }},
    {"ACameraAndAMachineOfOneAddress", "duplicate-address", Severity::Error,
     [](Situation& at) { at.say(Arrival::Kind::Speech, Device, "192.168.1.20"); },
     [](Situation& at) { at.say(Arrival::Kind::Speech, Situation::Mac, "192.168.1.20"); }},
    {"CamerasWithoutAddresses", "outside-subnet", Severity::Error,
     [](Situation& at) {
         at.addCamera("eth0", Other, "0.0.0.0");
         at.addCamera("eth0", Device, "0.0.0.0");
     },
     [](Situation&) {}},
    {"HostAddress", "host-address", Severity::Error,
     [](Situation& at) { at.addCamera("eth0", Other, "192.168.1.5"); },
     [](Situation& at) { at.addCamera("eth0", Other, "192.168.1.6"); }},
    {"OverlappingAdapters", "overlapping-adapters", Severity::Warning,
     [](Situation& at) { at.addAdapter("eth1", "192.168.0.9", 16); },
     [](Situation& at) { at.addAdapter("eth1", "192.168.0.9", 24); }},
    {"OverlappingAdaptersThatAreOn", "overlapping-adapters", Severity::Warning,
     [](Situation& at) { at.addAdapter("eth1", "192.168.1.9").hasCarrier = false; },
     [](Situation& at) { at.addAdapter("eth1", "192.168.1.9").isUp = false; }},
    {"ReversePathFilter", "reverse-path-filter", Severity::Warning, dropByFilter,
     [](Situation& at) {
         dropByFilter(at);
         at.camera(1).hearing.bySocket = true;
     }},
    {"ReversePathFilterThatIsOn", "reverse-path-filter", Severity::Warning, dropByFilter,
     [](Situation& at) {
         dropByFilter(at);
         at.adapter().reversePathFilter = 0;
     }},
    {"ReversePathFilterThatDropped", "reverse-path-filter", Severity::Warning, dropByFilter,
     [](Situation& at) {
         dropByFilter(at);
         at.inventory.reversePathDrops = 0;
     }},
    {"StrictFilterOnTheWrongOfTwoAdapters", "reverse-path-filter", Severity::Warning,
     [](Situation& at) {
         hearOnlyByListener(at.camera());
         at.adapter().reversePathFilter = 1;
         at.inventory.reversePathDrops = 6;
         at.addAdapter("eth1", "192.168.1.6");
     },
     [](Situation& at) {
         // A camera in the subnet is none that it drops: the drops were others'.
         hearOnlyByListener(at.camera());
         at.adapter().reversePathFilter = 1;
         at.inventory.reversePathDrops = 6;
     }},
    {"Firewall", "firewall", Severity::Warning, [](Situation& at) { hearOnlyByListener(at.camera()); },
     dropByFilter},
    {"FirewallAndNotTheKernelItself", "firewall", Severity::Warning,
     [](Situation& at) { hearOnlyByListener(at.camera()); },
     [](Situation& at) { hearOnlyByListener(at.addCamera("eth0", Other, "192.168.1.5")); }},
    {"FirewallAndNotTheMissingAddress", "firewall", Severity::Warning,
     [](Situation& at) { hearOnlyByListener(at.camera()); },
     [](Situation& at) {
         at.addAdapter("eth1");
         hearOnlyByListener(at.addCamera("eth1", Other, "192.168.2.20"));
     }},
    {"NoListener", "no-listener", Severity::Warning,
     [](Situation& at) { at.listener = doctor::findListenerFault(Listener::Missing, "/nowhere/hear"); },
     [](Situation& at) { at.listener = doctor::findListenerFault(Listener::Hears, "/nowhere/hear"); }},
    {"SlowLinkOfACamera", "slow-link", Severity::Warning, [](Situation& at) { at.camera().linkSpeed = 100; },
     [](Situation& at) { at.camera().linkSpeed = 2500, at.adapter().linkSpeed = 2500; }},
    {"SlowLinkOfAnAdapter", "slow-link", Severity::Warning,
     [](Situation& at) { at.adapter().linkSpeed = 100; },
     [](Situation& at) { at.adapter().linkSpeed.reset(); }},
    {"SlowLinkThatIsKnown", "slow-link", Severity::Warning, [](Situation& at) { at.camera().linkSpeed = 10; },
     [](Situation& at) { at.camera().linkSpeed = 0, at.adapter().linkSpeed = 100; }},
    {"InUse", "in-use", Severity::Note, [](Situation& at) { hold(at.camera()); },
     [](Situation& at) {
         // It may only have kept silent.
         at.camera().status = Status::InUse;
         at.camera().privilege.reset();
     }},
    {"InUseForEver", "in-use-for-ever", Severity::Warning, [](Situation& at) { hold(at.camera(), true); },
     [](Situation& at) { at.camera().isHeartbeatOff = true; }},
    {"InUseForEverByTheHeartbeat", "in-use-for-ever", Severity::Warning,
     [](Situation& at) { hold(at.camera(), true); }, [](Situation& at) { hold(at.camera()); }},
    {"NoDhcpServer", "no-dhcp-server", Severity::Warning,
     [](Situation& at) { at.addCamera("eth0", Other, "169.254.3.4", "255.255.0.0").method = IpMethod::Dhcp; },
     [](Situation& at) {
         at.addCamera("eth0", Other, "169.254.3.4", "255.255.0.0").method = IpMethod::LinkLocal;
     }},
    {"NoDhcpServerForALinkLocalAddress", "no-dhcp-server", Severity::Warning,
     [](Situation& at) { at.addCamera("eth0", Other, "169.254.3.4", "255.255.0.0").method = IpMethod::Dhcp; },
     [](Situation& at) { at.camera().method = IpMethod::Dhcp; }},
    {"NotStored", "not-stored", Severity::Warning,
     [](Situation& at) { at.camera().stored->address = Situation::ip("192.168.1.99"); },
     [](Situation& at) {
         at.camera().stored->address = Situation::ip("192.168.1.99");
         at.camera().method = IpMethod::Dhcp;
     }},
    {"NotStoredGateway", "not-stored", Severity::Warning,
     [](Situation& at) { at.camera().stored->gateway = Situation::ip("192.168.1.1"); },
     [](Situation& at) { at.camera().stored.reset(); }},
    {"LossyNetwork", "lossy-network", Severity::Warning,
     [](Situation& at) { at.camera().hearing.replies = 18; },
     [](Situation& at) { at.camera().hearing.replies = 19; }},
    {"LossyNetworkWithManyQuestions", "lossy-network", Severity::Warning,
     [](Situation& at) { at.camera().hearing.questions = 200, at.camera().hearing.replies = 180; },
     [](Situation& at) { at.camera().hearing.questions = 200, at.camera().hearing.replies = 181; }},
    {"LossThatIsNotChance", "lossy-network", Severity::Warning,
     [](Situation& at) { at.camera().hearing.questions = 5, at.camera().hearing.replies = 3; },
     [](Situation& at) { at.camera().hearing.questions = 5, at.camera().hearing.replies = 4; }},
    {"LossOfEverything", "lossy-network", Severity::Warning,
     [](Situation& at) {
         at.camera().registers = Registers::Silent;
         at.camera().hearing.questions = at.camera().hearing.replies = 0;
     },
     [](Situation& at) {
         // The other one with the address has the questions.
         at.camera().registers = Registers::Silent;
         at.camera().hearing.questions = at.camera().hearing.replies = 0;
         at.addCamera("eth0", Other, "192.168.1.20");
     }},
    {"LossThatIsNotTheKernelsError", "lossy-network", Severity::Warning,
     [](Situation& at) {
         at.camera().registers = Registers::Silent;
         at.inventory.neighbours = {{at.adapter().index, at.camera().ip.address, at.camera().mac, false}};
     },
     [](Situation& at) {
         // The kernel sends what is for it to a camera that had the address before.
         at.camera().registers = Registers::Silent;
         at.addCamera("eth0", Other, "192.168.1.21");
         at.inventory.neighbours = {
             {at.adapter().index, at.camera().ip.address, Situation::mac(Other), false}};
     }},
    {"SilentDevice", "silent-device", Severity::Note,
     [](Situation& at) { at.say(Arrival::Kind::Announcement, Device, "192.168.1.30"); },
     [](Situation& at) { at.say(Arrival::Kind::Speech, Device, "192.168.1.30"); }},
    {"SilentDeviceThatIsNoCamera", "silent-device", Severity::Note,
     [](Situation& at) { at.say(Arrival::Kind::DhcpRequest, Device); },
     [](Situation& at) { at.say(Arrival::Kind::DhcpRequest, Situation::Mac); }},
    {"SilentDeviceThatIsNotThisComputer", "silent-device", Severity::Note,
     [](Situation& at) { at.say(Arrival::Kind::Probe, Device, "169.254.7.7"); },
     [](Situation& at) {
         at.say(Arrival::Kind::Probe, at.addAdapter("eth1", "192.168.2.5").mac.toText(), "169.254.7.7");
     }},
    {"SilentDeviceThatAsksADhcpServerInVain", "silent-device", Severity::Warning,
     [](Situation& at) {
         at.say(Arrival::Kind::DhcpRequest, Device);
         at.say(Arrival::Kind::DhcpRequest, Device);
     },
     [](Situation&) {}},
    {"SilentDeviceThatProbesInVain", "silent-device", Severity::Warning,
     [](Situation& at) {
         at.say(Arrival::Kind::Probe, Device, "169.254.7.7");
         at.say(Arrival::Kind::Probe, Device, "169.254.7.8");
     },
     [](Situation&) {}},
    {"Container", "container", Severity::Note, [](Situation& at) { at.adapter().kind = "veth"; },
     [](Situation& at) { at.addAdapter("veth0", "172.18.0.1").kind = "veth"; }},
    {"ContainerWithoutCameras", "container", Severity::Warning,
     [](Situation& at) {
         at.adapter().kind = "veth";
         at.inventory.cameras.clear();
     },
     [](Situation& at) { at.inventory.cameras.clear(); }},
    {"ContainerWithoutAdapters", "container", Severity::Warning,
     [](Situation& at) {
         at.inventory.adapters.clear();
         at.inventory.cameras.clear();
     },
     [](Situation&) {}},
};

class Findings : public testing::TestWithParam<Trouble>
{};

} // namespace

TEST_P(Findings, AreMadeInTheirSituationAndNotInOneThatOnlyJustDiffers)
{
    const Trouble& trouble = GetParam();
    Situation bad;
    trouble.make(bad);
    const auto found = bad.found(trouble.id);
    ASSERT_THAT(found, Not(IsEmpty()));
    for (const doctor::Finding& finding : found) {
        EXPECT_EQ(finding.severity, trouble.severity);
        EXPECT_THAT(base::english(finding.text), Not(testing::HasSubstr("%")));
        EXPECT_THAT(base::english(finding.reason), Not(testing::HasSubstr("%")));
        EXPECT_THAT(finding.text, Not(IsEmpty()));
        EXPECT_THAT(finding.reason, Not(IsEmpty()));
    }
    Situation good;
    trouble.neighbour(good);
    EXPECT_THAT(good.found(trouble.id), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, Findings, testing::ValuesIn(Troubles),
                         [](const testing::TestParamInfo<Trouble>& trouble) { return trouble.param.name; });

TEST(Judgement, FindsNothingInANetworkInOrder)
{
    Situation order;
    EXPECT_THAT(order.judged().findings, IsEmpty());
    EXPECT_THAT(order.judged().proposals, IsEmpty());
}

TEST(Judgement, HasTheWorstFirst)
{
    Situation at;
    hold(at.camera());
    at.camera().linkSpeed = 100;
    at.addCamera("eth0", Other, "10.0.0.9");
    std::vector<std::string> ids;
    for (const doctor::Finding& each : at.judged().findings)
        ids.push_back(each.id);
    EXPECT_THAT(ids, testing::ElementsAre("outside-subnet", "slow-link", "in-use"));
}

TEST(Judgement, NamesModelAndMacOfTheCamera)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9");
    const doctor::Finding finding = at.only("outside-subnet");
    EXPECT_EQ(finding.camera, Situation::mac(Other));
    EXPECT_EQ(finding.adapterName, "eth0");
    EXPECT_THAT(base::english(finding.text), testing::HasSubstr("FC-1 (00:1A:2B:00:00:02)"));
    EXPECT_THAT(base::english(finding.reason), testing::HasSubstr("192.168.1.5/24"));
}

TEST(Judgement, ADeviceThatGotItsAddressDoesNotAskInVain)
{
    Situation at;
    // As one does that a server answers: once for any address, once for the one that it was offered.
    at.say(Arrival::Kind::DhcpRequest, Device);
    at.say(Arrival::Kind::DhcpRequest, Device, "192.168.1.30");
    EXPECT_EQ(at.only("silent-device").severity, Severity::Note);
    // And one that claims an address by itself.
    for (int i = 0; i < 3; ++i)
        at.say(Arrival::Kind::Probe, Device, "169.254.7.7");
    at.say(Arrival::Kind::Announcement, Device, "169.254.7.7");
    EXPECT_EQ(at.only("silent-device").severity, Severity::Note);
}

TEST(Judgement, TellsOfManyDevicesByTheirNumberAndOfThoseInVainFirst)
{
    Situation at;
    for (unsigned i = 0; i < 4000; ++i) {
        base::MacAddress mac = Situation::mac("00:1A:2B:01:00:00");
        mac.bytes[4] = static_cast<std::uint8_t>(i >> 8);
        mac.bytes[5] = static_cast<std::uint8_t>(i);
        at.say(Arrival::Kind::Announcement, mac.toText(), "192.168.1.30");
    }
    at.say(Arrival::Kind::DhcpRequest, Device);
    at.say(Arrival::Kind::DhcpRequest, Device);
    const auto found = at.found("silent-device");
    ASSERT_THAT(found, SizeIs(21));
    EXPECT_EQ(found.front().camera, Situation::mac(Device));
    EXPECT_THAT(base::english(found.back().text), testing::StartsWith("3981 more devices"));
}

TEST(Judgement, SpeaksOnceOfACameraThatTwoAdaptersHear)
{
    Situation at;
    at.addAdapter("eth1", "192.168.2.5");
    at.addCamera("eth0", Other, "10.0.0.9");
    at.addCamera("eth1", Other, "10.0.0.9");
    EXPECT_THAT(at.found("outside-subnet"), SizeIs(1));
    // It does not share its address with itself.
    EXPECT_THAT(at.found("duplicate-address"), IsEmpty());
}
