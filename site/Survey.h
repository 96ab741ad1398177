// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"
#include "site/Site.h"

#include <functional>
#include <set>
#include <string>

namespace site {

/// What there is, for a plan: looks twice, so that a camera whose answers got lost is there, and asks by ARP
/// meanwhile who has the addresses that are to be given. A camera that needs a change and is in use gets the
/// time after which it lets go by itself, should whoever had it be gone. Changes nothing. When `isOver` says
/// so, which is asked many times a second, it ends with what it has. Throws std::system_error when nothing
/// could be asked.
inventory::Inventory survey(const Site& site, const std::set<std::string>& only,
                            const std::function<bool()>& isOver);

} // namespace site
