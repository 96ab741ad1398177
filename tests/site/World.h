// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "site/Plan.h"

#include <set>
#include <string>

/// A site of places p0, p1 ..., whose cameras are there and as planned.
namespace world {

inline base::MacAddress mac(std::size_t number)
{
    return {{2, 0, 0, 0, 0, static_cast<std::uint8_t>(number + 1)}};
}

inline inventory::Adapter adapter(unsigned index, const std::string& name, base::Ipv4 address)
{
    inventory::Adapter adapter;
    adapter.index = index;
    adapter.name = name;
    adapter.addresses = {{address, 24}};
    adapter.mtu = 1500;
    return adapter;
}

/// Static, free, heard on line0; 192.168.10.21 and so on.
inline inventory::Camera camera(std::size_t number)
{
    const std::string text = std::to_string(number);
    inventory::Camera camera;
    camera.mac = mac(number);
    camera.model = "FC-1";
    camera.serial = "S" + std::to_string(number + 1);
    camera.userName = "c" + text;
    camera.ip = {base::Ipv4(0xC0A80A15 + static_cast<std::uint32_t>(number)), base::Ipv4(0xFFFFFF00), {}};
    camera.method = inventory::IpMethod::Static;
    camera.adapterIndex = 2;
    camera.adapterName = "line0";
    camera.adapterAddress = base::Ipv4(0xC0A80A01);
    camera.status = inventory::Status::Free;
    camera.registers = inventory::Registers::Told;
    camera.privilege = inventory::Privilege::None;
    camera.stored = camera.ip;
    return camera;
}

inline site::Match byAdapter(const std::string& name)
{
    site::Match match;
    match.adapter = name;
    return match;
}

inline site::Match bySerial(const std::string& serial)
{
    site::Match match;
    match.serial = serial;
    return match;
}

inline void setMethod(site::Place& place, inventory::IpMethod method)
{
    place.method = method;
    if (method != inventory::IpMethod::Static)
        place.ip = {};
}

struct World
{
    site::Site site;
    inventory::Inventory inventory;

    explicit World(std::size_t count)
    {
        inventory.adapters = {adapter(2, "line0", base::Ipv4(0xC0A80A01))};
        for (std::size_t i = 0; i < count; ++i) {
            inventory.cameras.push_back(world::camera(i));
            site::Place place;
            place.name = "p" + std::to_string(i);
            place.match.mac = mac(i);
            place.ip = inventory.cameras.back().ip;
            site.places.push_back(place);
        }
    }

    inventory::Camera& camera(std::size_t number) { return inventory.cameras[number]; }
    site::Place& place(std::size_t number) { return site.places[number]; }
    site::Plan plan(const std::set<std::string>& only = {}) const
    {
        return site::makePlan(site, inventory, only);
    }
};

} // namespace world
