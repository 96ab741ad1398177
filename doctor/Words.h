// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Camera.h"

#include <string>
#include <vector>

namespace doctor {

/// "FC-2400M (00:1A:2B:3C:4D:5E)"; the MAC alone of one that does not name its model.
std::string nameOf(const inventory::Camera& camera);

/// "192.168.1.20, mask 255.255.255.0", and the gateway if there is one.
std::string textOf(const base::IpSettings& settings);

/// With a comma between them; of very many only the first, and how many more there are.
std::string listed(const std::vector<std::string>& words);

/// The word as a shell takes it for one.
std::string quoted(const std::string& word);

} // namespace doctor
