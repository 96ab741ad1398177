// SPDX-License-Identifier: Apache-2.0
#include "tests/site/World.h"

#include <gmock/gmock.h>

#include <functional>

using namespace base::literals;
using inventory::IpMethod;
using inventory::Status;
using site::Plan;
using testing::HasSubstr;
using testing::SizeIs;
using world::World;

namespace {

std::string obstaclesTo(const Plan& plan)
{
    return english(plan.tasks[0].obstacles);
}

} // namespace

/// Two cameras that are as planned, but for the first one's name; and what is in the way of that.
struct Trouble
{
    const char* name;
    std::function<void(World&)> make;
    std::vector<const char*> told;       ///< Parts of what the first task's obstacles say; none: nothing.
    std::function<void(World&)> relieve; ///< Makes it one that only just is none.

    friend std::ostream& operator<<(std::ostream& out, const Trouble& trouble) { return out << trouble.name; }
};

class Obstacles : public testing::TestWithParam<Trouble>
{};

TEST_P(Obstacles, AreToldInTheirSituationAndNotInOneThatOnlyJustDiffers)
{
    World world(2);
    world.place(0).userName = "left";
    GetParam().make(world);
    const Plan plan = world.plan();
    EXPECT_TRUE(plan.isRefused());
    ASSERT_THAT(plan.tasks[0].obstacles, SizeIs(1)) << obstaclesTo(plan);
    for (const char* part : GetParam().told)
        EXPECT_THAT(obstaclesTo(plan), HasSubstr(part));
    EXPECT_THAT(obstaclesTo(plan), testing::Not(HasSubstr("%")));

    GetParam().relieve(world);
    const Plan healthy = world.plan();
    EXPECT_FALSE(healthy.isRefused()) << obstaclesTo(healthy) << english(healthy.obstacles);
}

/// Gives the first place an address, which its camera has not.
void wantAddress(World& world, base::Ipv4 address)
{
    world.place(0).ip.address = address;
}

const Trouble Troubles[] = {
    {"ItIsHeldBySomebodyWhoIsKnown",
     [](World& world) {
         world.camera(0).status = Status::InUse;
         world.camera(0).privilege = inventory::Privilege::Control;
         world.camera(0).holder = {"192.168.10.9"_ip, 50123};
     },
     {"02:00:00:00:00:01 (FC-1 S1)", "192.168.10.9", "50123", "ip-configurator-cli who 02:00:00:00:00:01"},
     [](World& world) { world.place(0).userName.reset(); }},
    {"ItIsHeldByNobodyKnowsWhom",
     [](World& world) {
         world.camera(0).status = Status::InUse;
         world.camera(0).privilege = inventory::Privilege::Exclusive;
         world.camera(0).registers = inventory::Registers::Refused;
     },
     {"02:00:00:00:00:01 (FC-1 S1)", "in use by another", "ip-configurator-cli who 02:00:00:00:00:01"},
     [](World& world) { world.camera(0).status = Status::Free; }},
    {"ItNamesNoHolder",
     [](World& world) {
         world.camera(0).status = Status::InUse;
         world.camera(0).privilege = inventory::Privilege::Control;
         world.camera(0).holder.emplace();
     },
     {"in use by another"},
     [](World& world) { world.camera(0).status = Status::Free; }},
    {"ItDoesNotTellWhetherItIsHeld",
     [](World& world) {
         world.camera(0).status = Status::InUse;
         world.camera(0).privilege.reset();
         world.camera(0).registers = inventory::Registers::Silent;
     },
     {"does not tell", "ip-configurator-cli who 02:00:00:00:00:01"},
     [](World& world) { world.camera(0).status = Status::Free; }},
    {"ItCannotStoreAnAddress",
     [](World& world) {
         world.camera(0).method = IpMethod::Dhcp;
         world.camera(0).canBeStatic = false;
     },
     {"02:00:00:00:00:01", "cannot store an address"},
     [](World& world) { world::setMethod(world.place(0), IpMethod::LinkLocal); }},
    {"ItCannotAskADHCPServer",
     [](World& world) {
         world::setMethod(world.place(0), IpMethod::Dhcp);
         world.camera(0).canUseDhcp = false;
     },
     {"02:00:00:00:00:01", "cannot ask a DHCP server"},
     [](World& world) { world::setMethod(world.place(0), IpMethod::LinkLocal); }},
    {"ItIsOfAnotherModel",
     [](World& world) { world.place(0).model = "FC-2"; },
     {"02:00:00:00:00:01 (FC-1 S1)", "not of the model FC-2"},
     [](World& world) { world.place(0).model = "FC-1"; }},
    {"ItIsOfAnotherModelAndNothingElseDiffers",
     [](World& world) {
         world.place(0).userName.reset();
         world.place(0).model = "FC-2";
     },
     {"not of the model FC-2"},
     [](World& world) { world.place(0).model = "FC-1"; }},
    {"TwoCamerasCanBeTheOne",
     [](World& world) {
         world.place(0).match = world::byAdapter("line0");
         world.site.places.pop_back();
     },
     {"2 cameras", "02:00:00:00:00:01 (FC-1 S1)", "02:00:00:00:00:02 (FC-1 S2)"},
     [](World& world) { world.place(0).match.serial = "S1"; }},
    {"ItIsTheOneOfAnotherPlaceToo",
     [](World& world) { world.place(1).match = world::bySerial("S1"); },
     {"02:00:00:00:00:01 (FC-1 S1)", "of the place p1, too"},
     [](World& world) { world.place(1).match = world::bySerial("S2"); }},
    {"TheAddressIsThisComputerS",
     [](World& world) { wantAddress(world, "192.168.10.1"_ip); },
     {"192.168.10.1 is this computer's own", "line0"},
     [](World& world) { wantAddress(world, "192.168.10.2"_ip); }},
    {"TheAddressIsThisComputerSOnAnotherAdapter",
     [](World& world) {
         world.inventory.adapters.push_back(world::adapter(3, "office", "10.1.1.1"_ip));
         wantAddress(world, "10.1.1.1"_ip);
     },
     {"10.1.1.1 is this computer's own", "office"},
     [](World& world) { wantAddress(world, "10.1.1.2"_ip); }},
    {"TheAddressIsThatOfACameraOfNoPlace",
     [](World& world) {
         world.site.places.pop_back();
         wantAddress(world, world.camera(1).ip.address);
     },
     {"192.168.10.22", "02:00:00:00:00:02 (FC-1 S2)", "belongs to no place"},
     [](World& world) { world.camera(1).ip.address = "192.168.10.78"_ip; }},
    {"TheAddressIsThatOfACameraThatKeepsWhatDHCPGaveIt",
     [](World& world) {
         world.camera(1).method = IpMethod::Dhcp;
         world::setMethod(world.place(1), IpMethod::Dhcp);
         wantAddress(world, world.camera(1).ip.address);
     },
     {"192.168.10.22", "02:00:00:00:00:02 (FC-1 S2)", "the place p1"},
     [](World& world) { world::setMethod(world.place(1), IpMethod::LinkLocal); }},
    {"TheAddressThatItHasIsThatOfACameraOfNoPlaceAsWell",
     [](World& world) {
         world.site.places.pop_back();
         world.camera(1).ip.address = world.camera(0).ip.address;
     },
     {"192.168.10.21", "02:00:00:00:00:02 (FC-1 S2)"},
     [](World& world) { world.camera(1).ip.address = "192.168.10.78"_ip; }},
    {"TheKernelIsSureThatAMachineHasTheAddress",
     [](World& world) {
         wantAddress(world, "192.168.10.77"_ip);
         world.inventory.neighbours = {{2, "192.168.10.77"_ip, world::mac(99), true}};
     },
     {"192.168.10.77", "another machine, 02:00:00:00:00:64"},
     [](World& world) { world.inventory.neighbours[0].isSure = false; }},
    {"AMachineSaysThatItHasTheAddress",
     [](World& world) {
         wantAddress(world, "192.168.10.77"_ip);
         world.inventory.arrivals = {
             {inventory::Arrival::Kind::Announcement, 2, world::mac(99), "192.168.10.77"_ip},
             {inventory::Arrival::Kind::Speech, 2, world::mac(99), "192.168.10.77"_ip}};
     },
     {"192.168.10.77", "another machine, 02:00:00:00:00:64"},
     [](World& world) {
         for (inventory::Arrival& each : world.inventory.arrivals)
             each.kind = inventory::Arrival::Kind::Probe;
     }},
    {"AMachineHasTheAddressThatItHas",
     [](World& world) {
         world.camera(0).conflicts = {{inventory::Conflict::With::Machine, world::mac(99)}};
     },
     {"192.168.10.21", "another machine, 02:00:00:00:00:64"},
     [](World& world) { wantAddress(world, "192.168.10.77"_ip); }},
    {"TheKernelRemembersThatItWasTheAddressOfTheOtherCameraAndAMachineHasIt",
     [](World& world) {
         wantAddress(world, "192.168.10.77"_ip);
         world.inventory.neighbours = {{2, "192.168.10.77"_ip, world::mac(1), true},
                                       {2, "192.168.10.77"_ip, world::mac(99), true}};
     },
     {"another machine, 02:00:00:00:00:64"},
     [](World& world) { world.inventory.neighbours.pop_back(); }},
    {"NoAddressIsFreeForACircle",
     [](World& world) {
         world.inventory.adapters[0].addresses = {{"192.168.10.21"_ip, 30}};
         world.inventory.adapters[0].addresses[0].address = "192.168.10.1"_ip;
         world.camera(0).ip.address = "192.168.10.2"_ip;
         world.camera(1).ip.address = "192.168.10.3"_ip;
         world.place(0).ip = {"192.168.10.3"_ip, "255.255.255.252"_ip, {}};
         world.place(1).ip = {"192.168.10.2"_ip, "255.255.255.252"_ip, {}};
     },
     {"2 places", "02:00:00:00:00:01", "none is free"},
     [](World& world) { world.inventory.adapters[0].addresses[0].prefixLength = 24; }},
};

INSTANTIATE_TEST_SUITE_P(All, Obstacles, testing::ValuesIn(Troubles),
                         [](const auto& each) { return std::string(each.param.name); });
