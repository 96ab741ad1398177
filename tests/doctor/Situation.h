// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "doctor/Evidence.h"

#include <string>
#include <vector>

/// Evidence of a network in order, for a test to put something out of order.
struct Situation : doctor::Evidence
{
    static constexpr const char* Mac = "00:1A:2B:00:00:01"; ///< The camera's.

    /// A computer with an adapter of hardware, eth0 at 192.168.1.5/24, and a static camera at 192.168.1.20.
    Situation()
    {
        time = std::chrono::milliseconds(4200);
        firewall.sight = doctor::Firewall::Sight::Seen;
        addAdapter("eth0", "192.168.1.5", 24);
        addCamera("eth0", Mac, "192.168.1.20");
    }

    static base::Ipv4 ip(const std::string& text) { return base::Ipv4::parse(text).value(); }
    static base::MacAddress mac(const std::string& text) { return base::MacAddress::parse(text).value(); }

    inventory::Adapter& addAdapter(const std::string& name, const std::string& address = {},
                                   unsigned prefix = 24)
    {
        inventory::Adapter adapter;
        adapter.name = name;
        adapter.index = static_cast<unsigned>(inventory.adapters.size()) + 2;
        adapter.mac = mac("00:50:56:00:00:01");
        adapter.mac.bytes[5] = static_cast<std::uint8_t>(adapter.index);
        adapter.isUp = adapter.hasCarrier = adapter.isEthernet = true;
        adapter.linkSpeed = 1000;
        adapter.mtu = 1500;
        if (!address.empty())
            adapter.addresses.push_back({ip(address), prefix});
        inventory.adapters.push_back(adapter);
        return inventory.adapters.back();
    }

    inventory::Adapter& adapter(const std::string& name = "eth0")
    {
        for (inventory::Adapter& each : inventory.adapters)
            if (each.name == name)
                return each;
        throw std::logic_error("no adapter " + name);
    }

    /// As a look finds it: static, free, and heard whole.
    inventory::Camera& addCamera(const std::string& adapterName, const std::string& cameraMac,
                                 const std::string& address, const std::string& mask = "255.255.255.0")
    {
        const inventory::Adapter& hearing = adapter(adapterName);
        inventory::Camera camera;
        camera.mac = mac(cameraMac);
        camera.model = "FC-1";
        camera.ip = {ip(address), ip(mask), {}};
        camera.method = inventory::IpMethod::Static;
        camera.adapterIndex = hearing.index;
        camera.adapterName = hearing.name;
        if (!hearing.addresses.empty())
            camera.adapterAddress = hearing.addresses.front().address;
        camera.hearing = {.bySocket = true,
                          .byListener = true,
                          .byUnicast = true,
                          .byBroadcast = false,
                          .searches = 6,
                          .answers = 6,
                          .questions = 0,
                          .replies = 0};
        if (hearing.inSubnetOf(camera.ip.address)) {
            camera.status = inventory::Status::Free;
            camera.registers = inventory::Registers::Told;
            camera.privilege = inventory::Privilege::None;
            camera.hearing.questions = camera.hearing.replies = 20;
            camera.linkSpeed = 1000;
            camera.stored = camera.ip;
            camera.isHeartbeatOff = false;
        }
        inventory.cameras.push_back(camera);
        return inventory.cameras.back();
    }

    inventory::Camera& camera(std::size_t index = 0) { return inventory.cameras.at(index); }

    void say(inventory::Arrival::Kind kind, const std::string& deviceMac,
             const std::string& address = "0.0.0.0")
    {
        inventory.arrivals.push_back({kind, adapter().index, mac(deviceMac), ip(address)});
    }

    /// What is found now, with the conflicts of addresses looked for anew.
    doctor::Judgement judged()
    {
        findConflicts(inventory);
        return doctor::judge(*this);
    }

    std::vector<doctor::Finding> found(const std::string& id)
    {
        std::vector<doctor::Finding> findings;
        for (doctor::Finding& each : judged().findings)
            if (each.id == id)
                findings.push_back(each);
        return findings;
    }

    /// The only one with that id.
    doctor::Finding only(const std::string& id)
    {
        const std::vector<doctor::Finding> findings = found(id);
        if (findings.size() != 1)
            throw std::logic_error(std::to_string(findings.size()) + " findings " + id);
        return findings.front();
    }
};
