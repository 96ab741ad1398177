// SPDX-License-Identifier: Apache-2.0
#include "ui/Observation.h"

#include "inventory/Holding.h"
#include "inventory/Look.h"

#include <algorithm>
#include <set>

using base::Sentence;
using inventory::Camera;
using inventory::Conflict;

namespace {

std::string NameOf(const Camera& camera)
{
    if (!camera.userName.empty())
        return camera.userName;
    return camera.serial.empty() ? camera.mac.toText() : camera.serial;
}

std::string NameOf(const inventory::Inventory& inventory, const base::MacAddress& mac)
{
    const Camera* const pCamera = inventory.cameraWith(mac);
    return pCamera ? NameOf(*pCamera) : mac.toText();
}

/// The cameras with this one's address, itself among them.
std::set<base::MacAddress> Sharers(const Camera& camera)
{
    std::set<base::MacAddress> sharers{camera.mac};
    for (const Conflict& conflict : camera.conflicts)
        if (conflict.with == Conflict::With::Camera)
            sharers.insert(conflict.mac);
    return sharers;
}

Sentence SharedAddress(const inventory::Inventory& inventory, const Camera& camera,
                       const std::set<base::MacAddress>& sharers)
{
    std::string names;
    for (const base::MacAddress& mac : sharers)
        names += (names.empty() ? "" : ", ") + NameOf(inventory, mac);
    if (sharers.size() == 2)
        return {TRANSLATABLE("Sentence", "Two cameras have the address %1: %2"),
                {camera.ip.address.toText(), names}};
    return {TRANSLATABLE("Sentence", "%1 cameras have the address %2: %3"),
            {std::to_string(sharers.size()), camera.ip.address.toText(), names}};
}

/// As told of the camera itself.
Sentence RemarkOn(const Conflict& conflict, const inventory::Inventory& inventory)
{
    switch (conflict.with) {
    case Conflict::With::Camera:
        return {TRANSLATABLE("Sentence", "Another camera has the same address: %1 (%2)."),
                {NameOf(inventory, conflict.mac), conflict.mac.toText()}};
    case Conflict::With::Machine:
        return {TRANSLATABLE("Sentence", "Another device has the same address: %1."),
                {conflict.mac.toText()}};
    case Conflict::With::ThisComputer:
        break;
    }
    return {TRANSLATABLE("Sentence", "This computer has the same address."), {}};
}

} // namespace

std::vector<Sentence> Observation::Conflicts() const
{
    std::vector<Sentence> conflicts;
    const auto tellOnce = [&conflicts](Sentence sentence) {
        if (std::find(conflicts.begin(), conflicts.end(), sentence) == conflicts.end())
            conflicts.push_back(std::move(sentence));
    };
    for (const Camera& camera : inventory.cameras) {
        if (const auto sharers = Sharers(camera); sharers.size() > 1)
            tellOnce(SharedAddress(inventory, camera, sharers));
        for (const Conflict& conflict : camera.conflicts) {
            if (conflict.with == Conflict::With::Machine)
                tellOnce({TRANSLATABLE("Sentence", "%1 and another device (%2) have the address %3"),
                          {NameOf(camera), conflict.mac.toText(), camera.ip.address.toText()}});
            else if (conflict.with == Conflict::With::ThisComputer)
                tellOnce({TRANSLATABLE("Sentence", "%1 and this computer have the address %2"),
                          {NameOf(camera), camera.ip.address.toText()}});
        }
    }
    return conflicts;
}

std::map<std::string, std::vector<Sentence>> Observation::Remarks() const
{
    std::map<std::string, std::vector<Sentence>> remarks;
    for (const auto& [mac, sentences] : holders)
        remarks[mac.toText()] = sentences;
    for (const Camera& camera : inventory.cameras) {
        for (const Conflict& conflict : camera.conflicts) {
            auto& said = remarks[camera.mac.toText()];
            Sentence remark = RemarkOn(conflict, inventory);
            if (std::find(said.begin(), said.end(), remark) == said.end())
                said.push_back(std::move(remark));
        }
    }
    return remarks;
}

std::shared_ptr<const Observation> Observe(std::chrono::milliseconds time)
{
    auto pObservation = std::make_shared<Observation>();
    inventory::Look look;
    inventory::Look::Plan plan;
    plan.time = time;
    pObservation->inventory = look.once(plan);
    const inventory::Inventory& inventory = pObservation->inventory;
    const auto isInUse = [](const Camera& camera) { return camera.status == inventory::Status::InUse; };
    for (const auto& [mac, holding] : holdingsOf(inventory, isInUse))
        pObservation->holders[mac] = holding.reason;
    return pObservation;
}
