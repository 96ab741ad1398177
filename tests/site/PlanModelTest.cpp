// SPDX-License-Identifier: Apache-2.0
// Plans for any cameras and any addresses, carried out on a line that watches that none is had twice.
#include "tests/site/ModelLine.h"
#include "tests/site/World.h"

#include <gmock/gmock.h>

#include <functional>

using base::Ipv4;
using inventory::IpMethod;
using site::Plan;
using site::Task;
using testing::IsEmpty;

namespace {

constexpr unsigned Cases = 2000;

/// From there on nobody has the addresses; a DHCP server gives those from the second on.
constexpr std::size_t FirstFree = 100;
constexpr std::size_t FirstDhcp = 1000;

bool oneIn(std::size_t count, std::mt19937& random)
{
    return random() % count == 0;
}

/// Cameras in any state, and places in any order that are to have any addresses of theirs, other ones or
/// none. Whoever is to have an address of another camera is to have one that this leaves.
class Exchange
{
public:
    /// Twins have one address.
    Exchange(std::mt19937& random, bool hasTwins)
        : m_random(random),
          m_hasTwins(hasTwins),
          m_staying(2 + random() % 5),
          m_otherMethods(1 + random() % 8)
    {
        m_world.inventory.adapters[0].addresses = {{puzzle::address(5000), 8}};
        const std::size_t count = 1 + random() % 12;
        for (std::size_t i = 0; i < count; ++i)
            addCamera(i, hasTwins && i > 0 && oneIn(4, random) ? random() % i : i);
        for (std::size_t i = 0; i < count; ++i)
            addPlace(i);
        passOn();
        std::shuffle(m_world.site.places.begin(), m_world.site.places.end(), random);
        // Somebody who belongs to no place and is in nobody's way.
        if (oneIn(3, random))
            m_world.inventory.cameras.push_back(world::camera(count));
    }

    const world::World& world() const { return m_world; }

private:
    void addCamera(std::size_t number, std::size_t address)
    {
        inventory::Camera camera = world::camera(number);
        camera.ip = puzzle::settings(address);
        camera.method = oneIn(m_otherMethods, m_random) ? otherMethod() : IpMethod::Static;
        camera.stored = camera.ip;
        if (oneIn(4, m_random))
            camera.stored.reset();
        else if (oneIn(4, m_random))
            camera.stored = puzzle::settings(m_random() % 20);
        if (oneIn(4, m_random))
            camera.status = inventory::Status::Unreachable;
        m_world.inventory.cameras.push_back(camera);
    }

    IpMethod otherMethod() { return oneIn(2, m_random) ? IpMethod::Dhcp : IpMethod::LinkLocal; }

    void addPlace(std::size_t number)
    {
        site::Place place;
        place.name = "p" + std::to_string(number);
        place.match.mac = world::mac(number);
        if (oneIn(3, m_random))
            place.userName = oneIn(2, m_random) ? "new" : m_world.camera(number).userName;
        world::setMethod(place, oneIn(m_otherMethods, m_random) ? otherMethod() : IpMethod::Static);
        // Of twins each is to leave the address, or to have it for good.
        if (m_hasTwins && place.method == m_world.camera(number).method)
            world::setMethod(place, IpMethod::Static);
        m_world.site.places.push_back(place);
    }

    /// Hands the addresses out among those that are to be static: in any order among those that leave theirs,
    /// with new ones in between, and to the others their own.
    void passOn()
    {
        std::vector<Ipv4> left;
        std::vector<std::size_t> movers;
        std::set<Ipv4> given;
        for (std::size_t i = 0; i < m_world.site.places.size(); ++i) {
            const inventory::Camera& camera = m_world.camera(i);
            site::Place& place = m_world.place(i);
            const bool isStatic = place.method == IpMethod::Static;
            if (isStatic && oneIn(m_staying, m_random) && given.insert(camera.ip.address).second)
                place.ip = camera.ip;
            else if (isStatic)
                movers.push_back(i);
            if (isStatic ? place.ip != camera.ip : place.method != camera.method)
                left.push_back(camera.ip.address);
        }
        // Somebody who stays has it, too.
        for (std::size_t i = 0; i < m_world.site.places.size(); ++i)
            if (m_world.place(i).ip == m_world.camera(i).ip || keepsWhatItHas(i))
                std::erase(left, m_world.camera(i).ip.address);
        std::ranges::sort(left);
        left.erase(std::unique(left.begin(), left.end()), left.end());
        std::ranges::shuffle(left, m_random);
        for (const std::size_t each : movers) {
            m_world.place(each).ip = puzzle::settings(FirstFree + each);
            if (!left.empty() && !oneIn(4, m_random)) {
                m_world.place(each).ip.address = left.back();
                left.pop_back();
            }
        }
    }

    bool keepsWhatItHas(std::size_t number)
    {
        const site::Place& place = m_world.place(number);
        return place.method != IpMethod::Static && place.method == m_world.camera(number).method;
    }

    world::World m_world{0};
    std::mt19937& m_random;
    bool m_hasTwins;
    std::size_t m_staying;      ///< One in so many is to have the address that it has.
    std::size_t m_otherMethods; ///< One in so many is not static, or is not to be.
};

/// By the words of the file alone.
bool isRight(const Task& task)
{
    const inventory::Camera& camera = *task.camera;
    const site::Place& place = task.place;
    return camera.method == place.method && camera.userName == place.userName.value_or(camera.userName) &&
           (place.method != IpMethod::Static ||
            (camera.ip == place.ip && camera.stored.value_or(place.ip) == place.ip));
}

/// The circles, by who wants whose address: no two cameras have one.
std::vector<std::set<std::size_t>> circlesOf(const Plan& plan)
{
    const auto ownerOfWanted = [&plan](std::size_t task) -> std::optional<std::size_t> {
        for (std::size_t i = 0; i < plan.tasks.size(); ++i)
            if (plan.tasks[task].place.method == IpMethod::Static &&
                plan.tasks[i].camera->ip.address == plan.tasks[task].place.ip.address)
                return i;
        return std::nullopt;
    };
    std::vector<std::set<std::size_t>> circles;
    for (std::size_t i = 0; i < plan.tasks.size(); ++i) {
        std::set<std::size_t> circle;
        std::optional<std::size_t> each = i;
        while (each && circle.insert(*each).second)
            each = ownerOfWanted(*each);
        if (each == i && circle.size() > 1 && *circle.begin() == i)
            circles.push_back(circle);
    }
    return circles;
}

/// What becomes of those that ask for their addresses: each gets another one.
Plan withDhcp(Plan plan)
{
    for (std::size_t i = 0; i < plan.tasks.size(); ++i)
        if (plan.tasks[i].after.ip.address.isUnspecified())
            plan.tasks[i].after.ip = puzzle::settings(FirstDhcp + i);
    return plan;
}

void expectDone(const Plan& plan, std::mt19937& random)
{
    const Plan known = withDhcp(plan);
    puzzle::Line line(known, false, random);
    line.run(0, 0);
    for (std::size_t i = 0; i < known.tasks.size(); ++i) {
        EXPECT_EQ(line.addressesOf(i), std::set{known.tasks[i].after.ip.address}) << i;
        EXPECT_EQ(line.ordersOf(i), isRight(known.tasks[i]) ? 0U : known.tasks[i].detour ? 2U : 1U) << i;
    }
}

void expectPlanned(const Plan& plan, const world::World& world)
{
    EXPECT_FALSE(plan.isRefused()) << english(plan.obstacles);
    EXPECT_EQ(plan.tasks.size(), world.site.places.size());
    std::set<Ipv4> used;
    for (const inventory::Camera& camera : world.inventory.cameras)
        used.insert(camera.ip.address);
    for (const site::Place& place : world.site.places)
        used.insert(place.ip.address);
    for (const Task& task : plan.tasks) {
        EXPECT_THAT(task.obstacles, IsEmpty()) << english(task.obstacles);
        EXPECT_EQ(task.actions.empty(), isRight(task)) << task.place.name;
        EXPECT_TRUE(!isRight(task) || task.waitsFor.empty()) << task.place.name;
        EXPECT_TRUE(!task.detour || used.insert(task.detour->address).second) << task.place.name;
    }
}

void forAnyCases(const std::function<void(std::mt19937&)>& test)
{
    for (unsigned seed = 0; seed < Cases && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        test(random);
    }
}

} // namespace

TEST(PlanModel, BringsAnyCamerasToAnyAddressesOverOneDetourForEachCircle)
{
    std::size_t circlesSeen = 0;
    forAnyCases([&circlesSeen](std::mt19937& random) {
        const Exchange exchange(random, false);
        const Plan plan = exchange.world().plan();
        expectPlanned(plan, exchange.world());
        std::set<std::size_t> expected;
        for (const auto& circle : circlesOf(plan))
            expected.insert(*circle.begin());
        std::set<std::size_t> detours;
        for (std::size_t i = 0; i < plan.tasks.size(); ++i)
            if (plan.tasks[i].detour)
                detours.insert(i);
        EXPECT_EQ(detours, expected);
        circlesSeen += expected.size();
        expectDone(plan, random);
    });
    EXPECT_GT(circlesSeen, Cases / 10) << "that many make the test one of circles";
}

TEST(PlanModel, SortsCamerasOutThatHaveOneAddress)
{
    forAnyCases([](std::mt19937& random) {
        const Exchange exchange(random, true);
        const Plan plan = exchange.world().plan();
        expectPlanned(plan, exchange.world());
        expectDone(plan, random);
    });
}

TEST(PlanModel, RefusesAPartOfThePlacesOnlyForAnAddressThatSomebodyKeeps)
{
    std::size_t refused = 0;
    forAnyCases([&refused](std::mt19937& random) {
        const Exchange exchange(random, false);
        std::set<std::string> only;
        for (const site::Place& place : exchange.world().site.places)
            if (only.empty() || oneIn(2, random))
                only.insert(place.name);
        const Plan plan = exchange.world().plan(only);
        bool isTaken = false;
        for (const Task& task : plan.tasks) {
            EXPECT_TRUE(only.contains(task.place.name));
            if (isRight(task) || task.place.method != IpMethod::Static)
                continue;
            for (const inventory::Camera& other : exchange.world().inventory.cameras) {
                const bool isMeant = std::ranges::any_of(
                    plan.tasks, [&other](const Task& each) { return each.camera->mac == other.mac; });
                isTaken = isTaken || (!isMeant && other.ip.address == task.place.ip.address);
            }
        }
        EXPECT_EQ(plan.isRefused(), isTaken);
        EXPECT_EQ(plan.tasks.size(), only.size());
        refused += isTaken ? 1 : 0;
        if (!isTaken)
            expectDone(plan, random);
    });
    EXPECT_GT(refused, Cases / 10);
    EXPECT_LT(refused, Cases * 9 / 10);
}

TEST(PlanModel, HasNothingToDoWhereAPlanWasCarriedOut)
{
    forAnyCases([](std::mt19937& random) {
        const Exchange exchange(random, false);
        world::World world = exchange.world();
        const Plan plan = withDhcp(world.plan());
        for (const Task& task : plan.tasks) {
            auto& camera =
                *std::ranges::find(world.inventory.cameras, task.camera->mac, &inventory::Camera::mac);
            camera.method = task.after.method;
            camera.ip = task.after.ip;
            camera.userName = task.after.userName;
            if (camera.method == IpMethod::Static)
                camera.stored = camera.ip;
        }
        const Plan again = world.plan();
        EXPECT_FALSE(again.isRefused());
        EXPECT_FALSE(again.hasActions());
    });
}
