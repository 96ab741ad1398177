// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Plan.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <vector>

/// Cameras that are to exchange addresses, and a plan of that.
namespace puzzle {

/// Of the cameras that a plan is about, their addresses in the order of its tasks: 10.0.0.1 and so on.
inline base::Ipv4 address(std::size_t number)
{
    return base::Ipv4((10u << 24) + static_cast<std::uint32_t>(number) + 1);
}

inline base::IpSettings settings(std::size_t number)
{
    return {address(number), base::Ipv4(0xFF000000), {}};
}

inline constexpr std::size_t FirstFree = 1000;   ///< From there on nobody has the addresses,
inline constexpr std::size_t FirstDetour = 2000; ///< and from there on they are for detours.

/// The one on whom all wait in turn; nothing when nobody waits for himself.
inline std::vector<std::size_t> circleOf(const std::vector<site::Task>& tasks, std::size_t begin)
{
    std::vector<std::size_t> circle;
    std::set<std::size_t> seen;
    for (std::size_t each = begin; seen.insert(each).second;) {
        circle.push_back(each);
        for (const std::size_t next : tasks[each].waitsFor) {
            if (next == begin)
                return circle;
            each = next;
        }
    }
    return {};
}

/// From where each camera is, by the numbers of their addresses, to where each is to be. Who stays has
/// nothing to do. No two are to have one address.
inline site::Plan plan(const std::vector<std::size_t>& from, const std::vector<std::size_t>& to)
{
    site::Plan plan;
    for (std::size_t i = 0; i < from.size(); ++i) {
        site::Task task;
        task.place.name = std::to_string(i);
        task.camera.emplace();
        task.camera->mac.bytes = {
            2, 0, 0, 0, static_cast<std::uint8_t>(i / 256), static_cast<std::uint8_t>(i)};
        task.before.ip = settings(from[i]);
        task.after.ip = settings(to[i]);
        if (from[i] != to[i])
            task.actions = {site::Action::Force, site::Action::Store};
        for (std::size_t other = 0; other < from.size(); ++other)
            if (other != i && from[other] == to[i] && from[i] != to[i])
                task.waitsFor.push_back(other);
        plan.tasks.push_back(std::move(task));
    }
    std::set<std::size_t> inCircles;
    for (std::size_t i = 0; i < from.size(); ++i) {
        const auto circle = circleOf(plan.tasks, i);
        if (circle.empty() || inCircles.contains(i))
            continue;
        inCircles.insert(circle.begin(), circle.end());
        plan.tasks[i].detour = settings(FirstDetour + i);
    }
    return plan;
}

/// Up to ten cameras, some of which swap addresses, move up, move away, or stay.
inline site::Plan randomPlan(std::mt19937& random)
{
    const std::size_t count = 1 + random() % 10;
    std::vector<std::size_t> from(count);
    std::iota(from.begin(), from.end(), 0);
    std::vector<std::size_t> to = from;
    const auto moving = random() % (count + 1);
    std::shuffle(to.begin(), to.begin() + static_cast<std::ptrdiff_t>(moving), random);
    // Whoever moves away makes a chain of a circle.
    for (std::size_t i = 0; i < moving; ++i)
        if (random() % 4 == 0)
            to[i] = FirstFree + i;
    return plan(from, to);
}

} // namespace puzzle
