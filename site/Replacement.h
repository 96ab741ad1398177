// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "inventory/Inventory.h"
#include "site/Plan.h"
#include "site/Site.h"

#include <optional>
#include <string>
#include <string_view>

namespace site {

/// Who takes the place of a camera that is silent, or why nobody can.
struct Replacement
{
    enum class Verdict
    {
        Found,
        StillThere,   ///< The place's camera answers.
        SeveralThere, ///< More than one camera could be the newcomer.
        NobodyThere
    };
    Verdict verdict = Verdict::NobodyThere;
    std::vector<base::Sentence> reason; ///< Why not; empty when one is found.
    std::optional<inventory::Camera> newcomer;
    /// The site with the newcomer's MAC as the place's match: what a plan for this one place is made of.
    Site site;
};

/// A pure function. `place` is one of the site's.
Replacement findReplacement(const Site& site, const std::string& place,
                            const inventory::Inventory& inventory);

/// What to do so that the newcomer has the place. Of a machine that is no camera and that the kernel still
/// has in mind at the place's own address, it counts as known that it is the camera that is gone: the kernel
/// forgets it within a minute or so. One that is heard to have the address is in the way as ever.
Plan planFor(const Replacement& replacement, const std::string& place, inventory::Inventory inventory);

/// The text of the site file with the newcomer's serial or MAC in place of the old one, where the place is
/// matched by those; nothing else of it changes, and the same text when there is nothing to change.
std::string withNewcomer(std::string_view text, const std::string& place, const inventory::Camera& newcomer);

} // namespace site
