// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Adapter.h"
#include "inventory/Camera.h"

#include <cstdint>
#include <string>
#include <vector>

namespace inventory {

/// Some device said something that tells of itself: by ARP, or as a DHCP client. Only where the listener may
/// listen.
struct Arrival
{
    enum class Kind
    {
        Probe,        ///< By ARP: does anybody have `address`? Asked by one that would like to have it.
        Announcement, ///< By ARP: I have `address`.
        Speech,       ///< By ARP, otherwise: it has `address` as it asks, or answers, for another reason.
        DhcpRequest   ///< It asks a DHCP server for an address.
    };
    Kind kind = Kind::Speech;
    unsigned adapterIndex = 0;
    base::MacAddress mac;
    base::Ipv4 address; ///< 0.0.0.0 in a DhcpRequest that asks for no certain one.

    bool operator==(const Arrival&) const = default;
};

/// How well is heard what the kernel keeps from ordinary programs. In the order of RZ_LISTENER.
enum class Listener
{
    Hears,
    Missing,      ///< The program is not there.
    Forbidden,    ///< This user may not run it, or nobody.
    Unprivileged, ///< It may not open its socket.
    Failed        ///< Another reason, or it ended too often.
};

/// An entry of the kernel's table of IPv4 neighbours: to whom it sends what is for the address.
struct Neighbour
{
    unsigned adapterIndex = 0;
    base::Ipv4 address;
    base::MacAddress mac;
    bool isSure = false; ///< It has answered within the last minute; else it may be long gone.

    bool operator==(const Neighbour&) const = default;
};

/// What there is, as one look found it.
struct Inventory
{
    std::vector<Adapter> adapters;
    std::vector<Camera> cameras;   ///< By MAC and adapter; one that two adapters hear is there twice.
    std::vector<Arrival> arrivals; ///< In the order of their coming; bounded.
    std::vector<Neighbour> neighbours;
    Listener listener = Listener::Hears; ///< Of the first adapter on which not all is well.
    std::string listenerProgram;         ///< Its file.
    std::string notSearched; ///< "eth1: Too many open files; ...": adapters, and why; empty when all were.
    unsigned unlisted = 0;   ///< Cameras beyond those that can be told apart from a flood.
    std::uint64_t reversePathDrops = 0; ///< Packets that the reverse-path filter dropped meanwhile.

    const Adapter* adapterWith(unsigned index) const;
    /// The camera of that MAC, where it is reachable if anywhere, else where it was heard first; null when it
    /// is not among them.
    const Camera* cameraWith(const base::MacAddress& mac) const;
};

/// Whose addresses collide, from what is in the inventory: two cameras, a camera and this computer, a camera
/// and another machine on its adapter. Fills in Camera::conflicts. A pure function.
void findConflicts(Inventory& inventory);

} // namespace inventory
