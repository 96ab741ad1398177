// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"

#include <vector>

namespace inventory {

/// The IPv4 neighbours that the kernel knows. Needs no privilege, and asks nobody. Throws std::system_error
/// when the kernel does not tell.
std::vector<Neighbour> neighbours();

/// Makes the kernel ask by ARP for the address's owner, unless it knows it already: by a datagram to it out
/// of this adapter, past all gateways. Throws std::system_error when it cannot be sent.
void askForOwner(unsigned adapterIndex, base::Ipv4 address);

} // namespace inventory
