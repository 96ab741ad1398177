// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "inventory/Inventory.h"
#include "site/Site.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace site {

/// How a camera obtains its address, which it has, and what it is called.
struct Settings
{
    inventory::IpMethod method = inventory::IpMethod::Static;
    base::IpSettings ip; ///< Unspecified where it is not known: what DHCP is going to give.
    std::string userName;

    bool operator==(const Settings&) const = default;
};

/// What is done to a camera, in this order.
enum class Action
{
    Force,     ///< It gets the address at once.
    Store,     ///< It keeps the address.
    Configure, ///< Another way to obtain its address is switched on.
    Name,
    Restart ///< It obtains its address anew.
};

/// One place, the camera that is there, and what is to be done with it.
struct Task
{
    Place place;
    std::optional<inventory::Camera> camera; ///< Nothing: it is missing, or several can be it (an obstacle).
    Settings before;                         ///< Of the camera.
    Settings after;                          ///< As planned.
    /// Empty: all is as it should be, or there is no camera, or that of another place, too.
    std::vector<Action> actions;
    std::vector<base::Sentence> obstacles; ///< Why it cannot be done; empty when nothing is in the way.

    /// Whose cameras have the very address that this one is to have, and are to leave it, for another one or
    /// to obtain one anew: their indexes. As a rule one; two when two cameras have one address now. Never
    /// itself. Both they and this one have actions; since nobody else is to have that address, each is waited
    /// for by one at most, and those that wait for each other make a simple circle.
    std::vector<std::size_t> waitsFor;
    /// A free address that it takes meanwhile, so that the circle of which it is the first in the file opens:
    /// in the subnet of the adapter that hears it, else in the one where it is to be; no gateway. Nobody else
    /// has one.
    std::optional<base::IpSettings> detour;

    bool isMissing() const { return !camera; }
};

struct Plan
{
    std::vector<Task> tasks;               ///< In the order of the file; only the places that are meant.
    std::vector<base::Sentence> obstacles; ///< What is in the way of all of it: an adapter is not as said ...
    std::vector<base::Sentence> warnings;  ///< Cameras that belong to no place, and the like.

    /// Something other than a missing camera is in the way, of all or of one.
    bool isRefused() const;
    bool hasMissing() const;
    bool hasActions() const;
};

/// What to do so that the places meant (all, when none is named) are as the site says. A pure function of
/// what is there; an address is somebody's, too, when the kernel's neighbours are sure, or ARP said, that
/// another machine has it. The site has no address twice.
Plan makePlan(const Site& site, const inventory::Inventory& inventory,
              const std::set<std::string>& only = {});

} // namespace site
