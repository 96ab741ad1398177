// SPDX-License-Identifier: Apache-2.0
#include "doctor/Families.h"
#include "doctor/Words.h"

#include <algorithm>

namespace doctor {
namespace {

using base::Sentence;
using inventory::Adapter;
using inventory::AdapterAddress;
using inventory::Camera;
using inventory::Conflict;
using inventory::IpMethod;
using inventory::Status;

std::string withAddress(const char* command, const Camera& camera, const base::IpSettings& settings)
{
    std::string line = std::string("ip-configurator-cli ") + command;
    line.replace(line.find('@'), 1, camera.mac.toText());
    line += " --ip " + settings.address.toText() + " --mask " + settings.mask.toText();
    return settings.gateway.isUnspecified() ? line : line + " --gateway " + settings.gateway.toText();
}

constexpr const char* Force = "force @";
constexpr const char* SetStatic = "set @ --static";

/// The address with what fits it of the camera's settings.
base::IpSettings settingsOf(const AdapterAddress& address, const Camera& camera)
{
    const bool keepsGateway = !camera.ip.gateway.isUnspecified() && address.reaches(camera.ip.gateway);
    return {address.address, address.mask(), keepsGateway ? camera.ip.gateway : base::Ipv4()};
}

const Sentence FirstLetGo{
    TRANSLATABLE("Sentence", "As long as an application holds it, it takes no other address: close that "
                             "application, then ask again."),
    {}};

Sentence firstTheAdapter(const Camera& camera)
{
    return {TRANSLATABLE("Sentence", "Give the network adapter %1 an address first, then ask again."),
            {camera.adapterName}};
}

class AddressFamily
{
public:
    AddressFamily(const Evidence& evidence, inventory::FreeAddresses& free, std::vector<Finding>& findings)
        : m_evidence(evidence),
          m_inventory(evidence.inventory),
          m_free(free),
          m_findings(findings)
    {
        // A camera that two adapters hear is spoken of once: where it is reachable, else where the adapter
        // has an address.
        std::map<base::MacAddress, const Camera*> cameras;
        for (const Camera& camera : m_inventory.cameras) {
            const Camera*& chosen = cameras[camera.mac];
            if (!chosen || rank(camera) > rank(*chosen))
                chosen = &camera;
        }
        for (const Camera& camera : m_inventory.cameras)
            if (cameras[camera.mac] == &camera)
                m_cameras.push_back(&camera);
        for (const Camera* const camera : m_cameras)
            m_byAddress[camera->ip.address].push_back(camera);
    }

    void find()
    {
        for (const Camera* const camera : m_cameras)
            if (conflictsWith(*camera, Conflict::With::ThisComputer))
                addHostAddress(*camera);
        for (auto& [address, cameras] : m_byAddress)
            if (cameras.size() > 1 && !address.isUnspecified())
                addDuplicates(cameras);
        for (const Camera* const camera : m_cameras)
            if (const Conflict* const other = conflictsWith(*camera, Conflict::With::Machine))
                addMachine(*camera, other->mac);
        for (const Camera* const camera : m_cameras)
            if (camera->status == Status::Unreachable && hasHome(*camera))
                addOutside(*camera);
        for (const Camera* const camera : m_cameras)
            if (camera->method == IpMethod::Dhcp && camera->ip.address.isLinkLocal())
                addNoDhcpServer(*camera);
        for (const Camera* const camera : m_cameras)
            if (camera->method == IpMethod::Static && camera->stored && *camera->stored != camera->ip)
                addNotStored(*camera);
    }

private:
    const Adapter* adapterOf(const Camera& camera) const
    {
        return m_inventory.adapterWith(camera.adapterIndex);
    }

    bool hasHome(const Camera& camera) const
    {
        const Adapter* const adapter = adapterOf(camera);
        return adapter && homeOf(*adapter);
    }

    int rank(const Camera& camera) const
    {
        return camera.status != Status::Unreachable ? 2 : hasHome(camera) ? 1 : 0;
    }

    static const Conflict* conflictsWith(const Camera& camera, Conflict::With with)
    {
        const auto found = std::ranges::find(camera.conflicts, with, &Conflict::with);
        return found == camera.conflicts.end() ? nullptr : &*found;
    }

    /// Has it take a free address, or tells why that has to wait.
    void forceElsewhere(Finding& finding, const Camera& camera)
    {
        const Adapter* const adapter = adapterOf(camera);
        if (isHeld(camera)) {
            finding.text.push_back(FirstLetGo);
        } else if (!adapter || !homeOf(*adapter)) {
            finding.text.push_back(firstTheAdapter(camera));
        } else if (const auto address = m_free.forCamera(camera)) {
            finding.repair = {withAddress(Force, camera, settingsOf(*address, camera))};
            if (camera.method != IpMethod::Static)
                finding.text.push_back(
                    {TRANSLATABLE("Sentence", "The camera obtains its address from the network: the one that "
                                              "the command gives it holds until its next restart."),
                     {}});
        } else {
            finding.text.push_back({TRANSLATABLE("Sentence", "No address is free in the subnet of %1, %2: "
                                                             "give that adapter a larger one, or an address "
                                                             "in another subnet besides."),
                                    {camera.adapterName, homeOf(*adapter)->toText()}});
        }
    }

    void addHostAddress(const Camera& camera)
    {
        Finding finding = newFinding("host-address", Severity::Error, camera);
        finding.text = {{TRANSLATABLE("Sentence", "The camera %1 has the address %2, which is this "
                                                  "computer's own, so no program can reach it."),
                         {nameOf(camera), camera.ip.address.toText()}}};
        for (const Adapter& adapter : m_inventory.adapters)
            if (adapter.hasAddress(camera.ip.address))
                finding.reason.push_back(
                    {TRANSLATABLE("Sentence", "The camera answered on %1 with that address, which the "
                                              "network adapter %2 of this computer has."),
                     {camera.adapterName, adapter.name}});
        forceElsewhere(finding, camera);
        m_findings.push_back(std::move(finding));
    }

    /// Of those that have one address, one keeps it: one that an application is at work with, else one that
    /// somebody has given it for good.
    void addDuplicates(std::vector<const Camera*>& cameras)
    {
        const auto worth = [](const Camera* camera) {
            return std::pair(!isHeld(*camera), camera->method != IpMethod::Static);
        };
        std::ranges::stable_sort(cameras, {}, worth);
        const Camera& keeper = *cameras.front();
        for (auto each = cameras.begin() + 1; each != cameras.end(); ++each) {
            const Camera& camera = **each;
            Finding finding = newFinding("duplicate-address", Severity::Error, camera);
            finding.text = {{TRANSLATABLE("Sentence", "The cameras %1 and %2 have the same address, %3: "
                                                      "which of them a program reaches is chance."),
                             {nameOf(camera), nameOf(keeper), camera.ip.address.toText()}}};
            finding.reason = {
                {TRANSLATABLE("Sentence", "Both answered with it, %1 on %2 and %3 on %4."),
                 {camera.mac.toText(), camera.adapterName, keeper.mac.toText(), keeper.adapterName}}};
            forceElsewhere(finding, camera);
            m_findings.push_back(std::move(finding));
        }
    }

    void addMachine(const Camera& camera, const base::MacAddress& other)
    {
        const auto maker = m_evidence.makers.find(other);
        Finding finding = newFinding("duplicate-address", Severity::Error, camera);
        finding.text = {{TRANSLATABLE("Sentence", "The camera %1 and another device have the same address, "
                                                  "%2: which of them a program reaches is chance."),
                         {nameOf(camera), camera.ip.address.toText()}}};
        finding.reason = {{TRANSLATABLE("Sentence", "By ARP, a device that is no camera has that address on "
                                                    "%1 too: its MAC address is %2."),
                           {camera.adapterName, other.toText()}}};
        if (maker != m_evidence.makers.end())
            finding.reason.push_back(
                {TRANSLATABLE("Sentence", "That MAC address belongs to the maker %1."), {maker->second}});
        forceElsewhere(finding, camera);
        m_findings.push_back(std::move(finding));
    }

    void addOutside(const Camera& camera)
    {
        const Adapter& adapter = *adapterOf(camera);
        std::vector<std::string> own;
        for (const AdapterAddress& each : adapter.addresses)
            own.push_back(each.toText());
        Finding finding = newFinding("outside-subnet", Severity::Error, camera);
        finding.text = {{TRANSLATABLE("Sentence", "The camera %1 has the address %2, which lies outside the "
                                                  "subnet of the network adapter %3, so programs cannot "
                                                  "reach it."),
                         {nameOf(camera), camera.ip.address.toText(), adapter.name}}};
        finding.reason = {{TRANSLATABLE("Sentence", "The camera was heard on %1, which has %2; it says of "
                                                    "itself: %3."),
                           {adapter.name, listed(own), textOf(camera.ip)}}};
        forceElsewhere(finding, camera);
        m_findings.push_back(std::move(finding));
    }

    void addNoDhcpServer(const Camera& camera)
    {
        Finding finding = newFinding("no-dhcp-server", Severity::Warning, camera);
        finding.text = {
            {TRANSLATABLE("Sentence", "The camera %1 asks a DHCP server for its address, and none answers "
                                      "it."),
             {nameOf(camera)}},
            {TRANSLATABLE("Sentence", "Either switch the DHCP server on, look after the cable to it and "
                                      "restart the camera; or give the camera a static address."),
             {}}};
        finding.reason = {{TRANSLATABLE("Sentence", "It is set to DHCP and has the link-local address %1, "
                                                    "which a camera takes when no server answers."),
                           {camera.ip.address.toText()}}};
        const Adapter* const adapter = adapterOf(camera);
        const AdapterAddress* const home = adapter ? homeOf(*adapter) : nullptr;
        if (isHeld(camera)) {
            finding.text.push_back(FirstLetGo);
        } else if (!home) {
            finding.text.push_back(firstTheAdapter(camera));
        } else if (home->reaches(camera.ip.address) && camera.conflicts.empty()) {
            finding.repair = {withAddress(SetStatic, camera, camera.ip)};
        } else if (const auto address = m_free.forCamera(camera)) {
            const base::IpSettings settings = settingsOf(*address, camera);
            finding.repair = {withAddress(SetStatic, camera, settings)};
        }
        m_findings.push_back(std::move(finding));
    }

    void addNotStored(const Camera& camera)
    {
        Finding finding = newFinding("not-stored", Severity::Warning, camera);
        finding.text = {{TRANSLATABLE("Sentence", "The camera %1 has its present settings, address %2, only "
                                                  "until it restarts: it has stored others."),
                         {nameOf(camera), camera.ip.address.toText()}}};
        finding.reason = {{TRANSLATABLE("Sentence", "It is static, so it starts with what it has stored. "
                                                    "Now it has: %1. Stored is: %2."),
                           {textOf(camera.ip), textOf(*camera.stored)}}};
        if (isHeld(camera)) {
            finding.text.push_back(FirstLetGo);
        } else if (!camera.conflicts.empty()) {
            finding.text.push_back({TRANSLATABLE("Sentence", "Its present address is somebody else's too; "
                                                             "repair that first, and it stores the new "
                                                             "one."),
                                    {}});
        } else {
            finding.text.push_back({TRANSLATABLE("Sentence", "The command has it store its present address; "
                                                             "if the stored one is right, switch the camera "
                                                             "off and on instead."),
                                    {}});
            finding.repair = {withAddress(Force, camera, camera.ip)};
        }
        m_findings.push_back(std::move(finding));
    }

    const Evidence& m_evidence;
    const inventory::Inventory& m_inventory;
    inventory::FreeAddresses& m_free;
    std::vector<Finding>& m_findings;
    std::vector<const Camera*> m_cameras;
    std::map<base::Ipv4, std::vector<const Camera*>> m_byAddress;
};

} // namespace

void findInAddresses(const Evidence& evidence, inventory::FreeAddresses& free, std::vector<Finding>& findings)
{
    AddressFamily(evidence, free, findings).find();
}

} // namespace doctor
