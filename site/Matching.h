// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"
#include "site/Site.h"

#include <set>
#include <string>
#include <vector>

namespace site {

/// One camera, on whichever adapters it is heard. Points into the inventory.
struct Candidate
{
    const inventory::Camera* camera = nullptr; ///< Where it is best heard: Inventory::cameraWith().
    std::set<std::string> adapters;            ///< The names of all that hear it.
};

/// Each camera once, in the order of the inventory.
std::vector<Candidate> candidatesOf(const inventory::Inventory& inventory);

/// All that is given holds.
bool matches(const Match& match, const Candidate& candidate);

/// How sentences name a camera: "00:1A:2B:3C:4D:5E (FC-2400M 24010018)".
std::string textOf(const inventory::Camera& camera);

} // namespace site
