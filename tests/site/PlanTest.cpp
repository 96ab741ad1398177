// SPDX-License-Identifier: Apache-2.0
#include "tests/site/World.h"

#include <gmock/gmock.h>

using namespace base::literals;
using inventory::Camera;
using inventory::IpMethod;
using inventory::Status;
using site::Action;
using site::Plan;
using site::Unlisted;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using world::World;

namespace {

std::string obstaclesTo(const Plan& plan, std::size_t task)
{
    return english(plan.tasks[task].obstacles);
}

} // namespace

TEST(Plan, TellsWhatIsNowAndWhatIsToBe)
{
    World world(3);
    world.camera(0).ip.address = "192.168.10.77"_ip;
    world.place(0).userName = "left";
    world::setMethod(world.place(1), IpMethod::Dhcp);
    world.camera(2).method = IpMethod::LinkLocal;
    world::setMethod(world.place(2), IpMethod::LinkLocal);
    const Plan plan = world.plan();
    EXPECT_EQ(plan.tasks[0].before,
              (site::Settings{IpMethod::Static, {"192.168.10.77"_ip, "255.255.255.0"_ip, {}}, "c0"}));
    EXPECT_EQ(plan.tasks[0].after,
              (site::Settings{IpMethod::Static, {"192.168.10.21"_ip, "255.255.255.0"_ip, {}}, "left"}));
    EXPECT_EQ(plan.tasks[0].camera->mac, world.camera(0).mac);
    EXPECT_EQ(plan.tasks[1].after, (site::Settings{IpMethod::Dhcp, {}, "c1"}))
        << "nobody knows what it is going to get";
    EXPECT_EQ(plan.tasks[2].after, plan.tasks[2].before) << "it keeps what it has";
}

TEST(Plan, HasTheCameraThatAllThatIsGivenHoldsOf)
{
    World world(3);
    world.camera(1).adapterName = world.camera(2).adapterName = "line1";
    world.place(0).match = {"line1", {}, {}, "c2"};
    world.site.places.resize(1);
    const Plan plan = world.plan();
    EXPECT_EQ(plan.tasks[0].camera->mac, world.camera(2).mac);
    for (const site::Match& wrong : {site::Match{"line0", {}, {}, "c2"}, site::Match{{}, "S1", {}, "c1"},
                                     site::Match{{}, "S1", world::mac(1), {}}}) {
        world.place(0).match = wrong;
        EXPECT_TRUE(world.plan().tasks[0].isMissing());
    }
}

TEST(Plan, TakesACameraThatTwoAdaptersHearForOne)
{
    World world(1);
    Camera elsewhere = world.camera(0);
    elsewhere.adapterName = "a";
    elsewhere.adapterIndex = 1;
    elsewhere.status = Status::Unreachable;
    world.inventory.adapters.push_back(world::adapter(1, "a", "10.0.0.1"_ip));
    world.inventory.cameras.insert(world.inventory.cameras.begin(), elsewhere);
    for (const char* adapter : {"a", "line0"}) {
        world.place(0).match = world::byAdapter(adapter);
        const Plan plan = world.plan();
        EXPECT_FALSE(plan.isRefused()) << obstaclesTo(plan, 0);
        ASSERT_FALSE(plan.hasMissing());
        EXPECT_EQ(plan.tasks[0].camera->adapterName, "line0") << "where it is in reach";
        EXPECT_THAT(plan.warnings, IsEmpty());
    }
}

TEST(Plan, SaysOfEachPlaceWhetherItsCameraIsMissing)
{
    World world(2);
    world.inventory.cameras.pop_back();
    const Plan plan = world.plan();
    EXPECT_TRUE(plan.hasMissing());
    EXPECT_FALSE(plan.isRefused());
    EXPECT_FALSE(plan.tasks[0].isMissing());
    EXPECT_TRUE(plan.tasks[1].isMissing());
    EXPECT_THAT(plan.tasks[1].actions, IsEmpty());
    EXPECT_EQ(plan.tasks[1].after.ip.address, "192.168.10.22"_ip);
}

TEST(Plan, DoesNothingToACameraOfTwoPlacesAndLetsNobodyWaitForIt)
{
    World world(3);
    world::setMethod(world.place(0), IpMethod::Dhcp);
    world.place(1).match = world::bySerial("S1");
    world.place(2).ip = world.camera(0).ip;
    const Plan plan = world.plan();
    EXPECT_THAT(obstaclesTo(plan, 0), HasSubstr("p1"));
    EXPECT_THAT(obstaclesTo(plan, 1), HasSubstr("p0"));
    EXPECT_THAT(plan.tasks[0].actions, IsEmpty());
    EXPECT_THAT(plan.tasks[1].actions, IsEmpty());
    EXPECT_THAT(plan.tasks[2].waitsFor, IsEmpty());
}

TEST(Plan, TakesNoneOfTwoCandidatesForTheCamera)
{
    World world(2);
    world.site.places.pop_back();
    world.place(0).match = world::byAdapter("line0");
    world.place(0).userName = "left";
    const Plan plan = world.plan();
    EXPECT_FALSE(plan.tasks[0].camera);
    EXPECT_FALSE(plan.hasActions());
    EXPECT_THAT(plan.warnings, IsEmpty()) << "both belong to a place";
}

TEST(Plan, TellsOfACameraOnTwoAdaptersOnceThatItKeepsTheAddress)
{
    World world(2);
    world.site.places.pop_back();
    world.place(0).ip.address = world.camera(1).ip.address;
    world.inventory.cameras.push_back(world.camera(1));
    world.inventory.cameras.back().adapterName = "line1";
    EXPECT_THAT(world.plan().tasks[0].obstacles, SizeIs(1));
    // It is where it is in reach; what the other adapter hears of it is older.
    world.camera(1).status = Status::Unreachable;
    world.inventory.cameras.back().ip.address = "192.168.10.78"_ip;
    EXPECT_THAT(world.plan().tasks[0].obstacles, IsEmpty());
}

TEST(Plan, TakesNoAddressForThatOfAMachineThatIsNone)
{
    World world(2);
    world.inventory.adapters[0].mac = world::mac(50);
    world.place(0).ip.address = "192.168.10.77"_ip;
    for (const base::MacAddress& mac : {base::MacAddress(), world::mac(50), world::mac(0), world::mac(1)})
        world.inventory.neighbours.push_back({2, "192.168.10.77"_ip, mac, true});
    const Plan plan = world.plan();
    EXPECT_THAT(plan.tasks[0].obstacles, IsEmpty()) << obstaclesTo(plan, 0);
}

TEST(Plan, WaitsForEachThatLeavesTheAddress)
{
    World world(4);
    // c1 and c2 have the address that c0 is to have; c3 has none of it.
    for (const std::size_t each : {1, 2})
        world.camera(each).ip.address = world.place(0).ip.address;
    world.camera(0).ip.address = "192.168.10.77"_ip;
    const Plan plan = world.plan();
    EXPECT_FALSE(plan.isRefused()) << obstaclesTo(plan, 0);
    EXPECT_THAT(plan.tasks[0].waitsFor, ElementsAre(1, 2));
    for (const std::size_t each : {1, 2, 3})
        EXPECT_THAT(plan.tasks[each].waitsFor, IsEmpty());
    for (const site::Task& task : plan.tasks)
        EXPECT_FALSE(task.detour);
}

TEST(Plan, LeavesTheRightOneOfTwoWithOneAddressAlone)
{
    World world(2);
    world.camera(1).ip.address = world.camera(0).ip.address;
    const Plan plan = world.plan();
    EXPECT_FALSE(plan.isRefused());
    EXPECT_THAT(plan.tasks[0].actions, IsEmpty());
    EXPECT_THAT(plan.tasks[0].waitsFor, IsEmpty());
    EXPECT_THAT(plan.tasks[1].actions, ElementsAre(Action::Force));
}

TEST(Plan, GivesTheFirstOfACircleAFreeAddressForMeanwhile)
{
    World world(3);
    std::swap(world.camera(1).ip, world.camera(2).ip);
    const Plan plan = world.plan();
    EXPECT_FALSE(plan.isRefused());
    EXPECT_THAT(plan.tasks[1].waitsFor, ElementsAre(2));
    EXPECT_THAT(plan.tasks[2].waitsFor, ElementsAre(1));
    EXPECT_FALSE(plan.tasks[0].detour);
    ASSERT_TRUE(plan.tasks[1].detour);
    EXPECT_FALSE(plan.tasks[2].detour);
    EXPECT_TRUE(world.inventory.adapters[0].inSubnetOf(plan.tasks[1].detour->address));
    EXPECT_EQ(plan.tasks[1].detour->mask, "255.255.255.0"_ip);
    EXPECT_TRUE(plan.tasks[1].detour->gateway.isUnspecified());
}

TEST(Plan, TakesTheFreeAddressFromTheWantedSubnetWhereTheAdapterHasNone)
{
    World world(2);
    std::swap(world.camera(0).ip, world.camera(1).ip);
    world.inventory.adapters[0].addresses.clear();
    const Plan plan = world.plan();
    ASSERT_TRUE(plan.tasks[0].detour);
    EXPECT_TRUE(plan.tasks[0].after.ip.reaches(plan.tasks[0].detour->address));
}

TEST(Plan, TakesNoAddressForMeanwhileThatAnotherPlaceIsToHaveOrItsGateway)
{
    World world(2);
    std::swap(world.camera(0).ip, world.camera(1).ip);
    const base::Ipv4 first = world.plan().tasks[0].detour->address;
    site::Place missing = world.place(0);
    missing.name = "elsewhere";
    missing.match = world::bySerial("none");
    missing.ip = {first, "255.255.255.0"_ip, first.plus(1)};
    world.site.places.push_back(missing);
    EXPECT_EQ(world.plan({"p0", "p1"}).tasks[0].detour->address, first.plus(2));
}

TEST(Plan, LooksAtOtherPlacesOnlyAsFarAsAddressesClash)
{
    World world(3);
    // p0 and p1 swap, p2 is somebody else's business altogether.
    std::swap(world.camera(0).ip, world.camera(1).ip);
    world.camera(2).status = Status::InUse;
    world.place(2).userName = "other";
    world.place(2).model = "FC-2";
    world.site.unlisted = Unlisted::Fail;
    world.inventory.cameras.push_back(world::camera(7));
    world.site.places.push_back(world.place(0));
    world.site.places.back().name = "p3";
    const Plan both = world.plan({"p0", "p1"});
    EXPECT_FALSE(both.isRefused()) << english(both.obstacles);
    EXPECT_THAT(both.tasks, SizeIs(2));
    const Plan one = world.plan({"p0"});
    EXPECT_THAT(one.tasks, SizeIs(1));
    EXPECT_THAT(obstaclesTo(one, 0),
                AllOf(HasSubstr("192.168.10.21"), HasSubstr("02:00:00:00:00:02"), HasSubstr("place p1")));
    EXPECT_TRUE(world.plan().isRefused());
}

TEST(Plan, RefusesAllWhenAnAdapterIsNotAsSaid)
{
    using inventory::AdapterAddress;
    const AdapterAddress own{"192.168.10.1"_ip, 24};
    struct Case
    {
        site::AdapterRule rule;
        const char* told; ///< Null: it is as said.
    };
    const Case cases[] = {
        {{"line0", own, 1500}, nullptr},
        {{"line0", std::nullopt, std::nullopt}, nullptr},
        {{"line7", std::nullopt, std::nullopt},
         "The adapter line7 of the file is not there; this computer has: line0."},
        {{"line0", AdapterAddress{"192.168.10.1"_ip, 16}, std::nullopt},
         "The adapter line0 has not the address 192.168.10.1/16, as the file says; it has: 192.168.10.1/24."},
        {{"line0", AdapterAddress{"192.168.10.2"_ip, 24}, std::nullopt}, "it has: 192.168.10.1/24."},
        {{"line0", std::nullopt, 9000}, "The adapter line0 has an MTU of 1500 bytes, not of 9000"},
    };
    for (const Case& each : cases) {
        World world(1);
        world.site.adapters = {each.rule};
        for (const std::set<std::string>& only : {std::set<std::string>(), {"p0"}}) {
            const Plan plan = world.plan(only);
            EXPECT_EQ(plan.isRefused(), each.told != nullptr);
            EXPECT_THAT(english(plan.obstacles), HasSubstr(each.told ? each.told : ""));
        }
    }
}

TEST(Plan, JudgesCamerasOfNoPlaceAsTheSiteSays)
{
    World world(1);
    world.inventory.cameras.push_back(world::camera(7));
    const auto told = AllOf(HasSubstr("02:00:00:00:00:08 (FC-1 S8)"), HasSubstr("192.168.10.28"),
                            HasSubstr("line0"), HasSubstr("no place"));
    world.site.unlisted = Unlisted::Warn;
    EXPECT_FALSE(world.plan().isRefused());
    EXPECT_THAT(english(world.plan().warnings), told);
    world.site.unlisted = Unlisted::Fail;
    EXPECT_TRUE(world.plan().isRefused());
    EXPECT_THAT(english(world.plan().obstacles), told);
    EXPECT_THAT(world.plan().warnings, IsEmpty());
    world.site.unlisted = Unlisted::Ignore;
    EXPECT_FALSE(world.plan().isRefused());
    EXPECT_THAT(world.plan().warnings, IsEmpty());
}

TEST(Plan, TellsOfManyCamerasOfNoPlaceByTheirNumber)
{
    World world(1);
    for (std::size_t i = 1; i <= 100; ++i)
        world.inventory.cameras.push_back(world::camera(i));
    const Plan plan = world.plan();
    EXPECT_THAT(plan.warnings, SizeIs(17));
    EXPECT_THAT(plan.warnings.back().english(), HasSubstr(": 84."));
}

TEST(Plan, WarnsOfAnAddressThatTheAdapterDoesNotReach)
{
    World world(1);
    world.place(0).ip.address = "10.0.0.7"_ip;
    const Plan plan = world.plan();
    EXPECT_FALSE(plan.isRefused());
    EXPECT_THAT(english(plan.warnings),
                AllOf(HasSubstr("10.0.0.7"), HasSubstr("the place p0"), HasSubstr("line0")));
}
