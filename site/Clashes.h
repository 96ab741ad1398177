// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"
#include "site/Plan.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Who has the addresses that a plan's tasks are to have. Pure functions.
namespace site {

/// The address that the task's camera is to be given; nothing when it is not, or is missing.
std::optional<base::Ipv4> addressToGive(const Task& task);

/// Its camera is going to have another address than now, or to obtain one anew.
bool leavesItsAddress(const Task& task);

/// Who has the address that the task is to have, and keeps it: a sentence for each. `places` has the names of
/// all places of the file, meant or not, by their cameras.
std::vector<base::Sentence> obstaclesToAddress(const Task& task, const std::vector<Task>& tasks,
                                               const inventory::Inventory& inventory,
                                               const std::map<base::MacAddress, std::string>& places);

/// Fills in Task::waitsFor.
void findWhoWaits(std::vector<Task>& tasks);

/// Gives each circle its detour; where no address is free for that, the task gets an obstacle. The wanted
/// addresses of all places of the site count as taken.
void openCircles(std::vector<Task>& tasks, const Site& site, const inventory::Inventory& inventory);

} // namespace site
