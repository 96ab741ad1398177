// SPDX-License-Identifier: Apache-2.0
#include "tests/site/World.h"

#include <gmock/gmock.h>

#include <functional>

using namespace base::literals;
using inventory::Camera;
using inventory::IpMethod;
using inventory::Status;
using site::Action;
using site::Plan;
using testing::IsEmpty;
using testing::SizeIs;
using world::World;

/// One camera, as planned, and what is to be done when that differs.
struct Difference
{
    const char* name;
    std::function<void(Camera& camera, site::Place& place)> make;
    std::vector<Action> actions;

    friend std::ostream& operator<<(std::ostream& out, const Difference& difference)
    {
        return out << difference.name;
    }
};

class PlannedActions : public testing::TestWithParam<Difference>
{};

TEST_P(PlannedActions, AreThoseThatTheDifferenceTakes)
{
    World world(1);
    GetParam().make(world.camera(0), world.place(0));
    const Plan plan = world.plan();
    ASSERT_THAT(plan.tasks, SizeIs(1));
    EXPECT_EQ(plan.tasks[0].actions, GetParam().actions);
    EXPECT_FALSE(plan.isRefused()) << english(plan.tasks[0].obstacles);
    EXPECT_EQ(plan.hasActions(), !GetParam().actions.empty());
    EXPECT_THAT(plan.tasks[0].waitsFor, IsEmpty());
    EXPECT_THAT(plan.warnings, IsEmpty());
}

const Difference Differences[] = {
    {"NothingDiffers", [](Camera&, site::Place&) {}, {}},
    {"ItHasAnotherAddress",
     [](Camera& camera, site::Place&) { camera.ip.address = "192.168.10.77"_ip; },
     {Action::Force}},
    {"ItHasAnotherMask",
     [](Camera& camera, site::Place&) { camera.ip.mask = "255.255.0.0"_ip; },
     {Action::Force}},
    {"ItHasAnotherGateway",
     [](Camera& camera, site::Place&) { camera.ip.gateway = "192.168.10.254"_ip; },
     {Action::Force}},
    {"ItHasAndStoresAnotherAddress",
     [](Camera& camera, site::Place&) {
         camera.ip.address = "192.168.10.77"_ip;
         camera.stored = camera.ip;
     },
     {Action::Force, Action::Store}},
    {"ItStoresAnotherAddress",
     [](Camera& camera, site::Place&) { camera.stored->address = "192.168.10.77"_ip; },
     {Action::Store}},
    {"ItStoresAnotherGateway",
     [](Camera& camera, site::Place&) { camera.stored->gateway = "192.168.10.254"_ip; },
     {Action::Store}},
    {"ItDoesNotTellWhatItStores", [](Camera& camera, site::Place&) { camera.stored.reset(); }, {}},
    {"ItHasAnotherAddressAndDoesNotTellWhatItStores",
     [](Camera& camera, site::Place&) {
         camera.ip.address = "192.168.10.77"_ip;
         camera.stored.reset();
     },
     {Action::Force, Action::Store}},
    {"ItHasTheAddressByDHCPAndStoresIt",
     [](Camera& camera, site::Place&) { camera.method = IpMethod::Dhcp; },
     {Action::Configure, Action::Restart}},
    {"ItHasTheAddressByDHCPAndDoesNotTellWhatItStores",
     [](Camera& camera, site::Place&) {
         camera.method = IpMethod::Dhcp;
         camera.stored.reset();
     },
     {Action::Store, Action::Configure, Action::Restart}},
    {"AllDiffers",
     [](Camera& camera, site::Place& place) {
         camera.method = IpMethod::LinkLocal;
         camera.ip = {"169.254.3.4"_ip, "255.255.0.0"_ip, {}};
         camera.stored.emplace();
         place.userName = "left";
     },
     {Action::Force, Action::Store, Action::Configure, Action::Name, Action::Restart}},
    {"ItHasAnotherName", [](Camera&, site::Place& place) { place.userName = "left"; }, {Action::Name}},
    {"ItHasANameAndIsToHaveNone", [](Camera&, site::Place& place) { place.userName = ""; }, {Action::Name}},
    {"ItHasThatName",
     [](Camera& camera, site::Place& place) { place.userName = camera.userName = "left"; },
     {}},
    {"ItIsToAskForItsAddress",
     [](Camera&, site::Place& place) { world::setMethod(place, IpMethod::Dhcp); },
     {Action::Configure, Action::Restart}},
    {"ItAsksForItsAddressAsPlanned",
     [](Camera& camera, site::Place& place) {
         camera.method = IpMethod::Dhcp;
         camera.stored.emplace();
         world::setMethod(place, IpMethod::Dhcp);
     },
     {}},
    {"ItAsksForItsAddressAndIsToHaveALinkLocalOne",
     [](Camera& camera, site::Place& place) {
         camera.method = IpMethod::Dhcp;
         world::setMethod(place, IpMethod::LinkLocal);
     },
     {Action::Configure, Action::Restart}},
    {"ItAsksForItsAddressAndHasAnotherName",
     [](Camera& camera, site::Place& place) {
         camera.method = IpMethod::Dhcp;
         world::setMethod(place, IpMethod::Dhcp);
         place.userName = "left";
     },
     {Action::Name}},
    {"ItIsOutOfReach",
     [](Camera& camera, site::Place&) {
         camera.ip.address = "10.0.0.7"_ip;
         camera.status = Status::Unreachable;
         camera.registers = inventory::Registers::NotAsked;
         camera.privilege.reset();
         camera.stored.reset();
     },
     {Action::Force, Action::Store}},
    {"AnotherCameraAnswersAtItsAddress",
     [](Camera& camera, site::Place&) {
         camera.ip.address = "192.168.10.77"_ip;
         camera.status = Status::InUse;
         camera.registers = inventory::Registers::OthersTold;
         camera.privilege.reset();
     },
     {Action::Force}},
    {"AMachineThatHasItsAddressGetsTheQuestions",
     [](Camera& camera, site::Place&) {
         camera.ip.address = "192.168.10.77"_ip;
         camera.status = Status::InUse;
         camera.registers = inventory::Registers::Silent;
         camera.privilege.reset();
         camera.conflicts = {{inventory::Conflict::With::Machine, world::mac(99)}};
     },
     {Action::Force}},
};

INSTANTIATE_TEST_SUITE_P(All, PlannedActions, testing::ValuesIn(Differences),
                         [](const auto& each) { return std::string(each.param.name); });
