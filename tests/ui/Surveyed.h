// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"
#include "tests/support/SdkDouble.h"

#include <functional>

/// What a survey finds when the cameras are those that the double lists, all on an adapter "eth1" with the
/// address 192.0.2.5/24, and nobody else is there.
inventory::Inventory surveyed(const SdkDouble& sdk,
                              const std::function<bool(const RZ_CC_DEVICE_INFO*)>& isFree);
