// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/AddressConflict.h"

#include "cli/cameras/Cameras.h"
#include "cli/cameras/SeenCamera.h"
#include "cli/neighbours/AddressOwner.h"
#include "cli/session/Failure.h"
#include "cli/session/Session.h"
#include "device/HearingAdapter.h"
#include "inventory/Look.h"

#include <ostream>
#include <system_error>

namespace cli {
namespace {

[[noreturn]] void refuse(base::Ipv4 address, const std::string& owner)
{
    throw Failure(ExitStatus::Failed,
                  address.toText() + " is in use: " + owner + "; nothing was sent to the camera");
}

OwnerQuestion questionFor(base::Ipv4 address, const FoundCamera& found)
{
    OwnerQuestion question{address, HearingAdapterIndex(found.camera.device), found.camera.mac, {}};
    for (const Camera& each : found.all)
        question.otherCameras.insert(each.mac);
    question.otherCameras.erase(question.camera);
    return question;
}

/// What there is now, and the cameras that answered before, should their answers have got lost now.
inventory::Inventory lookAround(const FoundCamera& found)
{
    inventory::Inventory known;
    try {
        known = inventory::Look().once({});
    } catch (const std::system_error&) {
        known.adapters = inventory::hostAdapters();
    }
    for (const Camera& each : found.all) {
        if (known.cameraWith(each.mac))
            continue;
        inventory::Camera camera;
        camera.mac = each.mac;
        camera.model = each.device.m_strModelName.toStdString();
        camera.ip = each.settings;
        known.cameras.push_back(std::move(camera));
    }
    // Of neighbours that it remembers the kernel tells more when it is asked.
    known.neighbours.clear();
    return known;
}

/// The camera with its conflicts, if it had that address.
inventory::Camera withAddress(inventory::Inventory known, const FoundCamera& found, base::Ipv4 address)
{
    inventory::Camera& camera = known.cameras.emplace_back();
    camera.mac = found.camera.mac;
    camera.ip.address = address;
    camera.adapterIndex = static_cast<unsigned>(HearingAdapterIndex(found.camera.device));
    findConflicts(known);
    return known.cameras.back();
}

std::string ownerOf(const inventory::Conflict& conflict, const inventory::Inventory& known)
{
    switch (conflict.with) {
    case inventory::Conflict::With::Camera:
        return "the camera " + describe(*known.cameraWith(conflict.mac)) + " has it";
    case inventory::Conflict::With::Machine:
        return "the device " + conflict.mac.toText() + " says by ARP that it has it";
    case inventory::Conflict::With::ThisComputer:
        break;
    }
    return "an adapter of this computer has it";
}

std::string describeOwner(const AddressOwner& owner, const std::vector<Camera>& cameras)
{
    const Camera* const camera = owner.mac ? cameraByMac(cameras, *owner.mac) : nullptr;
    const std::string who = camera      ? "the camera " + describe(*camera)
                            : owner.mac ? "the device " + owner.mac->toText()
                                        : "a device with this address";
    if (owner.answersPing)
        return who + " answers ping";
    if (!owner.lastHeard)
        return who + " answers ARP";
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*owner.lastHeard).count();
    return who + " was heard there " + std::to_string(seconds) +
           " seconds ago; if it has just been taken away, the address counts as free in a minute";
}

void noteWhatWasNotAsked(base::Ipv4 address, const OwnerAnswer& answer, std::ostream& err)
{
    const std::string& ping = answer.pingFailure;
    const std::string& arp = answer.arpFailure;
    if (!ping.empty() && !arp.empty())
        err << "note: whether another device uses " << address << " could not be checked ("
            << (ping == arp ? ping : ping + "; " + arp) << ")\n";
    else if (!ping.empty())
        err << "note: whether another device uses " << address
            << " was asked by ARP alone, as ping does not work (" << ping << ")\n";
    else if (!arp.empty())
        err << "note: whether another device uses " << address
            << " was asked by ping alone, as ARP could not be watched (" << arp << ")\n";
}

} // namespace

void requireUnusedAddress(const FoundCamera& found, base::Ipv4 address, const Session& session)
{
    if (found.camera.settings.address == address)
        return;
    for (const _NETWORK_INFO& adapter : found.camera.device.m_vecHostAdapter)
        if (adapter.nIpAddress == address.number())
            refuse(address, "an adapter of this computer has it");
    const inventory::Inventory known = lookAround(found);
    const inventory::Camera there = withAddress(known, found, address);
    if (!there.conflicts.empty())
        refuse(address, ownerOf(there.conflicts.front(), known));

    if (session.interactive)
        session.err << "Asking whether anybody has " << address
                    << ", which takes 6 seconds if nobody does and 15 if somebody had it lately ...\n"
                    << std::flush;
    const OwnerAnswer answer = session.findOwner(questionFor(address, found));
    if (answer.owner)
        refuse(address, describeOwner(*answer.owner, found.all));
    noteWhatWasNotAsked(address, answer, session.err);
}

bool isOutsideAdapterSubnet(const Camera& camera, base::Ipv4 address)
{
    return !camera.device.AdapterWith(camera.adapter).reaches(address);
}

void noteOutsideAdapterSubnet(const Camera& camera, base::Ipv4 address, std::ostream& err)
{
    if (isOutsideAdapterSubnet(camera, address))
        err << "note: the new address is outside the subnet of the adapter that hears the camera ("
            << camera.adapter << "); the camera will be listed as Unreachable\n";
}

} // namespace cli
