// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/CameraSearch.h"
#include "inventory/Inventory.h"

namespace cli {

struct Session;

/// What a look found, with the camera that was looked for.
struct SeenCamera
{
    inventory::Inventory inventory;
    inventory::Camera camera; ///< Where it is reachable, if anywhere.
};

/// Looks for the camera of that MAC address and for what it tells, a few times, as answers get lost. Throws a
/// Failure (no such camera) that says which ones there are, and where nobody could be asked.
SeenCamera seeCamera(const base::MacAddress& mac, const Session& session);

/// How the listener fared in a look.
ListenerReport listenerReport(const inventory::Inventory& inventory);

/// "FC-2400M (00:1A:2B:3C:4D:5E)", fit for a terminal.
std::string describe(const inventory::Camera& camera);

} // namespace cli
