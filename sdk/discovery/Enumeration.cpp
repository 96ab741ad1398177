// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/Enumeration.h"

#include "sdk/discovery/AccessCheck.h"

#include <algorithm>
#include <map>
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
/// When the time is up, what has arrived already is still read, but no endless stream.
constexpr int MaxLateDatagrams = 8192;

class Enumeration
{
public:
    Enumeration(Network& network, const IsKnown& isKnown)
        : m_network(network),
          m_isKnown(isKnown),
          m_hasSent(network.adapters().size())
    {}

    FoundCameras run();

private:
    using Key = std::pair<base::MacAddress, std::size_t>;

    struct Sighting
    {
        FoundCamera camera;
        int addresses = 0; ///< At which it was asked whether it is accessible.
    };

    void ask();
    void listen(Clock::time_point until);
    bool step(Clock::time_point until);
    void take(const Datagram& datagram);
    void note(const Datagram& datagram, gvcp::DiscoveryAck&& identity);

    Network& m_network;
    const IsKnown& m_isKnown;
    RequestIds m_ids;
    std::vector<std::uint16_t> m_discoveryIds;
    AccessCheck m_access{m_network, m_ids};
    std::map<Key, Sighting> m_found;
    std::vector<bool> m_hasSent; ///< By each adapter.
    std::size_t m_unknownConsistent = 0;
    std::size_t m_unknownOthers = 0;
    int m_lateDatagrams = 0;
};

FoundCameras Enumeration::run()
{
    const auto start = m_network.now();
    for (const auto time : AskTimes) {
        listen(start + time);
        ask();
    }
    listen(start + Window);
    const auto end = start + Window + GraceForAccess;
    while (m_access.isPending() && m_network.now() < end)
        step(end);

    FoundCameras result;
    result.cameras.reserve(m_found.size());
    for (auto& [key, sighting] : m_found) {
        FoundCamera& camera = sighting.camera;
        const auto access = camera.isReachable ? m_access.answer(camera.adapter, camera.identity.ip.address)
                                               : AccessCheck::Answer::Silent;
        camera.isAccessible = access == AccessCheck::Answer::Accessible;
        camera.isProven =
            camera.isConsistent && (camera.isAccessible || access == AccessCheck::Answer::NotAccessible);
        result.cameras.push_back(std::move(camera));
    }
    for (std::size_t adapter = 0; adapter < m_hasSent.size(); ++adapter)
        if (!m_hasSent[adapter])
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
            m_hasSent[adapter] = true;
}

void Enumeration::listen(Clock::time_point until)
{
    for (;;) {
        const bool hasRead = step(until);
        if (m_network.now() >= until && (!hasRead || ++m_lateDatagrams > MaxLateDatagrams))
            return;
    }
}

/// Waits for one datagram; whether there was one.
bool Enumeration::step(Clock::time_point until)
{
    m_access.proceed();
    const auto datagram = m_network.receive(std::min(until, m_access.nextStep()));
    if (datagram)
        take(*datagram);
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
        m_access.take(datagram, *acknowledge);
    else if (auto identity = gvcp::parseDiscoveryAck(acknowledge->payload))
        note(datagram, std::move(*identity));
}

void Enumeration::note(const Datagram& datagram, gvcp::DiscoveryAck&& identity)
{
    const Adapter& adapter = m_network.adapters()[datagram.adapter];
    const Key key{identity.mac, datagram.adapter};
    const bool isConsistent = datagram.source == identity.ip.address;
    auto found = m_found.find(key);
    if (found == m_found.end()) {
        std::size_t& unknown = isConsistent ? m_unknownConsistent : m_unknownOthers;
        if (!m_isKnown(identity.mac, adapter) && ++unknown > MaxUnknown)
            return;
        found = m_found.try_emplace(key).first;
    }

    const AdapterAddress* own = adapter.inSubnetOf(identity.ip.address);
    auto& [camera, addresses] = found->second;
    camera = {.identity = std::move(identity),
              .adapter = datagram.adapter,
              .adapterAddress = own ? own->address : adapter.addresses.front().address,
              .isReachable = own != nullptr,
              .isConsistent = isConsistent};
    if (own && addresses < MaxAddresses &&
        m_access.ask(datagram.adapter, own->address, camera.identity.ip.address))
        ++addresses;
}

} // namespace

FoundCameras enumerateCameras(Network& network, const IsKnown& isKnown)
{
    if (network.adapters().empty())
        return {};
    return Enumeration(network, isKnown).run();
}

} // namespace sdk
