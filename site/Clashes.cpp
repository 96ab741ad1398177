// SPDX-License-Identifier: Apache-2.0
#include "site/Clashes.h"

#include "inventory/FreeAddresses.h"
#include "site/Matching.h"

#include <algorithm>
#include <set>

namespace site {
namespace {

using inventory::Adapter;
using inventory::AdapterAddress;
using inventory::Arrival;
using inventory::Camera;
using inventory::Conflict;
using inventory::Inventory;
using inventory::IpMethod;
using inventory::Neighbour;

bool isLeftBy(const std::vector<Task>& tasks, const base::MacAddress& mac)
{
    return std::ranges::any_of(tasks, [&mac](const Task& task) {
        return task.camera && task.camera->mac == mac && leavesItsAddress(task);
    });
}

/// Machines that are seen to have the address, and are neither a camera nor this computer: what these have
/// they say themselves, while the kernel may remember what they had.
std::set<base::MacAddress> machinesAt(base::Ipv4 address, const Inventory& inventory)
{
    std::set<base::MacAddress> machines;
    for (const Neighbour& neighbour : inventory.neighbours)
        if (neighbour.isSure && neighbour.address == address)
            machines.insert(neighbour.mac);
    for (const Arrival& arrival : inventory.arrivals)
        if (arrival.address == address &&
            (arrival.kind == Arrival::Kind::Announcement || arrival.kind == Arrival::Kind::Speech))
            machines.insert(arrival.mac);
    for (const Camera& camera : inventory.cameras)
        for (const Conflict& conflict : camera.conflicts)
            if (camera.ip.address == address && conflict.with == Conflict::With::Machine)
                machines.insert(conflict.mac);
    machines.erase(base::MacAddress());
    for (const Camera& camera : inventory.cameras)
        machines.erase(camera.mac);
    for (const Adapter& adapter : inventory.adapters)
        machines.erase(adapter.mac);
    return machines;
}

base::Sentence takenByCamera(base::Ipv4 address, const Camera& camera,
                             const std::map<base::MacAddress, std::string>& places)
{
    const auto place = places.find(camera.mac);
    if (place == places.end())
        return {
            TRANSLATABLE("Sentence",
                         "The address %1 is that of the camera %2, which belongs to no place and keeps it. "
                         "Give that camera a place or another address first, or choose another address "
                         "here."),
            {address.toText(), textOf(camera)}};
    return {TRANSLATABLE("Sentence",
                         "The address %1 is that of the camera %2 at the place %3, which is not to leave it. "
                         "Choose another address for one of the two places, and change both together."),
            {address.toText(), textOf(camera), place->second}};
}

/// Who waits for the task; as each address is planned for one only, that is one at most.
std::vector<std::optional<std::size_t>> waitersOf(const std::vector<Task>& tasks)
{
    std::vector<std::optional<std::size_t>> waiters(tasks.size());
    for (std::size_t i = 0; i < tasks.size(); ++i)
        for (const std::size_t other : tasks[i].waitsFor)
            waiters[other] = i;
    return waiters;
}

/// All that wait for each other in a circle with the task, itself too; empty when it is in none.
std::set<std::size_t> circleOf(std::size_t task, const std::vector<std::optional<std::size_t>>& waiters)
{
    std::set<std::size_t> circle;
    for (std::optional<std::size_t> each = task; each; each = waiters[*each])
        if (!circle.insert(*each).second)
            return *each == task ? circle : std::set<std::size_t>();
    return {};
}

/// From the adapter's subnet; where that has none, from the one that the camera is to be in.
std::optional<base::IpSettings> freeAddressFor(const Task& task, inventory::FreeAddresses& free)
{
    std::optional<AdapterAddress> found = free.forCamera(*task.camera);
    const auto prefix = inventory::prefixOf(task.after.ip.mask);
    if (!found && prefix)
        found = free.in({task.after.ip.address, *prefix}, task.camera->adapterIndex);
    return found ? std::optional(base::IpSettings{found->address, found->mask(), {}}) : std::nullopt;
}

} // namespace

std::optional<base::Ipv4> addressToGive(const Task& task)
{
    return !task.actions.empty() && task.after.method == IpMethod::Static
               ? std::optional(task.after.ip.address)
               : std::nullopt;
}

bool leavesItsAddress(const Task& task)
{
    if (const auto wanted = addressToGive(task))
        return *wanted != task.before.ip.address;
    return !task.actions.empty() && task.after.method != task.before.method;
}

std::vector<base::Sentence> obstaclesToAddress(const Task& task, const std::vector<Task>& tasks,
                                               const Inventory& inventory,
                                               const std::map<base::MacAddress, std::string>& places)
{
    const auto wanted = addressToGive(task);
    if (!wanted)
        return {};
    std::vector<base::Sentence> obstacles;
    for (const Adapter& adapter : inventory.adapters)
        if (adapter.hasAddress(*wanted))
            obstacles.push_back(
                {TRANSLATABLE("Sentence", "The address %1 is this computer's own, on its adapter %2. Choose "
                                          "another address here."),
                 {wanted->toText(), adapter.name}});
    for (const Camera& other : inventory.cameras)
        if (other.ip.address == *wanted && other.mac != task.camera->mac &&
            &other == inventory.cameraWith(other.mac) && !isLeftBy(tasks, other.mac))
            obstacles.push_back(takenByCamera(*wanted, other, places));
    for (const base::MacAddress& machine : machinesAt(*wanted, inventory))
        obstacles.push_back(
            {TRANSLATABLE("Sentence", "The address %1 is that of another machine, %2, which is no camera. "
                                      "Give that machine another one, or choose another address here. Of "
                                      "one that has just been taken away, this computer knows within a "
                                      "minute."),
             {wanted->toText(), machine.toText()}});
    return obstacles;
}

void findWhoWaits(std::vector<Task>& tasks)
{
    std::multimap<base::Ipv4, std::size_t> leaving;
    for (std::size_t i = 0; i < tasks.size(); ++i)
        if (leavesItsAddress(tasks[i]))
            leaving.emplace(tasks[i].before.ip.address, i);
    for (std::size_t i = 0; i < tasks.size(); ++i)
        if (const auto wanted = addressToGive(tasks[i])) {
            const auto [begin, end] = leaving.equal_range(*wanted);
            for (auto each = begin; each != end; ++each)
                tasks[i].waitsFor.push_back(each->second);
        }
}

void openCircles(std::vector<Task>& tasks, const Site& site, const Inventory& inventory)
{
    std::set<base::Ipv4> taken;
    for (const Place& place : site.places)
        taken.insert({place.ip.address, place.ip.gateway});
    inventory::FreeAddresses free(inventory, std::move(taken));
    const auto waiters = waitersOf(tasks);
    std::set<std::size_t> opened;
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        const std::set<std::size_t> circle = circleOf(i, waiters);
        if (circle.empty() || opened.contains(i))
            continue;
        opened.insert(circle.begin(), circle.end());
        tasks[i].detour = freeAddressFor(tasks[i], free);
        if (!tasks[i].detour)
            tasks[i].obstacles.push_back(
                {TRANSLATABLE("Sentence",
                              "The cameras of %1 places exchange their addresses in a circle, for which one "
                              "of them, %2, has to take a free address meanwhile; none is free. Give one of "
                              "them an address that none of them has now."),
                 {std::to_string(circle.size()), textOf(*tasks[i].camera)}});
    }
}

} // namespace site
