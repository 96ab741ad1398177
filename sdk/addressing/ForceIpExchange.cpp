// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/ForceIpExchange.h"

#include "gvcp/DiscoveryAck.h"
#include "sdk/discovery/AccessCheck.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace sdk {

namespace {

using namespace std::chrono_literals;

constexpr int MaxForces = 3;
constexpr auto TimeBetweenForces = 300ms;
constexpr std::uint8_t Flags = gvcp::FlagAcknowledge | gvcp::FlagBroadcastAcknowledge;
constexpr auto TimeBetweenLooks = 250ms;
constexpr auto TimeOfSeries = 6s;
/// Two series take no longer than this together. The first may need all of its six seconds to see that the
/// camera has not moved; the three that are left are enough for the second.
constexpr auto TimeAltogether = 9s;
/// A camera that answers a question asked so long after the last FORCEIP will not change its address any
/// more.
constexpr auto TimeToSettle = 1500ms;

RZ_ERROR resultOf(gvcp::Status status)
{
    switch (status) {
    case gvcp::Status::Success:
        return RZ_OK;
    case gvcp::Status::AccessDenied:
        return RZ_ERROR_ACCESS_DENIED;
    default:
        return RZ_ERROR_REFUSED;
    }
}

/// One series of FORCEIPs and what comes of it.
class ForceIpExchange
{
public:
    ForceIpExchange(Network& network, const gvcp::ForceIp& wanted, const base::IpSettings& before)
        : m_network(network),
          m_wanted(wanted),
          m_before(before),
          m_sender(network, 0, before.address),
          m_force(network, m_ids,
                  forceIpPlan(wanted, before.address, [this](base::ByteView packet) { sendForce(packet); }))
    {}
    ForceIpExchange(const ForceIpExchange&) = delete;
    ForceIpExchange& operator=(const ForceIpExchange&) = delete;

    RZ_ERROR run(Clock::time_point end);

    /// After run(): the camera was there all the while, acknowledged nothing, and no application is known to
    /// control it. So perhaps no FORCEIP has reached it.
    bool mayHaveMissedIt() const
    {
        return m_settledAt && *m_settledAt != m_wanted.ip.address &&
               m_access.answer(0, *m_settledAt) != AccessCheck::Answer::NotAccessible;
    }

private:
    struct Look
    {
        std::uint16_t id;
        Clock::time_point time;
    };

    void sendForce(base::ByteView packet);
    void look();
    std::optional<RZ_ERROR> take(const Datagram& datagram);
    bool isProof(const gvcp::DiscoveryAck& identity, std::uint16_t id);
    RZ_ERROR judge() const;

    Network& m_network;
    const gvcp::ForceIp& m_wanted;
    const base::IpSettings& m_before;
    RequestIds m_ids;
    ForceIpSender m_sender;
    Exchange m_force;
    Clock::time_point m_lastForce{};
    bool m_couldSend = false; ///< At least once.
    std::vector<Look> m_looks;
    AccessCheck m_access{m_network, m_ids};
    std::optional<base::Ipv4> m_settledAt; ///< Where the camera is, once it will not obey any more.
};

RZ_ERROR ForceIpExchange::run(Clock::time_point end)
{
    auto nextLook = m_network.now();
    while (m_network.now() < end) {
        m_access.proceed();
        if (m_settledAt && !m_access.isPending())
            break;
        m_force.proceed();
        if (!m_couldSend)
            return RZ_ERROR_NETWORK;
        if (m_network.now() >= nextLook) {
            look();
            nextLook += TimeBetweenLooks;
        }
        const auto datagram =
            m_network.receive(std::min({end, m_force.nextStep(), nextLook, m_access.nextStep()}));
        if (const auto result = datagram ? take(*datagram) : std::nullopt) {
            m_settledAt.reset();
            return *result;
        }
    }
    return judge();
}

void ForceIpExchange::sendForce(base::ByteView packet)
{
    m_couldSend |= m_sender.send(packet);
    m_lastForce = m_network.now();
}

void ForceIpExchange::look()
{
    m_looks.push_back({m_ids.next(), m_network.now()});
    m_network.broadcast(0, gvcp::encodeCommand(gvcp::Command::Discovery, Flags, m_looks.back().id));
}

/// The result, if the datagram decides it.
std::optional<RZ_ERROR> ForceIpExchange::take(const Datagram& datagram)
{
    const auto acknowledge = gvcp::parseAcknowledge(datagram.payload);
    if (!acknowledge)
        return std::nullopt;
    m_force.take(datagram, *acknowledge);
    if (const auto& answer = m_force.answer())
        return resultOf(answer->status);
    m_access.take(datagram, *acknowledge);
    if (acknowledge->command == gvcp::Command::Discovery)
        if (const auto identity = gvcp::parseDiscoveryAck(acknowledge->payload))
            if (isProof(*identity, acknowledge->id))
                return RZ_OK;
    return std::nullopt;
}

/// Whether the camera shows that it has obeyed. Once it will not any more, notes where it is.
bool ForceIpExchange::isProof(const gvcp::DiscoveryAck& identity, std::uint16_t id)
{
    const auto look =
        std::find_if(m_looks.begin(), m_looks.end(), [id](const Look& each) { return each.id == id; });
    if (look == m_looks.end() || identity.mac != m_wanted.mac)
        return false;
    const base::IpSettings& present = identity.ip;
    const bool isNewAddress =
        m_wanted.ip.address != m_before.address && present.address == m_wanted.ip.address;
    if (isNewAddress || (present == m_wanted.ip && present != m_before))
        return true;
    const bool isSettled = m_sender.sent() == MaxForces && look->time - m_lastForce >= TimeToSettle;
    if (isSettled) {
        m_settledAt = present.address;
        m_access.ask(0, m_network.adapters().front().addressTowards(present.address), present.address);
    }
    return false;
}

RZ_ERROR ForceIpExchange::judge() const
{
    if (!m_settledAt)
        return RZ_ERROR_NO_ANSWER;
    if (m_access.answer(0, *m_settledAt) != AccessCheck::Answer::Accessible)
        return RZ_ERROR_ACCESS_DENIED;
    return *m_settledAt == m_wanted.ip.address ? RZ_OK : RZ_ERROR_REFUSED;
}

} // namespace

bool ForceIpSender::send(base::ByteView packet)
{
    const Adapter& adapter = m_network.adapters()[m_adapter];
    const AdapterAddress* const own = adapter.inSubnetOf(m_before);
    const auto directed = own && m_sent % 2 == 1 ? own->broadcastAddress() : std::nullopt;
    ++m_sent;
    return m_network.send(m_adapter, adapter.addressTowards(m_before),
                          directed.value_or(base::LimitedBroadcast), packet);
}

Exchange::Plan forceIpPlan(const gvcp::ForceIp& wanted, base::Ipv4 before,
                           std::function<void(base::ByteView packet)> send)
{
    return {.command = gvcp::Command::ForceIp,
            .flags = Flags,
            .payload = gvcp::encodeForceIp(wanted),
            .tries = MaxForces,
            .wait = TimeBetweenForces,
            .send = std::move(send),
            .isBelieved = [before, now = wanted.ip.address](const Datagram& datagram, const auto&) {
                return datagram.source == before || datagram.source == now;
            }};
}

RZ_ERROR forceIp(Network& network, const gvcp::ForceIp& wanted, const base::IpSettings& before)
{
    if (network.adapters().empty())
        return RZ_ERROR_NETWORK;
    const auto begin = network.now();
    ForceIpExchange first(network, wanted, before);
    const RZ_ERROR result = first.run(begin + TimeOfSeries);
    if (!first.mayHaveMissedIt())
        return result;
    const auto end = std::min(network.now() + TimeOfSeries, begin + TimeAltogether);
    return ForceIpExchange(network, wanted, before).run(end);
}

} // namespace sdk
