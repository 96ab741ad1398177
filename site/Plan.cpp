// SPDX-License-Identifier: Apache-2.0
#include "site/Plan.h"

#include "site/Clashes.h"
#include "site/Matching.h"

#include <algorithm>
#include <map>

namespace site {
namespace {

using base::Sentence;
using inventory::Adapter;
using inventory::AdapterAddress;
using inventory::Camera;
using inventory::Inventory;
using inventory::IpMethod;

/// More of one sort are told as a number.
constexpr std::size_t MaxTold = 16;

void requireAdapter(const AdapterRule& rule, const Inventory& inventory, std::vector<Sentence>& obstacles)
{
    const auto adapter = std::ranges::find(inventory.adapters, rule.name, &Adapter::name);
    if (adapter == inventory.adapters.end()) {
        std::string names;
        for (const Adapter& each : inventory.adapters)
            names += (names.empty() ? "" : ", ") + each.name;
        obstacles.push_back(
            {TRANSLATABLE("Sentence", "The adapter %1 of the file is not there; this computer has: %2."),
             {rule.name, names.empty() ? "-" : names}});
        return;
    }
    if (rule.address && std::ranges::find(adapter->addresses, *rule.address) == adapter->addresses.end()) {
        std::string addresses;
        for (const AdapterAddress& each : adapter->addresses)
            addresses += (addresses.empty() ? "" : ", ") + each.toText();
        obstacles.push_back(
            {TRANSLATABLE("Sentence", "The adapter %1 has not the address %2, as the file says; it has: %3. "
                                      "Correct the one or the other."),
             {rule.name, rule.address->toText(), addresses.empty() ? "-" : addresses}});
    }
    if (rule.mtu && *rule.mtu != adapter->mtu)
        obstacles.push_back(
            {TRANSLATABLE("Sentence", "The adapter %1 has an MTU of %2 bytes, not of %3, as the file says. "
                                      "Correct the one or the other."),
             {rule.name, std::to_string(adapter->mtu), std::to_string(*rule.mtu)}});
}

/// What is to be done, in the order of its doing.
std::vector<Action> actionsFor(const Settings& before, const Settings& after,
                               const std::optional<base::IpSettings>& stored)
{
    const bool isStatic = after.method == IpMethod::Static;
    const bool isForced = isStatic && before.ip != after.ip;
    const bool isConfigured = before.method != after.method;
    const bool isNamed = before.userName != after.userName;
    // Of one that does not tell what it has stored, and is right otherwise, nothing else is to be known.
    const bool isStored = isStatic && (stored ? *stored != after.ip : isForced || isConfigured || isNamed);
    std::vector<Action> actions;
    const auto add = [&actions](bool isNeeded, Action action) {
        if (isNeeded)
            actions.push_back(action);
    };
    add(isForced, Action::Force);
    add(isStored, Action::Store);
    add(isConfigured, Action::Configure);
    add(isNamed, Action::Name);
    add(isConfigured, Action::Restart);
    return actions;
}

/// Nothing when no application keeps others from changing it.
std::optional<Sentence> holdOn(const Camera& camera)
{
    if (camera.status != inventory::Status::InUse)
        return std::nullopt;
    const std::string mac = camera.mac.toText();
    if (!camera.privilege) {
        // Then somebody else got the question, and the camera is changed by its MAC.
        if (camera.registers == inventory::Registers::OthersTold || !camera.conflicts.empty())
            return std::nullopt;
        return Sentence{TRANSLATABLE("Sentence",
                                     "The camera %1 does not tell whether an application uses it. See what "
                                     "keeps it from answering: \"ip-configurator-cli who %2\" tells more."),
                        {textOf(camera), mac}};
    }
    if (!camera.holder || camera.holder->address.isUnspecified())
        return Sentence{TRANSLATABLE("Sentence", "The camera %1 is in use by another application. End that; "
                                                 "\"ip-configurator-cli who %2\" tells more."),
                        {textOf(camera), mac}};
    return Sentence{
        TRANSLATABLE("Sentence", "The camera %1 is in use by an application at %2, port %3. End that; "
                                 "\"ip-configurator-cli who %4\" tells more."),
        {textOf(camera), camera.holder->address.toText(), std::to_string(camera.holder->port), mac}};
}

std::optional<Sentence> inabilityFor(const Task& task)
{
    const Camera& camera = *task.camera;
    const bool isStored = std::ranges::find(task.actions, Action::Store) != task.actions.end();
    const bool isConfigured = std::ranges::find(task.actions, Action::Configure) != task.actions.end();
    if (!camera.canBeStatic && task.after.method == IpMethod::Static && (isStored || isConfigured))
        return Sentence{TRANSLATABLE("Sentence",
                                     "The camera %1 cannot store an address, so it cannot be static: only "
                                     "DHCP or LLA can be planned for it."),
                        {textOf(camera)}};
    if (!camera.canUseDhcp && task.after.method == IpMethod::Dhcp && isConfigured)
        return Sentence{TRANSLATABLE("Sentence",
                                     "The camera %1 cannot ask a DHCP server for its address: only static or "
                                     "LLA can be planned for it."),
                        {textOf(camera)}};
    return std::nullopt;
}

/// From a site and an inventory to a plan, step by step.
class Planning
{
public:
    Planning(const Site& site, const Inventory& inventory, const std::set<std::string>& only)
        : m_site(site),
          m_inventory(inventory),
          m_only(only),
          m_candidates(candidatesOf(inventory))
    {}

    Plan run()
    {
        for (const AdapterRule& rule : m_site.adapters)
            requireAdapter(rule, m_inventory, m_plan.obstacles);
        findPlaces();
        for (const Place& place : m_site.places)
            if (isMeant(place))
                m_plan.tasks.push_back(taskFor(place));
        findWhoWaits(m_plan.tasks);
        for (Task& task : m_plan.tasks)
            addObstacles(task);
        openCircles(m_plan.tasks, m_site, m_inventory);
        warnOfSubnets();
        if (m_only.empty())
            judgeUnlisted();
        return std::move(m_plan);
    }

private:
    using Candidates = std::vector<const Candidate*>;

    bool isMeant(const Place& place) const { return m_only.empty() || m_only.contains(place.name); }

    Candidates candidatesFor(const Place& place) const
    {
        Candidates found;
        for (const Candidate& each : m_candidates)
            if (matches(place.match, each))
                found.push_back(&each);
        return found;
    }

    void findPlaces()
    {
        for (const Place& place : m_site.places)
            for (const Candidate* const each : candidatesFor(place)) {
                m_placeOf.emplace(each->camera->mac, place.name);
                if (isMeant(place))
                    m_meantPlacesOf[each->camera->mac].push_back(place.name);
            }
    }

    Task taskFor(const Place& place) const
    {
        Task task;
        task.place = place;
        task.after = {place.method, place.ip, place.userName.value_or("")};
        const Candidates found = candidatesFor(place);
        if (found.size() > 1)
            task.obstacles.push_back(ambiguityOf(found));
        if (found.size() != 1)
            return task;
        const Camera& camera = *found.front()->camera;
        task.camera = camera;
        task.before = {camera.method, camera.ip, camera.userName};
        if (!place.userName)
            task.after.userName = camera.userName;
        if (place.method != IpMethod::Static && place.method == camera.method)
            task.after.ip = camera.ip;
        if (place.model && *place.model != camera.model)
            task.obstacles.push_back(
                {TRANSLATABLE("Sentence",
                              "The camera %1 is not of the model %2, which belongs here. Put such "
                              "a one in its place, or correct the file."),
                 {textOf(camera), *place.model}});
        for (const std::string& other : m_meantPlacesOf.at(camera.mac))
            if (other != place.name)
                task.obstacles.push_back(
                    {TRANSLATABLE("Sentence", "The camera %1 is that of the place %2, too. Say more exactly, "
                                              "by mac or serial, which camera is at which of the two."),
                     {textOf(camera), other}});
        // Nobody knows which of the two it is to be.
        if (m_meantPlacesOf.at(camera.mac).size() == 1)
            task.actions = actionsFor(task.before, task.after, camera.stored);
        return task;
    }

    static Sentence ambiguityOf(const Candidates& found)
    {
        std::string cameras;
        for (std::size_t i = 0; i < std::min(found.size(), MaxTold); ++i)
            cameras += (i == 0 ? "" : ", ") + textOf(*found[i]->camera);
        return {TRANSLATABLE("Sentence", "%1 cameras can be the one of this place: %2. Say more exactly, by "
                                         "mac or serial, which it is."),
                {std::to_string(found.size()), cameras + (found.size() > MaxTold ? ", ..." : "")}};
    }

    /// Of one that is to be changed.
    void addObstacles(Task& task) const
    {
        if (task.actions.empty())
            return;
        if (const auto hold = holdOn(*task.camera))
            task.obstacles.push_back(*hold);
        if (const auto inability = inabilityFor(task))
            task.obstacles.push_back(*inability);
        std::ranges::move(obstaclesToAddress(task, m_plan.tasks, m_inventory, m_placeOf),
                          std::back_inserter(task.obstacles));
    }

    void warnOfSubnets()
    {
        for (const Task& task : m_plan.tasks) {
            if (!task.camera || task.after.method != IpMethod::Static)
                continue;
            const Adapter* const adapter = m_inventory.adapterWith(task.camera->adapterIndex);
            if (adapter && !adapter->inSubnetOf(task.after.ip.address))
                m_plan.warnings.push_back(
                    {TRANSLATABLE("Sentence", "The address %1 of the place %2 is outside the subnets of the "
                                              "adapter %3, which hears its camera: this computer will not "
                                              "reach it there."),
                     {task.after.ip.address.toText(), task.place.name, adapter->name}});
        }
    }

    void judgeUnlisted()
    {
        if (m_site.unlisted == Unlisted::Ignore)
            return;
        std::vector<Sentence>& told = m_site.unlisted == Unlisted::Fail ? m_plan.obstacles : m_plan.warnings;
        std::size_t count = 0;
        for (const Candidate& each : m_candidates)
            if (!m_placeOf.contains(each.camera->mac) && ++count <= MaxTold)
                told.push_back(
                    {TRANSLATABLE("Sentence",
                                  "The camera %1, address %2, on the adapter %3, belongs to no place."),
                     {textOf(*each.camera), each.camera->ip.address.toText(), each.camera->adapterName}});
        if (count > MaxTold)
            told.push_back({TRANSLATABLE("Sentence", "Other cameras that belong to no place: %1."),
                            {std::to_string(count - MaxTold)}});
    }

    const Site& m_site;
    const Inventory& m_inventory;
    const std::set<std::string>& m_only;
    std::vector<Candidate> m_candidates;
    std::map<base::MacAddress, std::string> m_placeOf; ///< The first that each belongs to, meant or not.
    std::map<base::MacAddress, std::vector<std::string>> m_meantPlacesOf;
    Plan m_plan;
};

} // namespace

bool Plan::isRefused() const
{
    return !obstacles.empty() ||
           std::ranges::any_of(tasks, [](const Task& task) { return !task.obstacles.empty(); });
}

bool Plan::hasMissing() const
{
    return std::ranges::any_of(tasks, &Task::isMissing);
}

bool Plan::hasActions() const
{
    return std::ranges::any_of(tasks, [](const Task& task) { return !task.actions.empty(); });
}

Plan makePlan(const Site& site, const Inventory& inventory, const std::set<std::string>& only)
{
    return Planning(site, inventory, only).run();
}

} // namespace site
