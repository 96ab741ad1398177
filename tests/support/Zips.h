// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

/// A zip of these files (name, content), encrypted if wanted.
std::string zipOf(const std::vector<std::pair<std::string, std::string>>& files, bool isEncrypted = false);
