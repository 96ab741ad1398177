// SPDX-License-Identifier: Apache-2.0
#include "doctor/Doctor.h"

#include "doctor/Evidence.h"
#include "doctor/Makers.h"
#include "inventory/Look.h"
#include "inventory/Neighbours.h"

#include <algorithm>
#include <system_error>
#include <thread>

namespace doctor {
namespace {

using namespace std::chrono_literals;
using inventory::Camera;

/// Long enough for whoever asks for an address in vain to be heard more than once.
constexpr auto LookingTime = 4200ms;

/// Whoever has an address answers ARP within some milliseconds. Two rounds, and all is over within five
/// seconds.
constexpr auto TimeToAnswer = 350ms;
constexpr int Rounds = 2;

/// The kernel has room for a thousand neighbours, and others need it too. Adapters' addresses come first; of
/// a camera's the command that gives it asks again before it changes anything.
constexpr std::size_t MaxAsked = 64;

Evidence gather()
{
    Evidence evidence;
    inventory::Look look;
    evidence.time = LookingTime;
    evidence.inventory = look.once({.time = LookingTime, .countsLosses = true});
    const inventory::Inventory& inventory = evidence.inventory;
    // Of an adapter just switched on the kernel says only now that it has a link.
    evidence.inventory.adapters = inventory::hostAdapters();

    evidence.listener = findListenerFault(inventory.listener, inventory.listenerProgram);
    evidence.reversePathFilterOfAll = inventory::reversePathFilterOf("all");
    if (std::ranges::any_of(inventory.cameras, [&inventory](const Camera& camera) {
            return isKeptFromPrograms(inventory, camera);
        }))
        evidence.firewall = lookAtFirewall();
    evidence.holdings = holdingsOf(inventory, isHeld);

    std::vector<base::MacAddress> others = silentDevices(inventory);
    for (const Camera& camera : inventory.cameras)
        for (const inventory::Conflict& conflict : camera.conflicts)
            if (conflict.with == inventory::Conflict::With::Machine)
                others.push_back(conflict.mac);
    evidence.makers = findMakers(others);
    return evidence;
}

/// Of the proposed addresses those that somebody has, as far as the kernel finds out by ARP now.
std::set<base::Ipv4> askForOwners(std::vector<inventory::Proposal> proposals)
{
    proposals.resize(std::min(proposals.size(), MaxAsked));
    for (const inventory::Proposal& each : proposals) {
        try {
            inventory::askForOwner(each.adapterIndex, each.address);
        } catch (const std::system_error&) {
            // Where nobody can be asked, nothing more can be known.
        }
    }
    std::this_thread::sleep_for(TimeToAnswer);
    std::set<inventory::Proposal, decltype([](const inventory::Proposal& a, const inventory::Proposal& b) {
                 return std::tie(a.adapterIndex, a.address) < std::tie(b.adapterIndex, b.address);
             })>
        known;
    for (const inventory::Neighbour& each : inventory::neighbours())
        known.insert({each.adapterIndex, each.address});
    std::set<base::Ipv4> taken;
    for (const inventory::Proposal& each : proposals)
        if (known.contains(each))
            taken.insert(each.address);
    return taken;
}

} // namespace

Diagnosis examine()
{
    Evidence evidence = gather();
    Judgement judgement = judge(evidence);
    for (int round = 0; round < Rounds && !judgement.proposals.empty(); ++round) {
        const std::set<base::Ipv4> taken = askForOwners(judgement.proposals);
        if (taken.empty())
            break;
        evidence.taken.insert(taken.begin(), taken.end());
        judgement = judge(evidence);
    }
    return {std::move(evidence.inventory), std::move(judgement.findings)};
}

std::optional<Diagnosis> aboutCamera(const Diagnosis& diagnosis, const base::MacAddress& camera)
{
    std::set<std::string> adapters;
    std::set<base::MacAddress> sharers; ///< Of its address.
    for (const Camera& each : diagnosis.inventory.cameras) {
        if (each.mac != camera)
            continue;
        adapters.insert(each.adapterName);
        for (const inventory::Conflict& conflict : each.conflicts)
            sharers.insert(conflict.mac);
    }
    if (adapters.empty())
        return std::nullopt;
    Diagnosis about{diagnosis.inventory, {}};
    for (const Finding& finding : diagnosis.findings) {
        const bool isOnItsWay = finding.adapterName.empty() || adapters.contains(finding.adapterName);
        const bool isShared =
            finding.id == "duplicate-address" && finding.camera && sharers.contains(*finding.camera);
        if (finding.camera ? *finding.camera == camera || isShared : isOnItsWay)
            about.findings.push_back(finding);
    }
    return about;
}

} // namespace doctor
