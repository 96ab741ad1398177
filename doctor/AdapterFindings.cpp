// SPDX-License-Identifier: Apache-2.0
#include "doctor/Families.h"
#include "doctor/Words.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace doctor {
namespace {

using base::Sentence;
using inventory::Adapter;
using inventory::AdapterAddress;
using inventory::Camera;

const Sentence UntilRestart{
    TRANSLATABLE("Sentence",
                 "What the command does holds until this computer restarts; to make it last, change its "
                 "network settings."),
    {}};

/// Adapters that the kernel or some program makes for itself; there is never a cable at them.
bool canHaveCameras(const Adapter& adapter)
{
    constexpr std::array<std::string_view, 7> never{"dummy",  "ifb",       "gretap", "ip6gretap",
                                                    "erspan", "ip6erspan", "tun"};
    return adapter.isEthernet && std::ranges::find(never, adapter.kind) == never.end();
}

class AdapterFamily
{
public:
    AdapterFamily(const Evidence& evidence, inventory::FreeAddresses& free, std::vector<Finding>& findings)
        : m_inventory(evidence.inventory),
          m_free(free),
          m_findings(findings)
    {
        for (const Camera& camera : m_inventory.cameras)
            m_cameras[camera.adapterIndex].push_back(&camera);
    }

    void find()
    {
        findContainer();
        for (const Adapter& adapter : m_inventory.adapters) {
            if (!canHaveCameras(adapter))
                continue;
            if (!adapter.isUp)
                addDown(adapter);
            else if (!adapter.hasCarrier && (adapter.kind != "bridge" || hasPorts(adapter)))
                addNoLink(adapter);
            else if (adapter.hasCarrier && adapter.addresses.empty() && adapter.master == 0)
                addNoAddress(adapter);
        }
        findOverlaps();
    }

private:
    const std::vector<const Camera*>& camerasOf(const Adapter& adapter) { return m_cameras[adapter.index]; }

    bool hasPorts(const Adapter& bridge) const
    {
        return std::ranges::find(m_inventory.adapters, bridge.index, &Adapter::master) !=
               m_inventory.adapters.end();
    }

    static std::string addressesOf(const Adapter& adapter)
    {
        std::vector<std::string> words;
        for (const AdapterAddress& each : adapter.addresses)
            words.push_back(each.toText());
        return listed(words);
    }

    static Severity severityByAddress(const Adapter& adapter)
    {
        return adapter.addresses.empty() ? Severity::Note : Severity::Warning;
    }

    static Sentence reasonByAddress(const Adapter& adapter)
    {
        return adapter.addresses.empty()
                   ? Sentence{TRANSLATABLE("Sentence", "It has no IPv4 address."), {}}
                   : Sentence{TRANSLATABLE("Sentence", "It has the address %1, so it is meant to be used."),
                              {addressesOf(adapter)}};
    }

    void findContainer()
    {
        if (std::ranges::any_of(m_inventory.adapters, &Adapter::isPhysical))
            return;
        std::vector<std::string> names;
        for (const Adapter& adapter : m_inventory.adapters)
            names.push_back(adapter.kind.empty() ? adapter.name : adapter.name + " (" + adapter.kind + ")");
        Finding finding = newFinding(
            "container", m_inventory.cameras.empty() ? Severity::Warning : Severity::Note, std::string());
        finding.text = {
            {TRANSLATABLE("Sentence", "This program sees no network adapter of hardware: it runs in a "
                                      "container or in a network made by software, and hears only cameras "
                                      "on what is passed on to it."),
             {}},
            {TRANSLATABLE("Sentence", "Should cameras be missing, run it on the computer itself, or in a "
                                      "container that has the computer's own network (docker run --network "
                                      "host)."),
             {}}};
        finding.reason = {
            names.empty()
                ? Sentence{TRANSLATABLE("Sentence", "It sees no network adapter at all."), {}}
                : Sentence{TRANSLATABLE("Sentence", "The kernel says that what it sees is made by software: "
                                                    "%1."),
                           {listed(names)}}};
        m_findings.push_back(std::move(finding));
    }

    void addDown(const Adapter& adapter)
    {
        Finding finding = newFinding("adapter-down", severityByAddress(adapter), adapter.name);
        finding.text = {{TRANSLATABLE("Sentence", "The network adapter %1 is switched off, so nothing behind "
                                                  "it is heard."),
                         {adapter.name}},
                        UntilRestart};
        finding.reason = {{TRANSLATABLE("Sentence", "The kernel says that it is not up."), {}},
                          reasonByAddress(adapter)};
        finding.repair = {"ip link set dev " + quoted(adapter.name) + " up"};
        m_findings.push_back(std::move(finding));
    }

    void addNoLink(const Adapter& adapter)
    {
        Finding finding = newFinding("no-link", severityByAddress(adapter), adapter.name);
        finding.text = {
            {TRANSLATABLE("Sentence", "The network adapter %1 has no link: its cable is out or broken, or "
                                      "what is at the cable's other end is switched off."),
             {adapter.name}},
            {TRANSLATABLE("Sentence", "Check the plugs at both ends, the cable, and the power of the camera "
                                      "or switch at its other end."),
             {}}};
        finding.reason = {{TRANSLATABLE("Sentence", "It is switched on, and the kernel says that it has no "
                                                    "carrier."),
                           {}},
                          reasonByAddress(adapter)};
        m_findings.push_back(std::move(finding));
    }

    /// The subnet in which most of the adapter's cameras are, of those that are nowhere else on this
    /// computer; nothing when there is none.
    std::optional<AdapterAddress> subnetOfCameras(const Adapter& adapter)
    {
        std::map<std::pair<base::Ipv4, unsigned>, int> counts;
        std::optional<AdapterAddress> best;
        int most = 0;
        for (const Camera* const camera : camerasOf(adapter)) {
            const auto prefix = inventory::prefixOf(camera->ip.mask);
            const AdapterAddress subnet{camera->ip.address, prefix.value_or(24)};
            if (!camera->ip.address.canBeHost() || m_free.overlaps(subnet))
                continue;
            const int count =
                ++counts[{camera->ip.address.networkAddress(subnet.mask()), subnet.prefixLength}];
            if (count > most) {
                most = count;
                best = subnet;
            }
        }
        return best;
    }

    void addNoAddress(const Adapter& adapter)
    {
        const auto& cameras = camerasOf(adapter);
        Finding finding =
            newFinding("no-address", cameras.empty() ? Severity::Warning : Severity::Error, adapter.name);
        finding.text = {{TRANSLATABLE("Sentence", "The network adapter %1 has no IPv4 address, so programs "
                                                  "cannot talk to cameras behind it."),
                         {adapter.name}}};
        std::vector<std::string> names;
        for (const Camera* const camera : cameras)
            names.push_back(nameOf(*camera) + " " + camera->ip.address.toText());
        finding.reason = {
            cameras.empty()
                ? Sentence{TRANSLATABLE("Sentence", "It is switched on and has a link; no camera was heard "
                                                    "there, though it was asked all the same."),
                           {}}
                : Sentence{TRANSLATABLE("Sentence", "It is switched on and has a link, and these cameras "
                                                    "were heard there: %1."),
                           {listed(names)}}};

        std::optional<AdapterAddress> fitting;
        if (const auto subnet = subnetOfCameras(adapter))
            fitting = m_free.in(*subnet, adapter.index);
        const AdapterAddress linkLocal{base::Ipv4(0xA9FE0000), 16};
        if (!fitting && cameras.empty() && !m_free.overlaps(linkLocal))
            fitting = m_free.in(linkLocal, adapter.index);
        if (!fitting)
            fitting = m_free.inPrivateSubnet(adapter.index);
        if (fitting) {
            finding.repair = {"ip address add " + fitting->toText() + " dev " + quoted(adapter.name)};
            finding.text.push_back(UntilRestart);
        } else {
            finding.text.push_back({TRANSLATABLE("Sentence", "Give it one, in this computer's network "
                                                             "settings."),
                                    {}});
        }
        m_findings.push_back(std::move(finding));
    }

    struct Own
    {
        const Adapter* adapter;
        AdapterAddress address;
        bool isMoved = false; ///< By a repair already.
    };

    void findOverlaps()
    {
        std::vector<Own> all;
        for (const Adapter& adapter : m_inventory.adapters)
            for (const AdapterAddress& each : adapter.addresses)
                if (adapter.isUp && each.prefixLength <= 30)
                    all.push_back({.adapter = &adapter, .address = each});
        for (std::size_t i = 0; i < all.size(); ++i)
            for (std::size_t j = i + 1; j < all.size(); ++j)
                if (all[i].adapter != all[j].adapter && overlap(all[i].address, all[j].address) &&
                    !all[i].isMoved && !all[j].isMoved)
                    addOverlap(all[i], all[j]);
    }

    void addOverlap(Own& a, Own& b)
    {
        // The one that is not needed there.
        Own* const idle = camerasOf(*b.adapter).empty() ? &b : camerasOf(*a.adapter).empty() ? &a : nullptr;
        const std::string& nameA = a.adapter->name;
        const std::string& nameB = b.adapter->name;
        Finding finding =
            newFinding("overlapping-adapters", Severity::Warning, idle ? idle->adapter->name : nameB);
        finding.text = {{TRANSLATABLE("Sentence", "The network adapters %1 and %2 of this computer are in "
                                                  "one subnet, so it may look for a camera behind the wrong "
                                                  "one of them."),
                         {nameA, nameB}}};
        finding.reason = {
            {TRANSLATABLE("Sentence", "%1 has %2 and %3 has %4. Cameras heard behind %1: %5; behind %3: %6."),
             {nameA, a.address.toText(), nameB, b.address.toText(),
              std::to_string(camerasOf(*a.adapter).size()), std::to_string(camerasOf(*b.adapter).size())}}};
        const auto elsewhere = idle ? m_free.inPrivateSubnet(idle->adapter->index) : std::nullopt;
        if (elsewhere) {
            const std::string device = " dev " + quoted(idle->adapter->name);
            finding.repair = {"ip address add " + elsewhere->toText() + device,
                              "ip address del " + idle->address.toText() + device};
            finding.text.push_back({TRANSLATABLE("Sentence", "The commands move %1, behind which no camera "
                                                             "was heard; whatever reaches this computer "
                                                             "over it loses its connection."),
                                    {idle->adapter->name}});
            finding.text.push_back(UntilRestart);
            idle->isMoved = true;
        } else {
            finding.text.push_back({TRANSLATABLE("Sentence", "In this computer's network settings, give one "
                                                             "of them an address in another subnet, and "
                                                             "then addresses of that subnet to its "
                                                             "cameras."),
                                    {}});
        }
        m_findings.push_back(std::move(finding));
    }

    const inventory::Inventory& m_inventory;
    inventory::FreeAddresses& m_free;
    std::vector<Finding>& m_findings;
    std::map<unsigned, std::vector<const Camera*>> m_cameras; ///< By the adapters that hear them.
};

} // namespace

void findInAdapters(const Evidence& evidence, inventory::FreeAddresses& free, std::vector<Finding>& findings)
{
    AdapterFamily(evidence, free, findings).find();
}

} // namespace doctor
