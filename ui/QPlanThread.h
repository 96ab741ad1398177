// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/QJobThread.h"

#include <functional>
#include <set>
#include <string>

namespace inventory {
struct Inventory;
}
namespace site {
struct Site;
}
struct PlanWork;

/// Looks at what a site file is about, changes it, or writes such a file: seconds, or minutes.
using QPlanThread = QJobThread<PlanWork>;

/// Finds out what there is, for a plan; as site::survey().
using Surveyor = std::function<std::shared_ptr<const inventory::Inventory>(
    const site::Site& site, const std::set<std::string>& only, const std::function<bool()>& isOver)>;

/// The one that looks at this computer's networks.
Surveyor NetworksSurveyor();
