// SPDX-License-Identifier: Apache-2.0
#include "sdk/ForceIpExchange.h"

#include "gvcp/DiscoveryAck.h"
#include "sdk/AccessCheck.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace sdk {

namespace {

using namespace std::chrono_literals;

constexpr auto TimeOfOneTry = 250ms;
/// Long enough for a camera that holds its discovery answers back for a second, after some were lost.
constexpr auto Deadline = 2500ms;

class ForceIpExchange
{
public:
    ForceIpExchange(Network& network, const gvcp::ForceIp& wanted, const gvcp::ForceIp& before)
        : m_network(network),
          m_wanted(wanted),
          m_before(before)
    {}

    RZ_ERROR run();

private:
    bool send();
    std::optional<RZ_ERROR> take(const Datagram& datagram);
    std::optional<RZ_ERROR> takeForceIp(const Datagram& datagram, gvcp::Status status);
    std::optional<RZ_ERROR> takeDiscovery(const gvcp::DiscoveryAck& identity);
    RZ_ERROR judgeSilence() const;

    Network& m_network;
    const gvcp::ForceIp& m_wanted;
    const gvcp::ForceIp& m_before;
    RequestIds m_ids;
    const std::uint16_t m_forceIpId = m_ids.next(); ///< The same for all tries.
    std::vector<std::uint16_t> m_discoveryIds;
    AccessCheck m_access{m_network, m_ids};
    bool m_isHeard = false;
    bool m_wasMisaligned = false;
};

RZ_ERROR ForceIpExchange::run()
{
    auto nextTry = m_network.now();
    const auto end = nextTry + Deadline;
    while (m_network.now() < end) {
        m_access.proceed();
        if (m_network.now() >= nextTry) {
            if (!send())
                return RZ_ERROR_NETWORK;
            nextTry += TimeOfOneTry;
        }
        const auto datagram = m_network.receive(std::min({end, nextTry, m_access.nextStep()}));
        const auto result = datagram ? take(*datagram) : std::nullopt;
        if (result)
            return *result;
    }
    return judgeSilence();
}

bool ForceIpExchange::send()
{
    constexpr std::uint8_t Flags = gvcp::FlagAcknowledge | gvcp::FlagBroadcastAcknowledge;
    const auto payload = gvcp::encodeForceIp(m_wanted);
    if (!m_network.broadcast(0, gvcp::encodeCommand(gvcp::Command::ForceIp, Flags, m_forceIpId, payload)))
        return false;
    m_discoveryIds.push_back(m_ids.next());
    m_network.broadcast(0, gvcp::encodeCommand(gvcp::Command::Discovery, Flags, m_discoveryIds.back()));
    return true;
}

std::optional<RZ_ERROR> ForceIpExchange::take(const Datagram& datagram)
{
    const auto acknowledge = gvcp::parseAcknowledge(datagram.payload);
    if (!acknowledge)
        return std::nullopt;
    if (acknowledge->command == gvcp::Command::ForceIp)
        return acknowledge->id == m_forceIpId ? takeForceIp(datagram, acknowledge->status) : std::nullopt;
    if (acknowledge->command == gvcp::Command::Discovery) {
        const bool isOurs = std::count(m_discoveryIds.begin(), m_discoveryIds.end(), acknowledge->id) > 0;
        const auto identity = gvcp::parseDiscoveryAck(acknowledge->payload);
        return isOurs && identity ? takeDiscovery(*identity) : std::nullopt;
    }
    m_access.take(datagram, *acknowledge);
    return std::nullopt;
}

std::optional<RZ_ERROR> ForceIpExchange::takeForceIp(const Datagram& datagram, gvcp::Status status)
{
    // The acknowledge names no camera. Whatever comes from elsewhere than its two addresses is not believed.
    if (datagram.source != m_before.ip && datagram.source != m_wanted.ip)
        return std::nullopt;
    switch (status) {
    case gvcp::Status::Success:
        return RZ_OK;
    case gvcp::Status::Busy:
        return std::nullopt; // The next try may find it idle.
    case gvcp::Status::AccessDenied:
        return RZ_ERROR_ACCESS_DENIED;
    case gvcp::Status::BadAlignment: // A camera exists that says so once for nothing.
        if (!std::exchange(m_wasMisaligned, true))
            return std::nullopt;
        return RZ_ERROR_REFUSED;
    default:
        return RZ_ERROR_REFUSED;
    }
}

std::optional<RZ_ERROR> ForceIpExchange::takeDiscovery(const gvcp::DiscoveryAck& identity)
{
    if (identity.mac != m_wanted.mac)
        return std::nullopt;
    m_isHeard = true;
    const gvcp::ForceIp present{identity.mac, identity.ip, identity.subnetMask, identity.gateway};
    if (present != m_wanted)
        return std::nullopt;
    if (m_wanted != m_before)
        return RZ_OK;
    m_access.ask(0, m_network.adapters().front().addressTowards(identity.ip), identity.ip);
    return std::nullopt;
}

RZ_ERROR ForceIpExchange::judgeSilence() const
{
    if (!m_isHeard)
        return RZ_ERROR_NO_ANSWER;
    return m_access.answer(0, m_wanted.ip) == AccessCheck::Answer::Accessible ? RZ_OK
                                                                              : RZ_ERROR_ACCESS_DENIED;
}

} // namespace

RZ_ERROR forceIp(Network& network, const gvcp::ForceIp& wanted, const gvcp::ForceIp& before)
{
    if (network.adapters().empty())
        return RZ_ERROR_NETWORK;
    return ForceIpExchange(network, wanted, before).run();
}

} // namespace sdk
