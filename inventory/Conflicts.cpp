// SPDX-License-Identifier: Apache-2.0
#include "inventory/Inventory.h"

#include <algorithm>

namespace inventory {
namespace {

void add(Camera& camera, Conflict conflict)
{
    if (std::ranges::find(camera.conflicts, conflict) == camera.conflicts.end())
        camera.conflicts.push_back(conflict);
}

/// Of a camera, wherever that is heard, or of this computer, which hears itself where two of its adapters are
/// on one switch.
bool isKnown(const Inventory& inventory, const base::MacAddress& mac)
{
    return std::ranges::find(inventory.cameras, mac, &Camera::mac) != inventory.cameras.end() ||
           std::ranges::find(inventory.adapters, mac, &Adapter::mac) != inventory.adapters.end();
}

/// Somebody on this adapter who is no camera says that he has the address.
void addMachine(const Inventory& inventory, Camera& camera, unsigned adapterIndex, base::Ipv4 address,
                const base::MacAddress& mac)
{
    if (adapterIndex == camera.adapterIndex && address == camera.ip.address && !mac.isUnspecified() &&
        !isKnown(inventory, mac))
        add(camera, {Conflict::With::Machine, mac});
}

} // namespace

void findConflicts(Inventory& inventory)
{
    for (Camera& camera : inventory.cameras) {
        camera.conflicts.clear();
        if (camera.ip.address.isUnspecified())
            continue;
        // On whichever adapters they are: to this computer an address is one camera.
        for (const Camera& other : inventory.cameras)
            if (other.mac != camera.mac && other.ip.address == camera.ip.address)
                add(camera, {Conflict::With::Camera, other.mac});
        for (const Adapter& adapter : inventory.adapters)
            if (adapter.hasAddress(camera.ip.address))
                add(camera, {Conflict::With::ThisComputer, {}});
        // Whoever is in the kernel's table gets the commands. One that may be gone is proven by the camera,
        // which answers those to all and none of those to itself.
        for (const Neighbour& neighbour : inventory.neighbours)
            if (neighbour.isSure || camera.registers == Registers::Silent)
                addMachine(inventory, camera, neighbour.adapterIndex, neighbour.address, neighbour.mac);
        for (const Arrival& arrival : inventory.arrivals)
            if (arrival.kind == Arrival::Kind::Announcement || arrival.kind == Arrival::Kind::Speech)
                addMachine(inventory, camera, arrival.adapterIndex, arrival.address, arrival.mac);
    }
}

} // namespace inventory
