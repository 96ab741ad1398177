// SPDX-License-Identifier: Apache-2.0
#include "site/Matching.h"

#include <map>

namespace site {

using inventory::Camera;

std::vector<Candidate> candidatesOf(const inventory::Inventory& inventory)
{
    std::vector<Candidate> candidates;
    std::map<base::MacAddress, std::size_t> known;
    for (const Camera& camera : inventory.cameras) {
        const auto [entry, isNew] = known.emplace(camera.mac, candidates.size());
        if (isNew)
            candidates.push_back({inventory.cameraWith(camera.mac), {}});
        candidates[entry->second].adapters.insert(camera.adapterName);
    }
    return candidates;
}

bool matches(const Match& match, const Candidate& candidate)
{
    const Camera& camera = *candidate.camera;
    return (!match.adapter || candidate.adapters.contains(*match.adapter)) &&
           (!match.serial || *match.serial == camera.serial) && (!match.mac || *match.mac == camera.mac) &&
           (!match.userName || *match.userName == camera.userName);
}

std::string textOf(const Camera& camera)
{
    const std::string blank = camera.model.empty() || camera.serial.empty() ? "" : " ";
    const std::string what = camera.model + blank + camera.serial;
    return camera.mac.toText() + (what.empty() ? "" : " (" + what + ")");
}

} // namespace site
