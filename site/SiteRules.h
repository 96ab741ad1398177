// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Site.h"
#include "site/Yaml.h"

#include <vector>

namespace site {

/// A place, and where in the file it stands.
struct PlaceInFile
{
    Place place;
    Spot name;
    Spot match;
    Spot address; ///< With IpMethod::Static.
};

using Lines = std::vector<int>;

/// No two places are of one camera or have one address, nor has one the address of an adapter; `adapterLines`
/// has where these stand. Throws SiteError.
void requireRoomForAll(const std::vector<PlaceInFile>& places, const std::vector<AdapterRule>& adapters,
                       const Lines& adapterLines);

} // namespace site
