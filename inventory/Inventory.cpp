// SPDX-License-Identifier: Apache-2.0
#include "inventory/Inventory.h"

#include <algorithm>

namespace inventory {

const Adapter* Inventory::adapterWith(unsigned index) const
{
    const auto found = std::ranges::find(adapters, index, &Adapter::index);
    return found == adapters.end() ? nullptr : &*found;
}

const Camera* Inventory::cameraWith(const base::MacAddress& mac) const
{
    const Camera* result = nullptr;
    for (const Camera& camera : cameras)
        if (camera.mac == mac &&
            (!result || (result->status == Status::Unreachable && camera.status != Status::Unreachable)))
            result = &camera;
    return result;
}

} // namespace inventory
