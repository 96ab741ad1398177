// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/Camera.h"
#include "inventory/Inventory.h"

namespace cli {

/// A camera of the list, with what a look knows of it beyond its record.
struct ListedCamera
{
    Camera camera;
    inventory::Camera seen;
};

/// The cameras of a look, however many: each once and in the window's order.
std::vector<ListedCamera> listedCameras(const inventory::Inventory& inventory);

} // namespace cli
