// SPDX-License-Identifier: Apache-2.0
#include "doctor/Families.h"
#include "doctor/Words.h"

#include <algorithm>

namespace doctor {
namespace {

using base::Sentence;
using inventory::Adapter;
using inventory::Camera;

/// Below it a camera is no fast one.
constexpr unsigned FastLink = 1000;

/// Cameras of one adapter.
struct Group
{
    const Adapter* adapter = nullptr;
    std::vector<const Camera*> cameras;

    std::string names() const
    {
        std::vector<std::string> words;
        for (const Camera* const camera : cameras)
            words.push_back(nameOf(*camera));
        return listed(words);
    }
};

/// About the adapter, and about the camera if it is only one.
Finding newFinding(const char* id, const Group& group)
{
    const bool isAlone = group.cameras.size() == 1;
    return isAlone ? doctor::newFinding(id, Severity::Warning, *group.cameras.front())
                   : doctor::newFinding(id, Severity::Warning, group.adapter->name);
}

const Sentence FilterUntilRestart{
    TRANSLATABLE("Sentence",
                 "What the commands do holds until this computer restarts; to make it last, put the "
                 "same settings into a file in /etc/sysctl.d."),
    {}};

const Sentence RulesUntilRestart{
    TRANSLATABLE("Sentence",
                 "What the commands do holds until this computer or its firewall restarts; to make "
                 "it last, put the same rules into the firewall's own settings."),
    {}};

const Sentence CheckTheWay{
    TRANSLATABLE("Sentence", "Check the cables and plugs on the way to it, and the switch; and whether "
                             "images of other cameras fill the network."),
    {}};

std::string number(std::uint64_t value, const char* unit = "")
{
    return std::to_string(value) + unit;
}

/// sysctl(8) takes dots for slashes, unless a slash comes first.
std::string filterOff(const std::string& adapter)
{
    const bool hasDot = adapter.find('.') != std::string::npos;
    return "sysctl -w " + quoted(hasDot ? "net/ipv4/conf/" + adapter + "/rp_filter=0"
                                        : "net.ipv4.conf." + adapter + ".rp_filter=0");
}

class HearingFamily
{
public:
    HearingFamily(const Evidence& evidence, std::vector<Finding>& findings)
        : m_evidence(evidence),
          m_inventory(evidence.inventory),
          m_findings(findings)
    {
        for (const inventory::Neighbour& each : m_inventory.neighbours)
            m_neighbours[{each.adapterIndex, each.address}] = each.mac;
    }

    void find()
    {
        findListener();
        std::map<unsigned, Group> filtered;
        std::map<unsigned, Group> blocked;
        for (const Camera& camera : m_inventory.cameras)
            if (isKeptFromPrograms(m_inventory, camera)) {
                const Adapter& adapter = *m_inventory.adapterWith(camera.adapterIndex);
                Group& group = (isFiltered(camera, adapter) ? filtered : blocked)[adapter.index];
                group.adapter = &adapter;
                group.cameras.push_back(&camera);
            }
        for (const auto& [index, group] : filtered)
            addFiltered(group);
        for (const auto& [index, group] : blocked)
            addBlocked(group);
        findSlowLinks();
        for (const Camera& camera : m_inventory.cameras)
            if (isAskedElsewhere(camera))
                continue;
            else if (camera.registers == inventory::Registers::Silent)
                addSilent(camera);
            else if (losesPackets(camera))
                addLossy(camera);
    }

private:
    void findListener()
    {
        if (!m_evidence.listener)
            return;
        Finding finding = doctor::newFinding("no-listener", Severity::Warning, std::string());
        finding.text = {
            {TRANSLATABLE("Sentence", "Cameras outside this computer's subnets may be missing, as "
                                      "the program that hears them all, the listener, does not "
                                      "work."),
             {}}};
        finding.reason = {m_evidence.listener->reason};
        finding.repair = m_evidence.listener->repair;
        if (finding.repair.empty())
            finding.text.push_back({TRANSLATABLE("Sentence", "Run this as root; if that does not help, "
                                                             "install the program again."),
                                    {}});
        else if (finding.repair.front().starts_with("usermod"))
            finding.text.push_back(
                {TRANSLATABLE("Sentence", "What the command does holds from the user's next login on."), {}});
        m_findings.push_back(std::move(finding));
    }

    /// Whether it is the reverse-path filter that keeps its answers from programs: it has dropped some, and
    /// these are of the kind that it drops.
    bool isFiltered(const Camera& camera, const Adapter& adapter) const
    {
        if (m_inventory.reversePathDrops == 0 || adapter.reversePathFilter == 0)
            return false;
        if (!adapter.inSubnetOf(camera.ip.address))
            return true;
        // The way back to such a camera leads over its adapter, unless another one is in the subnet too.
        constexpr int strict = 1;
        return adapter.reversePathFilter == strict &&
               std::ranges::any_of(m_inventory.adapters, [&](const Adapter& other) {
                   return other.index != adapter.index && other.inSubnetOf(camera.ip.address);
               });
    }

    void addFiltered(const Group& group)
    {
        const Adapter& adapter = *group.adapter;
        Finding finding = newFinding("reverse-path-filter", group);
        finding.text = {{TRANSLATABLE("Sentence", "Other programs on this computer do not hear these cameras "
                                                  "on %1, as its reverse-path filter drops their answers: "
                                                  "%2."),
                         {adapter.name, group.names()}},
                        FilterUntilRestart};
        finding.reason = {
            {TRANSLATABLE("Sentence", "Only the listener heard them; the reverse-path filter dropped %1 "
                                      "packets meanwhile."),
             {number(m_inventory.reversePathDrops)}},
            {TRANSLATABLE("Sentence",
                          "On %1 it is set to %2; 1, strict, drops what does not come by the way by which "
                          "this computer would answer it, and 2, loose, what it could not answer at all."),
             {adapter.name, number(static_cast<unsigned>(adapter.reversePathFilter))}}};
        finding.repair = {filterOff(adapter.name)};
        if (m_evidence.reversePathFilterOfAll != 0) {
            finding.repair.push_back(filterOff("all"));
            finding.reason.push_back({TRANSLATABLE("Sentence", "It is also switched on for all adapters, and "
                                                               "the larger number counts."),
                                      {}});
        }
        m_findings.push_back(std::move(finding));
    }

    void addBlocked(const Group& group)
    {
        const Adapter& adapter = *group.adapter;
        const Firewall& firewall = m_evidence.firewall;
        Finding finding = newFinding("firewall", group);
        finding.text = {{TRANSLATABLE("Sentence", "Other programs on this computer do not hear these cameras "
                                                  "on %1, as something on it drops their answers, such as "
                                                  "its firewall: %2."),
                         {adapter.name, group.names()}}};
        finding.reason = {{TRANSLATABLE("Sentence", "Only the listener heard them, which hears before any "
                                                    "firewall; the reverse-path filter did not drop them."),
                           {}}};
        std::vector<std::string> chains;
        for (const FilterChain& chain : firewall.chains) {
            chains.push_back(chain.family + " " + chain.table + " " + chain.name);
            finding.repair.push_back("nft insert rule " + chain.family + " " + quoted(chain.table) + " " +
                                     quoted(chain.name) + " udp sport 3956 accept");
        }
        finding.text.push_back(whatToDo(firewall.sight, finding.repair.empty()));
        if (!chains.empty())
            finding.reason.push_back({TRANSLATABLE("Sentence", "These chains of nftables can drop what comes "
                                                               "in: %1."),
                                      {listed(chains)}});
        m_findings.push_back(std::move(finding));
    }

    static Sentence whatToDo(Firewall::Sight sight, bool isNoneFound)
    {
        switch (sight) {
        case Firewall::Sight::NotAllowed:
            return {TRANSLATABLE("Sentence", "Run this as root to be told which rules of the firewall do it, "
                                             "and how to let cameras through."),
                    {}};
        case Firewall::Sight::NotPossible:
            return {TRANSLATABLE("Sentence", "The rules cannot be read, as nft is not installed or does not "
                                             "work: let UDP packets from port 3956 through in the "
                                             "firewall's own settings."),
                    {}};
        case Firewall::Sight::Seen:
            break;
        }
        if (isNoneFound)
            return {TRANSLATABLE("Sentence", "nft shows no rule that could do it; perhaps it is one of "
                                             "iptables-legacy or of a security program: let UDP packets from "
                                             "port 3956 through in its own settings."),
                    {}};
        return RulesUntilRestart;
    }

    void findSlowLinks()
    {
        std::map<unsigned, Group> behindSlowAdapters;
        for (const Camera& camera : m_inventory.cameras) {
            const unsigned speed = camera.linkSpeed.value_or(0);
            if (speed == 0)
                continue;
            if (speed < FastLink)
                addSlowCamera(camera, speed);
            const Adapter* const adapter = m_inventory.adapterWith(camera.adapterIndex);
            if (!adapter || adapter->linkSpeed.value_or(speed) >= speed)
                continue;
            Group& group = behindSlowAdapters[adapter->index];
            group.adapter = adapter;
            group.cameras.push_back(&camera);
        }
        for (const auto& [index, group] : behindSlowAdapters)
            addSlowAdapter(group);
    }

    void addSlowCamera(const Camera& camera, unsigned speed)
    {
        Finding finding = doctor::newFinding("slow-link", Severity::Warning, camera);
        finding.text = {
            {TRANSLATABLE("Sentence", "The link of the camera %1 is slow: %2 Mbit/s."),
             {nameOf(camera), number(speed)}},
            {TRANSLATABLE("Sentence", "Check its cable, in which all eight wires have to be sound (Cat 5e or "
                                      "better), both plugs, and whether the port at its other end can do "
                                      "%1 Mbit/s."),
             {number(FastLink)}}};
        finding.reason = {{TRANSLATABLE("Sentence", "The camera itself says that its link runs at %1 Mbit/s; "
                                                    "cameras of this kind can do %2, as a rule."),
                           {number(speed), number(FastLink)}}};
        m_findings.push_back(std::move(finding));
    }

    void addSlowAdapter(const Group& group)
    {
        const Adapter& adapter = *group.adapter;
        unsigned fastest = 0;
        for (const Camera* const camera : group.cameras)
            fastest = std::max(fastest, *camera->linkSpeed);
        Finding finding = newFinding("slow-link", group);
        finding.text = {
            {TRANSLATABLE("Sentence", "The network adapter %1 is slower than cameras behind it, so that "
                                      "images may get lost: %2."),
             {adapter.name, group.names()}},
            {TRANSLATABLE("Sentence", "Check the cable at the adapter, in which all eight wires have to be "
                                      "sound, and whether adapter and switch can do %1 Mbit/s."),
             {number(fastest)}}};
        finding.reason = {{TRANSLATABLE("Sentence", "%1 runs at %2 Mbit/s, and of these cameras the fastest "
                                                    "says of itself %3 Mbit/s."),
                           {adapter.name, number(*adapter.linkSpeed), number(fastest)}}};
        m_findings.push_back(std::move(finding));
    }

    /// Whether questions to it reach somebody else: who has its address too, or who had it lately, so that
    /// the kernel will believe for a minute that he has it still.
    bool isAskedElsewhere(const Camera& camera) const
    {
        const auto known = m_neighbours.find({camera.adapterIndex, camera.ip.address});
        return camera.registers == inventory::Registers::OthersTold || !camera.conflicts.empty() ||
               (known != m_neighbours.end() && known->second != camera.mac);
    }

    /// One lost packet is chance, and so is one in twenty. How often a camera out of reach answers searches
    /// says nothing: it may answer several with one, or hold its answer back until the end.
    static bool losesPackets(const Camera& camera)
    {
        const inventory::Hearing& hearing = camera.hearing;
        return hearing.replies < hearing.questions && hearing.questions - hearing.replies >= 2 &&
               hearing.replies * 10 <= hearing.questions * 9;
    }

    void addLossy(const Camera& camera)
    {
        const inventory::Hearing& hearing = camera.hearing;
        Finding finding = doctor::newFinding("lossy-network", Severity::Warning, camera);
        finding.text = {
            {TRANSLATABLE("Sentence", "Packets get lost between this computer and the camera %1: it answered "
                                      "%2 of %3 questions."),
             {nameOf(camera), number(hearing.replies), number(hearing.questions)}},
            CheckTheWay};
        finding.reason = {
            {TRANSLATABLE("Sentence", "%1 of %2 questions for its registers had no answer on "
                                      "%3; on a sound network nearly all have one."),
             {number(hearing.questions - hearing.replies), number(hearing.questions), camera.adapterName}}};
        m_findings.push_back(std::move(finding));
    }

    /// It is in reach and answers none of the questions that are sent to it alone.
    void addSilent(const Camera& camera)
    {
        Finding finding = doctor::newFinding("lossy-network", Severity::Warning, camera);
        finding.text = {{TRANSLATABLE("Sentence", "The camera %1 answers searches for cameras, but no other "
                                                  "question of this computer."),
                         {nameOf(camera)}},
                        CheckTheWay};
        finding.reason = {
            {TRANSLATABLE("Sentence", "It answered %1 of %2 searches on %3, and none of the "
                                      "questions whether it is free, which were asked "
                                      "several times."),
             {number(camera.hearing.answers), number(camera.hearing.searches), camera.adapterName}}};
        if (!camera.ip.reaches(camera.adapterAddress))
            finding.reason.push_back(
                {TRANSLATABLE("Sentence", "By its settings, %1, this computer's address %2 lies outside the "
                                          "camera's subnet: with the adapter's mask it could answer."),
                 {textOf(camera.ip), camera.adapterAddress.toText()}});
        m_findings.push_back(std::move(finding));
    }

    const Evidence& m_evidence;
    const inventory::Inventory& m_inventory;
    std::vector<Finding>& m_findings;
    std::map<std::pair<unsigned, base::Ipv4>, base::MacAddress> m_neighbours;
};

} // namespace

bool isKeptFromPrograms(const inventory::Inventory& inventory, const Camera& camera)
{
    const Adapter* const adapter = inventory.adapterWith(camera.adapterIndex);
    const bool isThisComputers = std::ranges::find(camera.conflicts, inventory::Conflict::With::ThisComputer,
                                                   &inventory::Conflict::with) != camera.conflicts.end();
    // From its own address, or one that no host has, the kernel takes nothing; and to an adapter without an
    // address nothing can be sent.
    return camera.hearing.byListener && !camera.hearing.bySocket && adapter && !adapter->addresses.empty() &&
           !isThisComputers && camera.ip.address.canBeHost();
}

void findInHearing(const Evidence& evidence, std::vector<Finding>& findings)
{
    HearingFamily(evidence, findings).find();
}

} // namespace doctor
