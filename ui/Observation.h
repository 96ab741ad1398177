// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "inventory/Inventory.h"

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// What the list of cameras does not say: whose addresses collide, and who holds a camera.
struct Observation
{
    inventory::Inventory inventory;
    std::map<base::MacAddress, std::vector<base::Sentence>> holders; ///< Of the cameras that are in use.

    /// "Two cameras have the address 192.168.10.21: Left, Right"; each address once.
    std::vector<base::Sentence> Conflicts() const;

    /// What there is to say of each camera, by its MAC address as QDevice has it: who holds it, and who else
    /// has its address.
    std::map<std::string, std::vector<base::Sentence>> Remarks() const;
};

/// Looks at the networks for so long, or for as long as cameras take to answer. Throws std::system_error when
/// nothing can be looked at. Any thread.
std::shared_ptr<const Observation> Observe(std::chrono::milliseconds time);
