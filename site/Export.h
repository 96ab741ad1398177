// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"

#include <string>
#include <string_view>

namespace site {

/// By what the places of an exported file know their cameras.
enum class MatchBy
{
    Mac,
    Serial,
    Adapter
};

/// The first line of what exportSite() makes: by it such a file is known as a way back.
inline constexpr std::string_view ExportMark = "# Made by ip-configurator-cli export.\n";

/// What is there now, as the text of a site file: readSite() takes it, and a plan of it for the same cameras
/// has nothing to do, unless a camera has another address stored than it has. A camera whose settings no site
/// file can have is told in comments.
std::string exportSite(const inventory::Inventory& inventory, MatchBy by);

} // namespace site
