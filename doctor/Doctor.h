// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"
#include "doctor/Finding.h"
#include "inventory/Inventory.h"

#include <optional>
#include <vector>

namespace doctor {

struct Diagnosis
{
    inventory::Inventory inventory; ///< What the findings are about.
    std::vector<Finding> findings;  ///< The worst first.
};

/// Looks for five seconds at most, and says what is wrong. Changes nothing. Throws std::system_error when
/// nothing can be looked at. Any thread.
Diagnosis examine();

/// The findings that are about this camera, about the adapters that hear it, or about all; nothing when no
/// camera has that MAC.
std::optional<Diagnosis> aboutCamera(const Diagnosis& diagnosis, const base::MacAddress& camera);

/// The English page: a line for each adapter, then each finding with its reason and what to type. Device
/// texts are escaped by `shown`.
std::string page(const Diagnosis& diagnosis, std::string (*shown)(const std::string&));

} // namespace doctor
