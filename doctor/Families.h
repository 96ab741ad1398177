// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "doctor/Evidence.h"
#include "inventory/FreeAddresses.h"

#include <vector>

namespace doctor {

/// With nothing said of it yet.
inline Finding newFinding(const char* id, Severity severity, const std::string& adapterName,
                          std::optional<base::MacAddress> camera = {})
{
    return {id, severity, adapterName, camera, {}, {}, {}};
}

inline Finding newFinding(const char* id, Severity severity, const inventory::Camera& camera)
{
    return newFinding(id, severity, camera.adapterName, camera.mac);
}

// What is found, by its subject; each adds to the findings, in an order in which one would repair them.

void findInAdapters(const Evidence& evidence, inventory::FreeAddresses& free, std::vector<Finding>& findings);
void findInAddresses(const Evidence& evidence, inventory::FreeAddresses& free,
                     std::vector<Finding>& findings);
void findInHearing(const Evidence& evidence, std::vector<Finding>& findings);
void findInUse(const Evidence& evidence, std::vector<Finding>& findings);
void findSilentDevices(const Evidence& evidence, std::vector<Finding>& findings);

} // namespace doctor
