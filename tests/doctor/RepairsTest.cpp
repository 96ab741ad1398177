// SPDX-License-Identifier: Apache-2.0
// What is to be typed, and that it cannot hurt anybody else.
#include "tests/doctor/Situation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using inventory::Arrival;
using inventory::IpMethod;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr const char* Other = "00:1A:2B:00:00:02";

std::string textOf(const doctor::Finding& finding)
{
    return base::english(finding.text);
}

void hold(inventory::Camera& camera)
{
    camera.status = inventory::Status::InUse;
    camera.privilege = inventory::Privilege::Exclusive;
}

std::string force(const std::string& mac, const std::string& ip, const std::string& mask = "255.255.255.0")
{
    return "ip-configurator-cli force " + mac + " --ip " + ip + " --mask " + mask;
}

} // namespace

TEST(Repairs, GiveACameraOutsideAnAddressOfTheAdaptersSubnet)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9");
    EXPECT_THAT(at.only("outside-subnet").repair, ElementsAre(force(Other, "192.168.1.10")));
    EXPECT_THAT(at.judged().proposals,
                ElementsAre(inventory::Proposal{at.adapter().index, Situation::ip("192.168.1.10")}));
    at.adapter().addresses = {{Situation::ip("169.254.0.9"), 16}, {Situation::ip("172.16.4.1"), 20}};
    EXPECT_THAT(at.only("outside-subnet").repair, ElementsAre(force(Other, "172.16.0.10", "255.255.240.0")))
        << "a link-local address is the worse home";
}

TEST(Repairs, NeverProposeAnAddressThatAnybodyHas)
{
    Situation at;
    at.adapter().addresses = {{Situation::ip("192.168.1.33"), 27}}; // .33 to .62
    at.camera().ip.address = Situation::ip("192.168.1.34");
    at.camera().stored->address = Situation::ip("192.168.1.35");
    at.camera().ip.gateway = Situation::ip("192.168.1.36");
    at.camera().holder = inventory::Endpoint{Situation::ip("192.168.1.37"), 1};
    at.inventory.neighbours.push_back(
        {at.adapter().index, Situation::ip("192.168.1.38"), Situation::mac(Other), false});
    at.say(Arrival::Kind::Speech, "00:1A:2B:00:00:77", "192.168.1.39");
    for (int last = 40; last <= 60; ++last)
        at.taken.insert(Situation::ip("192.168.1." + std::to_string(last)));
    at.addCamera("eth0", Other, "10.0.0.1");
    at.addCamera("eth0", "00:1A:2B:00:00:03", "10.0.0.2");
    at.addCamera("eth0", "00:1A:2B:00:00:04", "10.0.0.3");
    const auto found = at.found("outside-subnet");
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_THAT(found[0].repair, ElementsAre(force(Other, "192.168.1.61", "255.255.255.224")));
    EXPECT_THAT(found[1].repair, ElementsAre(force("00:1A:2B:00:00:03", "192.168.1.62", "255.255.255.224")));
    EXPECT_THAT(found[2].repair, IsEmpty());
    EXPECT_THAT(textOf(found[2]), HasSubstr("No address is free in the subnet of eth0, 192.168.1.33/27"));
}

TEST(Repairs, NeverProposeOneAddressTwice)
{
    Situation at;
    std::set<std::string> lines;
    constexpr unsigned cameras = 1000;
    at.adapter().addresses = {{Situation::ip("172.16.0.5"), 16}};
    for (unsigned i = 0; i < cameras; ++i) {
        base::MacAddress mac = Situation::mac("00:1A:2B:01:00:00");
        mac.bytes[4] = static_cast<std::uint8_t>(i >> 8);
        mac.bytes[5] = static_cast<std::uint8_t>(i);
        at.addCamera("eth0", mac.toText(), "10.0." + std::to_string(i >> 8) + "." + std::to_string(i & 0xFF));
    }
    const doctor::Judgement judgement = at.judged();
    std::set<base::Ipv4> proposed;
    for (const inventory::Proposal& each : judgement.proposals)
        proposed.insert(each.address);
    EXPECT_EQ(proposed.size(), cameras);
    EXPECT_EQ(judgement.proposals.size(), proposed.size());
}

TEST(Repairs, OfTwoFindingsAboutOneCameraAreAboutOneAddress)
{
    Situation at;
    at.addCamera("eth0", Other, "169.254.3.4", "255.255.0.0").method = IpMethod::Dhcp;
    EXPECT_THAT(at.only("outside-subnet").repair, ElementsAre(force(Other, "192.168.1.10")));
    EXPECT_THAT(textOf(at.only("outside-subnet")), HasSubstr("until its next restart"));
    EXPECT_THAT(at.only("no-dhcp-server").repair,
                ElementsAre(std::string("ip-configurator-cli set ") + Other +
                            " --static --ip 192.168.1.10 --mask 255.255.255.0"));
    EXPECT_THAT(at.judged().proposals, SizeIs(1));
}

TEST(Repairs, LetACameraThatIsReachableKeepItsLinkLocalAddress)
{
    Situation at;
    at.adapter().addresses = {{Situation::ip("169.254.9.9"), 16}};
    at.inventory.cameras.clear();
    at.addCamera("eth0", Other, "169.254.3.4", "255.255.0.0").method = IpMethod::Dhcp;
    EXPECT_THAT(at.only("no-dhcp-server").repair,
                ElementsAre(std::string("ip-configurator-cli set ") + Other +
                            " --static --ip 169.254.3.4 --mask 255.255.0.0"));
}

TEST(Repairs, OfASharedAddressMoveTheOneThatIsNotInUseAndNotStatic)
{
    Situation at;
    at.addCamera("eth0", Other, "192.168.1.20").method = IpMethod::Dhcp;
    EXPECT_EQ(at.only("duplicate-address").camera, Situation::mac(Other));
    at.camera(0).method = IpMethod::Dhcp;
    at.camera(1).method = IpMethod::Static;
    EXPECT_EQ(at.only("duplicate-address").camera, Situation::mac(Situation::Mac));
    hold(at.camera(0));
    const doctor::Finding finding = at.only("duplicate-address");
    EXPECT_EQ(finding.camera, Situation::mac(Other));
    EXPECT_THAT(textOf(finding), AllOf(HasSubstr(Other), HasSubstr(Situation::Mac)));
    EXPECT_THAT(finding.repair, ElementsAre(force(Other, "192.168.1.10")));
    hold(at.camera(1));
    EXPECT_THAT(at.only("duplicate-address").repair, IsEmpty());
    EXPECT_THAT(textOf(at.only("duplicate-address")), HasSubstr("close that application"));
}

TEST(Repairs, OfAnAddressThatThreeCamerasShareMoveTwo)
{
    Situation at;
    at.addCamera("eth0", Other, "192.168.1.20");
    at.addCamera("eth0", "00:1A:2B:00:00:03", "192.168.1.20");
    const auto found = at.found("duplicate-address");
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_THAT(found[0].repair, ElementsAre(force(Other, "192.168.1.10")));
    EXPECT_THAT(found[1].repair, ElementsAre(force("00:1A:2B:00:00:03", "192.168.1.11")));
}

TEST(Repairs, KeepAGatewayThatTheNewAddressReaches)
{
    Situation at;
    at.addCamera("eth0", Other, "192.168.1.5").ip.gateway = Situation::ip("192.168.1.254");
    EXPECT_THAT(at.only("host-address").repair,
                ElementsAre(force(Other, "192.168.1.10") + " --gateway 192.168.1.254"));
    at.camera(1).ip = {Situation::ip("10.0.0.9"), Situation::ip("255.0.0.0"), Situation::ip("10.0.0.1")};
    at.camera(1).status = inventory::Status::Unreachable;
    EXPECT_THAT(at.only("outside-subnet").repair, ElementsAre(force(Other, "192.168.1.10")));
}

TEST(Repairs, HaveACameraStoreWhatItHas)
{
    Situation at;
    at.camera().stored->address = Situation::ip("192.168.1.99");
    at.camera().ip.gateway = Situation::ip("192.168.1.254");
    EXPECT_THAT(at.only("not-stored").repair,
                ElementsAre(force(Situation::Mac, "192.168.1.20") + " --gateway 192.168.1.254"));
    hold(at.camera());
    EXPECT_THAT(at.only("not-stored").repair, IsEmpty());
    at.camera().privilege = inventory::Privilege::None;
    at.addCamera("eth0", Other, "192.168.1.20").method = IpMethod::Dhcp;
    EXPECT_THAT(at.only("not-stored").repair, IsEmpty()) << "the address is not good enough to be stored";
}

TEST(Repairs, GiveAnAdapterWithoutAnAddressOneThatFitsMostOfItsCameras)
{
    Situation at;
    at.addAdapter("eth1");
    EXPECT_THAT(at.only("no-address").repair, ElementsAre("ip address add 169.254.1.9/16 dev eth1"));
    at.addCamera("eth1", Other, "10.0.0.9", "255.0.0.0");
    EXPECT_THAT(at.only("no-address").repair, ElementsAre("ip address add 10.0.0.10/8 dev eth1"));
    at.addCamera("eth1", "00:1A:2B:00:00:03", "172.16.4.9", "255.255.0.0");
    at.addCamera("eth1", "00:1A:2B:00:00:04", "172.16.4.8", "255.255.0.0");
    EXPECT_THAT(at.only("no-address").repair, ElementsAre("ip address add 172.16.0.10/16 dev eth1"));
}

TEST(Repairs, GiveAnAdapterNoAddressThatMakesTwoOfOneSubnet)
{
    Situation at;
    at.addAdapter("eth1");
    at.addAdapter("eth2");
    at.addCamera("eth1", Other, "192.168.1.30");
    const auto found = at.found("no-address");
    ASSERT_THAT(found, SizeIs(2));
    // The error comes first.
    EXPECT_THAT(found[0].repair, ElementsAre("ip address add 192.168.10.10/24 dev eth1"));
    EXPECT_THAT(found[1].repair, ElementsAre("ip address add 169.254.1.9/16 dev eth2"));
}

TEST(Repairs, MoveTheOneOfTwoAdaptersBehindWhichThereIsNoCamera)
{
    Situation at;
    at.addAdapter("eth1", "192.168.1.6");
    EXPECT_EQ(at.only("overlapping-adapters").adapterName, "eth1");
    EXPECT_THAT(
        at.only("overlapping-adapters").repair,
        ElementsAre("ip address add 192.168.10.10/24 dev eth1", "ip address del 192.168.1.6/24 dev eth1"));
    at.addCamera("eth1", Other, "192.168.1.30");
    EXPECT_THAT(at.only("overlapping-adapters").repair, IsEmpty());
    EXPECT_THAT(textOf(at.only("overlapping-adapters")), HasSubstr("give one of them an address"));
    at.inventory.cameras.erase(at.inventory.cameras.begin());
    EXPECT_EQ(at.only("overlapping-adapters").adapterName, "eth0");
    at.addAdapter("eth2", "192.168.10.1");
    EXPECT_THAT(at.only("overlapping-adapters").repair.front(),
                testing::StartsWith("ip address add 192.168.11.10/24"));
}

TEST(Repairs, OfThreeAdaptersInOneSubnetMoveTwoOnceEach)
{
    Situation at;
    at.addAdapter("eth1", "192.168.1.6");
    at.addAdapter("eth2", "192.168.1.7");
    const auto found = at.found("overlapping-adapters");
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0].adapterName, "eth1");
    EXPECT_EQ(found[1].adapterName, "eth2");
    EXPECT_NE(found[0].repair, found[1].repair);
}

TEST(Repairs, SwitchTheFilterOffWhereverItIsOn)
{
    Situation at;
    at.addCamera("eth0", Other, "10.0.0.9").hearing.bySocket = false;
    at.adapter().reversePathFilter = 1;
    at.inventory.reversePathDrops = 12;
    EXPECT_THAT(at.only("reverse-path-filter").repair,
                ElementsAre("sysctl -w net.ipv4.conf.eth0.rp_filter=0"));
    EXPECT_THAT(base::english(at.only("reverse-path-filter").reason), HasSubstr("dropped 12 packets"));
    EXPECT_EQ(at.only("reverse-path-filter").camera, Situation::mac(Other));
    at.reversePathFilterOfAll = 1;
    EXPECT_THAT(
        at.only("reverse-path-filter").repair,
        ElementsAre("sysctl -w net.ipv4.conf.eth0.rp_filter=0", "sysctl -w net.ipv4.conf.all.rp_filter=0"));
    // The dot of a VLAN is none between names; and two cameras are one finding.
    at.adapter().name = "eth0.10";
    at.addCamera("eth0.10", "00:1A:2B:00:00:03", "10.0.0.10").hearing.bySocket = false;
    EXPECT_EQ(at.only("reverse-path-filter").repair[0], "sysctl -w net/ipv4/conf/eth0.10/rp_filter=0");
    EXPECT_EQ(at.only("reverse-path-filter").camera, std::nullopt);
}

TEST(Repairs, LetCamerasThroughEachChainThatMayDropThem)
{
    Situation at;
    at.camera().hearing.bySocket = false;
    at.firewall.chains = {{"inet", "filter", "input"}, {"ip", "raw", "PREROUTING"}};
    EXPECT_THAT(at.only("firewall").repair,
                ElementsAre("nft insert rule inet filter input udp sport 3956 accept",
                            "nft insert rule ip raw PREROUTING udp sport 3956 accept"));
    at.firewall.chains.clear();
    EXPECT_THAT(at.only("firewall").repair, IsEmpty());
    EXPECT_THAT(textOf(at.only("firewall")), HasSubstr("perhaps it is one of iptables-legacy"));
    at.firewall.sight = doctor::Firewall::Sight::NotAllowed;
    EXPECT_THAT(textOf(at.only("firewall")), HasSubstr("Run this as root"));
    at.firewall.sight = doctor::Firewall::Sight::NotPossible;
    EXPECT_THAT(textOf(at.only("firewall")), HasSubstr("nft is not installed"));
}

TEST(Repairs, AreThoseOfTheListenerForRoot)
{
    Situation at;
    at.listener = doctor::findListenerFault(inventory::Listener::Unprivileged, "/opt/my tools/hear");
    EXPECT_THAT(at.only("no-listener").repair, ElementsAre("setcap cap_net_raw+ep '/opt/my tools/hear'"));
}

TEST(Repairs, QuoteTheNameOfAnAdapterForAShell)
{
    Situation at;
    at.addAdapter("a;b'c", "192.168.2.5").isUp = false;
    EXPECT_THAT(at.only("adapter-down").repair, ElementsAre("ip link set dev 'a;b'\\''c' up"));
}

TEST(Repairs, AreNotAskedOfACommandWhereHandsAreNeeded)
{
    Situation at;
    at.addAdapter("eth1", "192.168.2.5").hasCarrier = false;
    at.camera().linkSpeed = 100;
    at.camera().hearing.replies = 9;
    hold(at.camera());
    at.camera().isHeartbeatOff = true;
    for (const char* id : {"no-link", "slow-link", "lossy-network", "in-use", "in-use-for-ever"}) {
        EXPECT_THAT(at.only(id).repair, IsEmpty()) << id;
        EXPECT_GE(at.only(id).text.size(), 2u) << id << " has to say what hands do";
    }
}

TEST(Repairs, SayWhoHoldsACamera)
{
    Situation at;
    hold(at.camera());
    EXPECT_THAT(textOf(at.only("in-use")), HasSubstr("in use by some application"));
    at.camera().holder = inventory::Endpoint{Situation::ip("192.168.1.77"), 5000};
    EXPECT_THAT(textOf(at.only("in-use")), HasSubstr("by an application at 192.168.1.77"));
    inventory::Holding& holding = at.holdings[at.camera().mac];
    holding.process = inventory::Process{4711, "viewer", "operator", "viewer --full"};
    holding.reason = {{"It is so.", {}}};
    EXPECT_THAT(textOf(at.only("in-use")),
                HasSubstr("by viewer on this computer, process 4711 of the user operator"));
    EXPECT_THAT(base::english(at.only("in-use").reason), HasSubstr("It is so."));
    holding.isGuess = true;
    EXPECT_THAT(textOf(at.only("in-use")), HasSubstr("perhaps by viewer"));
}
