// SPDX-License-Identifier: Apache-2.0
#include "doctor/Families.h"
#include "doctor/Words.h"

#include <algorithm>
#include <functional>

namespace doctor {
namespace {

using base::Sentence;
using inventory::Arrival;

/// Of more devices nobody reads one by one; the others are counted.
constexpr std::size_t MaxDevices = 20;

/// What one device said.
struct Device
{
    base::MacAddress mac;
    unsigned adapterIndex = 0;
    unsigned probes = 0;
    unsigned announcements = 0;
    unsigned requests = 0;      ///< By DHCP,
    unsigned blankRequests = 0; ///< of these, for any address.
    std::set<base::Ipv4> wanted{};
    base::Ipv4 address{}; ///< What it has, as it said at last.

    /// A DHCP client that is answered asks twice, first for any address and then for the one that it was
    /// offered; and one that has found by ARP that an address is free says that it has it.
    bool asksInVain() const
    {
        return address.isUnspecified() && (blankRequests >= 2 || requests >= 3 || probes >= 2);
    }
};

void note(Device& device, const Arrival& arrival)
{
    switch (arrival.kind) {
    case Arrival::Kind::Probe:
        ++device.probes;
        device.wanted.insert(arrival.address);
        break;
    case Arrival::Kind::Announcement:
        ++device.announcements;
        device.address = arrival.address;
        break;
    case Arrival::Kind::Speech:
        device.address = arrival.address;
        break;
    case Arrival::Kind::DhcpRequest:
        ++device.requests;
        device.blankRequests += arrival.address.isUnspecified() ? 1 : 0;
        break;
    }
}

/// Who tell of themselves and are neither cameras nor this computer, in the order of their coming.
std::vector<Device> devicesIn(const inventory::Inventory& inventory)
{
    std::set<base::MacAddress> known;
    for (const inventory::Camera& camera : inventory.cameras)
        known.insert(camera.mac);
    for (const inventory::Adapter& adapter : inventory.adapters)
        known.insert(adapter.mac);

    std::vector<Device> devices;
    std::map<std::pair<base::MacAddress, unsigned>, std::size_t> places;
    for (const Arrival& arrival : inventory.arrivals) {
        if (known.contains(arrival.mac) || arrival.mac.isUnspecified())
            continue;
        const auto [place, isNew] = places.try_emplace({arrival.mac, arrival.adapterIndex}, devices.size());
        if (isNew)
            devices.push_back({arrival.mac, arrival.adapterIndex});
        note(devices[place->second], arrival);
    }
    // Who only speaks with others is none that comes up or looks for an address.
    std::erase_if(devices, [](const Device& device) {
        return device.probes + device.announcements + device.requests == 0;
    });
    std::stable_partition(devices.begin(), devices.end(), std::mem_fn(&Device::asksInVain));
    return devices;
}

std::string adapterName(const inventory::Inventory& inventory, unsigned index)
{
    const inventory::Adapter* const adapter = inventory.adapterWith(index);
    return adapter ? adapter->name : std::string();
}

/// What it was heard to do, one sentence for each way.
std::vector<Sentence> reasonOf(const Device& device, std::chrono::milliseconds time)
{
    const std::string seconds = std::to_string((time.count() + 500) / 1000);
    std::vector<Sentence> reason;
    if (device.requests > 0)
        reason.push_back({TRANSLATABLE("Sentence", "In %1 seconds it asked a DHCP server for an address %2 "
                                                   "times."),
                          {seconds, std::to_string(device.requests)}});
    if (device.probes > 0) {
        std::vector<std::string> wanted;
        for (const base::Ipv4 each : device.wanted)
            wanted.push_back(each.toText());
        reason.push_back({TRANSLATABLE("Sentence", "In %1 seconds it asked %2 times by ARP whether somebody "
                                                   "has the address that it would like: %3."),
                          {seconds, std::to_string(device.probes), listed(wanted)}});
    }
    if (!device.address.isUnspecified())
        reason.push_back({TRANSLATABLE("Sentence", "By ARP it says that it has the address %1."),
                          {device.address.toText()}});
    return reason;
}

Finding findingOf(const Device& device, const Evidence& evidence)
{
    const bool inVain = device.asksInVain();
    const auto maker = evidence.makers.find(device.mac);
    Finding finding = newFinding("silent-device", inVain ? Severity::Warning : Severity::Note,
                                 adapterName(evidence.inventory, device.adapterIndex), device.mac);
    const std::string mac = device.mac.toText();
    if (inVain)
        finding.text.push_back({TRANSLATABLE("Sentence", "The device %1 on %2 asks for an address again and "
                                                         "again, and does not answer searches for cameras."),
                                {mac, finding.adapterName}});
    else
        finding.text.push_back({TRANSLATABLE("Sentence", "The device %1 on %2 tells of itself, and does not "
                                                         "answer searches for cameras."),
                                {mac, finding.adapterName}});
    if (maker != evidence.makers.end())
        finding.text.push_back({TRANSLATABLE("Sentence", "Its maker is %1."), {maker->second}});
    finding.text.push_back(
        {TRANSLATABLE("Sentence", "If that is the camera you miss (its label shows the MAC "
                                  "address), give it a minute to start; then switch it "
                                  "off and on, and check that its power supply is strong "
                                  "enough."),
         {}});
    finding.reason = reasonOf(device, evidence.time);
    return finding;
}

} // namespace

std::vector<base::MacAddress> silentDevices(const inventory::Inventory& inventory)
{
    std::vector<base::MacAddress> macs;
    for (const Device& device : devicesIn(inventory)) {
        if (macs.size() == MaxDevices)
            break;
        macs.push_back(device.mac);
    }
    return macs;
}

void findSilentDevices(const Evidence& evidence, std::vector<Finding>& findings)
{
    const std::vector<Device> devices = devicesIn(evidence.inventory);
    for (std::size_t i = 0; i < devices.size() && i < MaxDevices; ++i)
        findings.push_back(findingOf(devices[i], evidence));
    if (devices.size() <= MaxDevices)
        return;
    Finding rest = newFinding("silent-device", Severity::Note, std::string());
    rest.text = {{TRANSLATABLE("Sentence", "%1 more devices tell of themselves and do not answer searches "
                                           "for cameras; to look at them, unplug the others meanwhile."),
                  {std::to_string(devices.size() - MaxDevices)}}};
    rest.reason = {{TRANSLATABLE("Sentence", "They were heard by ARP, or as they asked a DHCP server."), {}}};
    findings.push_back(std::move(rest));
}

} // namespace doctor
