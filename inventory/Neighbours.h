// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"

#include <vector>

namespace inventory {

/// The IPv4 neighbours that the kernel knows. Needs no privilege, and asks nobody. Throws std::system_error
/// when the kernel does not tell.
std::vector<Neighbour> neighbours();

} // namespace inventory
