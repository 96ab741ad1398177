// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/SeenCamera.h"

#include "cli/cameras/Cameras.h"
#include "cli/cameras/ListenerHint.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "inventory/Look.h"

#include <ostream>

namespace cli {
namespace {

constexpr int Looks = 3;

std::vector<AnsweringCamera> answering(const inventory::Inventory& inventory)
{
    std::vector<AnsweringCamera> result;
    for (const inventory::Camera& camera : inventory.cameras)
        result.push_back({camera.mac, displayText(camera.model), camera.ip.address});
    return result;
}

} // namespace

SeenCamera seeCamera(const base::MacAddress& mac, const Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    inventory::Look look;
    inventory::Inventory seen;
    for (int i = 0; i < Looks; ++i) {
        seen = look.once({});
        if (const inventory::Camera* const camera = seen.cameraWith(mac))
            return {seen, *camera};
    }
    session.err << listenerHint(listenerReport(seen));
    throw noSuchCamera(mac, seen.notSearched, answering(seen));
}

ListenerReport listenerReport(const inventory::Inventory& inventory)
{
    return {static_cast<ListenerState>(inventory.listener),
            QString::fromStdString(inventory.listenerProgram)};
}

std::string describe(const inventory::Camera& camera)
{
    return displayText(camera.model) + " (" + camera.mac.toText() + ")";
}

} // namespace cli
