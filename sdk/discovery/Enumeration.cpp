// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/Enumeration.h"

#include "sdk/discovery/AccessCheck.h"
#include "sdk/discovery/RegisterSurvey.h"
#include "sdk/discovery/Sighting.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// When the broadcasts go out, from the beginning. After each of the first four the window stays open for the
/// full second that a camera may hold its answer back, and four get through a network that loses a tenth of
/// all packets each way. The later ones get past a burst of losses.
constexpr Clock::duration AskTimes[] = {0ms, 50ms, 100ms, 150ms, 400ms, 700ms};
constexpr auto Window = 1150ms;
/// A camera that answered at the last moment has this long to say whether it is accessible.
constexpr auto GraceForAccess = 200ms;
/// Answers of unknown cameras that are kept, of each sort; a flood of forged ones ends here.
constexpr std::size_t MaxUnknown = 1024;
/// At so many addresses one camera is asked whether it is accessible: it may move during the search, but
/// answers from more addresses are forged.
constexpr int MaxAddresses = 4;
/// A look asks a camera for registers only so long after it has been heard first. From then on a firewall
/// lets its answers pass, so that it could not be told any more who hears them of themselves.
constexpr auto TimeToBeHeard = 50ms;
/// How often it is looked for cameras whose next question, or whose report, is due.
constexpr auto Step = 10ms;
/// When the time is up, what has arrived already is still read, but no endless stream.
constexpr int MaxLateDatagrams = 8192;

class Enumeration
{
public:
    /// Without a plan, no more is found out than whether each camera is accessible.
    Enumeration(Network& network, RequestIds& ids, const IsKnown& isKnown, const LookPlan* plan)
        : m_network(network),
          m_ids(ids),
          m_isKnown(isKnown),
          m_plan(plan),
          m_searches(network.adapters().size())
    {}

    FoundCameras run();

private:
    using Key = std::pair<base::MacAddress, std::size_t>;

    struct Sighting
    {
        FoundCamera camera;
        int addresses = 0; ///< At which it was asked whether it is accessible.
        Clock::time_point firstHeard{};
        std::uint32_t heard = 0;          ///< RZ_HEARD bits.
        std::set<std::uint16_t> answered; ///< The discovery ids.
        bool isReported = false;
    };
    using SurveyKey = std::pair<base::Ipv4, std::size_t>; ///< Camera and adapter.

    void ask();
    void listen(Clock::time_point until);
    bool step(Clock::time_point until);
    void take(const Datagram& datagram);
    void takeReply(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge);
    void note(const Datagram& datagram, std::uint16_t id, gvcp::DiscoveryAck&& identity);
    void proceedWithSurveys();
    bool areSurveysPending() const;
    bool isSettled(Sighting& sighting);
    void askForAccess(Sighting& sighting);
    void complete(Sighting& sighting) const;

    Network& m_network;
    RequestIds& m_ids;
    const IsKnown& m_isKnown;
    const LookPlan* const m_plan;
    std::vector<std::uint16_t> m_discoveryIds;
    AccessCheck m_access{m_network, m_ids};
    std::map<Key, Sighting> m_found;
    std::map<SurveyKey, RegisterSurvey> m_surveys;
    Clock::time_point m_nextSurveyStep{};
    std::vector<unsigned> m_searches; ///< That went out on each adapter.
    std::size_t m_unknownConsistent = 0;
    std::size_t m_unknownOthers = 0;
    int m_lateDatagrams = 0;
    bool m_isOver = false; ///< Before its time.
};

FoundCameras Enumeration::run()
{
    const auto start = m_network.now();
    for (const auto time : AskTimes) {
        listen(start + time);
        if (!m_isOver)
            ask();
    }
    const auto windowEnd = start + std::max<Clock::duration>(Window, m_plan ? m_plan->time : 0ms);
    listen(windowEnd);
    const auto end = windowEnd + GraceForAccess;
    while ((m_access.isPending() || areSurveysPending()) && m_network.now() < end && !m_isOver)
        step(end);

    FoundCameras result;
    result.cameras.reserve(m_found.size());
    for (auto& [key, sighting] : m_found) {
        complete(sighting);
        result.cameras.push_back(std::move(sighting.camera));
    }
    for (std::size_t adapter = 0; adapter < m_searches.size(); ++adapter)
        if (m_searches[adapter] == 0 && !m_isOver)
            result.failures.push_back(m_network.adapters()[adapter].name + ": nothing could be sent");
    return result;
}

void Enumeration::ask()
{
    m_discoveryIds.push_back(m_ids.next());
    const auto packet =
        gvcp::encodeCommand(gvcp::Command::Discovery, gvcp::FlagAcknowledge | gvcp::FlagBroadcastAcknowledge,
                            m_discoveryIds.back());
    // An adapter that cannot send costs the others nothing.
    for (std::size_t adapter = 0; adapter < m_network.adapters().size(); ++adapter)
        if (m_network.broadcast(adapter, packet))
            ++m_searches[adapter];
}

void Enumeration::listen(Clock::time_point until)
{
    while (!m_isOver) {
        const bool hasRead = step(until);
        if (m_network.now() >= until && (!hasRead || ++m_lateDatagrams > MaxLateDatagrams))
            return;
    }
}

/// Waits for one datagram; whether there was one.
bool Enumeration::step(Clock::time_point until)
{
    m_access.proceed();
    auto next = std::min(until, m_access.nextStep());
    if (m_plan) {
        m_isOver = m_isOver || m_plan->isOver();
        proceedWithSurveys();
        next = std::min(next, m_nextSurveyStep);
    }
    const auto datagram = m_network.receive(next);
    if (datagram)
        take(*datagram);
    while (const auto arrival = m_network.nextArrival())
        if (m_plan)
            m_plan->onArrival(*arrival);
    return datagram.has_value();
}

void Enumeration::take(const Datagram& datagram)
{
    const auto acknowledge = gvcp::parseAcknowledge(datagram.payload);
    if (!acknowledge)
        return;
    const bool isDiscovery = acknowledge->command == gvcp::Command::Discovery &&
                             acknowledge->status == gvcp::Status::Success &&
                             std::count(m_discoveryIds.begin(), m_discoveryIds.end(), acknowledge->id) > 0;
    if (!isDiscovery)
        takeReply(datagram, *acknowledge);
    else if (auto identity = gvcp::parseDiscoveryAck(acknowledge->payload))
        note(datagram, acknowledge->id, std::move(*identity));
}

void Enumeration::takeReply(const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge)
{
    for (auto each = m_surveys.lower_bound({datagram.source, 0});
         each != m_surveys.end() && each->first.first == datagram.source; ++each) {
        if (!each->second.take(datagram, acknowledge))
            continue;
        each->second.proceed();
        m_nextSurveyStep = std::min(m_nextSurveyStep, each->second.nextStep());
        return;
    }
    m_access.take(datagram, acknowledge);
}

void Enumeration::note(const Datagram& datagram, std::uint16_t id, gvcp::DiscoveryAck&& identity)
{
    const Adapter& adapter = m_network.adapters()[datagram.adapter];
    const Key key{identity.mac, datagram.adapter};
    const base::Ipv4 address = identity.ip.address;
    const bool isConsistent = datagram.source == address;
    auto found = m_found.find(key);
    if (found == m_found.end()) {
        std::size_t& unknown = isConsistent ? m_unknownConsistent : m_unknownOthers;
        if (!m_isKnown(identity.mac, adapter) && ++unknown > MaxUnknown)
            return;
        found = m_found.try_emplace(key).first;
        found->second.firstHeard = m_network.now();
    }

    const AdapterAddress* own = adapter.inSubnetOf(address);
    Sighting& sighting = found->second;
    FoundCamera& camera = sighting.camera;
    camera = {.identity = std::move(identity),
              .adapter = datagram.adapter,
              .adapterAddress = adapter.addressTowards(address),
              .isReachable = own != nullptr,
              .isConsistent = isConsistent};
    if (datagram.isRelayed)
        sighting.heard |= RZ_HEARD_LISTENER;
    else if (sighting.addresses == 0)
        sighting.heard |= RZ_HEARD_SOCKET;
    sighting.heard |= datagram.isToAll ? RZ_HEARD_BROADCAST : RZ_HEARD_UNICAST;
    sighting.answered.insert(id);
    if (own && !m_plan)
        askForAccess(sighting);
}

/// Unless it has been asked at its present address before.
void Enumeration::askForAccess(Sighting& sighting)
{
    const FoundCamera& camera = sighting.camera;
    if (sighting.addresses < MaxAddresses &&
        m_access.ask(camera.adapter, camera.adapterAddress, camera.identity.ip.address))
        ++sighting.addresses;
}

/// What is there when this is the last word on it.
void Enumeration::complete(Sighting& sighting) const
{
    FoundCamera& camera = sighting.camera;
    const base::Ipv4 address = camera.identity.ip.address;
    const auto access =
        camera.isReachable ? m_access.answer(camera.adapter, address) : AccessCheck::Answer::Silent;
    camera.isAccessible = access == AccessCheck::Answer::Accessible;
    camera.isProven =
        camera.isConsistent && (camera.isAccessible || access == AccessCheck::Answer::NotAccessible);
    if (!m_plan)
        return;
    camera.sighting = {};
    camera.sighting.nReachable = camera.isReachable;
    camera.sighting.nAccessible = camera.isAccessible;
    camera.sighting.nHeard = sighting.heard;
    camera.sighting.nSearches = m_searches[camera.adapter];
    camera.sighting.nSearchAnswers = static_cast<std::uint32_t>(sighting.answered.size());
    if (!camera.isReachable)
        return;
    addPrivilege(camera.sighting, m_access, camera.adapter, address);
    const auto survey = m_surveys.find({address, camera.adapter});
    if (survey != m_surveys.end())
        addTold(camera.sighting, survey->second, camera.identity.mac);
}

void Enumeration::proceedWithSurveys()
{
    const auto now = m_network.now();
    if (now < m_nextSurveyStep)
        return;
    m_nextSurveyStep = now + Step;
    for (auto& [key, sighting] : m_found) {
        // Also of one that was reported as silent: it may have answered since.
        if (!isSettled(sighting) || std::exchange(sighting.isReported, true))
            continue;
        complete(sighting);
        m_plan->onCamera(sighting.camera);
    }
    for (auto& [key, survey] : m_surveys)
        if (survey.nextStep() <= now)
            survey.proceed();
}

/// Whether there is nothing more to find out of the camera where it is now, but losses. Begins to survey it
/// when its time has come.
bool Enumeration::isSettled(Sighting& sighting)
{
    const FoundCamera& camera = sighting.camera;
    const base::Ipv4 address = camera.identity.ip.address;
    if (!camera.isReachable)
        return true;
    if (m_network.now() < sighting.firstHeard + TimeToBeHeard)
        return false;
    askForAccess(sighting);
    const auto access = m_access.answer(camera.adapter, address);
    if (access == AccessCheck::Answer::Pending || access == AccessCheck::Answer::Silent)
        return access == AccessCheck::Answer::Silent;
    const RegisterSurvey::Subject subject{camera.adapter, camera.adapterAddress, address,
                                          m_access.isRefused(camera.adapter, address)};
    RegisterSurvey& survey =
        m_surveys.try_emplace({address, camera.adapter}, m_network, m_ids, subject, m_plan->lossQuestions)
            .first->second;
    survey.expect(camera.identity.mac, (camera.identity.ipConfigOptions & gvcp::IpConfig::Persistent) != 0);
    return survey.isSettled();
}

bool Enumeration::areSurveysPending() const
{
    return std::ranges::any_of(m_surveys, [](const auto& each) { return each.second.isPending(); });
}

} // namespace

FoundCameras enumerateCameras(Network& network, const IsKnown& isKnown)
{
    RequestIds ids;
    return network.adapters().empty() ? FoundCameras() : Enumeration(network, ids, isKnown, nullptr).run();
}

FoundCameras lookForCameras(Network& network, RequestIds& ids, const IsKnown& isKnown, const LookPlan& plan)
{
    return Enumeration(network, ids, isKnown, &plan).run();
}

} // namespace sdk
