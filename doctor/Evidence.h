// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "doctor/Finding.h"
#include "doctor/Firewall.h"
#include "doctor/ListenerFault.h"
#include "inventory/FreeAddresses.h"
#include "inventory/Holding.h"
#include "inventory/Inventory.h"

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace doctor {

/// All that a diagnosis is drawn from.
struct Evidence
{
    inventory::Inventory inventory;
    std::chrono::milliseconds time{}; ///< How long was listened for it.
    std::optional<ListenerFault> listener;
    int reversePathFilterOfAll = 0; ///< The part of Adapter::reversePathFilter that is common to all.
    Firewall firewall;              ///< Looked at when somebody keeps answers from ordinary programs.
    std::map<base::MacAddress, inventory::Holding> holdings; ///< Of cameras that are in use.
    std::map<base::MacAddress, std::string> makers;          ///< Of other devices, by their MACs.
    std::set<base::Ipv4> taken; ///< Addresses for which somebody answered, beyond the inventory's.
};

struct Judgement
{
    std::vector<Finding> findings;              ///< The worst first.
    std::vector<inventory::Proposal> proposals; ///< Nobody is known to have one of them.
};

/// A pure function; its time grows with the number of cameras and of arrivals, not with its square.
Judgement judge(const Evidence& evidence);

/// Devices that say something and are no camera, in the order of their coming; those that are beyond a
/// reader's patience left out.
std::vector<base::MacAddress> silentDevices(const inventory::Inventory& inventory);

/// Whether only the listener heard some camera though an ordinary socket ought to have.
bool isKeptFromPrograms(const inventory::Inventory& inventory, const inventory::Camera& camera);

/// Whether an application is known to hold it.
bool isHeld(const inventory::Camera& camera);

} // namespace doctor
