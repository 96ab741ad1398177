// SPDX-License-Identifier: Apache-2.0
#include "site/Survey.h"

#include "inventory/Look.h"
#include "inventory/Neighbours.h"
#include "site/Plan.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace site {
namespace {

using namespace std::chrono_literals;
using inventory::Camera;
using inventory::Inventory;
using Clock = std::chrono::steady_clock;
using IsOver = std::function<bool()>;
using Sighting = std::pair<base::MacAddress, unsigned>; ///< A camera on an adapter.

/// So long a look takes at least, though all have answered that did in the first one: there may be more.
constexpr auto ShortestLook = 200ms;

/// Nobody plans for so many, and each is a datagram.
constexpr std::size_t MaxQuestions = 1024;

/// For one that does not tell; and what nobody waits longer for.
constexpr auto UsualHeartbeat = 3000ms;
constexpr auto LongestHeartbeat = 10000ms;

Sighting sightingOf(const Camera& camera)
{
    return {camera.mac, camera.adapterIndex};
}

/// Who has the addresses that are to be given will be among the kernel's neighbours.
void askForOwners(const Plan& plan)
{
    std::size_t questions = 0;
    const auto ask = [&questions](const Task& task, const base::IpSettings& ip) {
        if (ip.address.isUnspecified() || ++questions > MaxQuestions)
            return;
        try {
            inventory::askForOwner(task.camera->adapterIndex, ip.address);
        } catch (const std::system_error&) {
            // The adapter is gone, or reaches nobody: then it has no such neighbour, either.
        }
    };
    for (const Task& task : plan.tasks) {
        if (task.actions.empty() || task.isMissing())
            continue;
        if (task.after.method == inventory::IpMethod::Static && task.after.ip != task.before.ip)
            ask(task, task.after.ip);
        if (task.detour)
            ask(task, *task.detour);
    }
}

/// Once more. When nobody is missing and there is nothing to do, it ends as soon as all have answered again.
Inventory lookAgain(inventory::Look& look, const Inventory& first, const Plan& plan, const IsOver& isOver)
{
    const bool mayBeShort = !plan.hasMissing() && !plan.hasActions();
    std::set<Sighting> awaited;
    for (const Camera& camera : first.cameras)
        awaited.insert(sightingOf(camera));
    const auto begin = Clock::now();
    inventory::Look::Plan again;
    again.onCamera = [&awaited](const Camera& camera) { awaited.erase(sightingOf(camera)); };
    again.isOver = [&] {
        return isOver() || (mayBeShort && awaited.empty() && Clock::now() - begin >= ShortestLook);
    };
    return look.once(again);
}

/// What the second look found, and what only the first one did.
Inventory merged(Inventory first, Inventory second)
{
    for (Camera& camera : first.cameras) {
        const auto same = std::ranges::find(second.cameras, sightingOf(camera), &sightingOf);
        if (same == second.cameras.end())
            second.cameras.push_back(std::move(camera));
        else if (same->registers == inventory::Registers::Silent && same->ip == camera.ip &&
                 same->method == camera.method && same->userName == camera.userName)
            // Only its registers were not heard this time.
            *same = std::move(camera);
    }
    std::ranges::sort(second.cameras, {}, &sightingOf);
    second.arrivals.insert(second.arrivals.begin(), first.arrivals.begin(), first.arrivals.end());
    second.reversePathDrops += first.reversePathDrops;
    findConflicts(second);
    return second;
}

/// How long until a camera is free whose holder, an application of this computer, has died; nothing when
/// that does not come.
std::chrono::milliseconds timeToLetGo(const Camera& camera, const Inventory& inventory)
{
    if (camera.status != inventory::Status::InUse || camera.isHeartbeatOff.value_or(false))
        return {};
    const auto isOwn = [&camera](const inventory::Adapter& adapter) {
        return adapter.hasAddress(camera.holder->address);
    };
    if (camera.holder && !camera.holder->address.isUnspecified() &&
        std::ranges::none_of(inventory.adapters, isOwn))
        return {};
    return std::min<std::chrono::milliseconds>(camera.heartbeatTimeout.value_or(UsualHeartbeat),
                                               LongestHeartbeat);
}

std::chrono::milliseconds timeToLetGo(const Plan& plan, const Inventory& inventory)
{
    std::chrono::milliseconds longest{};
    for (const Task& task : plan.tasks)
        if (task.camera && !task.actions.empty())
            longest = std::max(longest, timeToLetGo(*task.camera, inventory));
    return longest;
}

void wait(std::chrono::milliseconds time, const IsOver& isOver)
{
    const auto end = Clock::now() + time;
    while (Clock::now() < end && !isOver())
        std::this_thread::sleep_for(20ms);
}

} // namespace

Inventory survey(const Site& site, const std::set<std::string>& only, const IsOver& isOver)
{
    inventory::Look look;
    inventory::Look::Plan once;
    once.isOver = isOver;
    Inventory found = look.once(once);
    const Plan plan = makePlan(site, found, only);
    askForOwners(plan);
    if (!isOver())
        found = merged(found, lookAgain(look, found, plan, isOver));
    const auto time = timeToLetGo(makePlan(site, found, only), found);
    if (time == 0ms || isOver())
        return found;
    wait(time, isOver);
    return merged(std::move(found), look.once(once));
}

} // namespace site
