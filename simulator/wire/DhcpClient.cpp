// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/DhcpClient.h"

#include "simulator/wire/TinsConversion.h"

#include <algorithm>
#include <tins/dhcp.h>
#include <utility>

namespace simulator {

using namespace base::literals;

namespace {

constexpr std::uint16_t ServerPort = 67;
constexpr std::uint8_t Reply = 2; // BOOTP's operation code
constexpr std::uint8_t Ethernet = 1;
constexpr base::Ipv4 UsualMask = "255.255.255.0"_ip;
constexpr std::size_t FixedPart = 240; // bytes, up to the first option
constexpr std::size_t TransactionAt = 4;

// Four tries within the whole time: at its begin, and 1/8, 3/8 and 7/8 of it later.
constexpr int FirstPauseShare = 8;
// Cameras that are switched on together begin within this share of the time, and not all at once.
constexpr int BeginShare = 16;

/// What a server's message says, when it is one for this client.
struct Message
{
    std::uint8_t type = 0;
    base::IpSettings lease;
    base::Ipv4 server;
};

template <typename Option>
auto optionOr(Option option, decltype(option()) otherwise)
{
    try {
        return option();
    } catch (const Tins::option_not_found&) {
        return otherwise;
    }
}

std::optional<Message> parse(const base::Bytes& payload, const base::MacAddress& mac)
try {
    const Tins::DHCP dhcp(payload.data(), static_cast<std::uint32_t>(payload.size()));
    if (dhcp.opcode() != Reply || fromTins(Tins::HWAddress<6>(dhcp.chaddr())) != mac)
        return std::nullopt;
    Message message;
    message.type = dhcp.type();
    message.server = fromTins(dhcp.server_identifier());
    message.lease.address = fromTins(dhcp.yiaddr());
    message.lease.mask = fromTins(optionOr([&] { return dhcp.subnet_mask(); }, toTins(UsualMask)));
    const auto routers = optionOr([&] { return dhcp.routers(); }, {});
    message.lease.gateway = routers.empty() ? base::Ipv4() : fromTins(routers.front());
    return message;
} catch (const Tins::exception_base&) {
    return std::nullopt;
}

bool isUsable(const base::IpSettings& lease)
{
    return lease.address.canBeHost() && lease.mask.isMask();
}

/// The beginning of a client's message of this type.
Tins::DHCP clientMessage(Tins::DHCP::Flags type, const base::MacAddress& mac, std::uint32_t transaction)
{
    Tins::DHCP dhcp;
    dhcp.htype(Ethernet);
    dhcp.xid(transaction);
    dhcp.chaddr(toTins(mac));
    dhcp.type(type);
    return dhcp;
}

/// It with its end, to whichever servers there are.
UdpDatagram toServers(Tins::DHCP dhcp, const base::MacAddress& mac)
{
    const std::uint8_t wanted[] = {Tins::DHCP::SUBNET_MASK, Tins::DHCP::ROUTERS};
    dhcp.add_option({Tins::DHCP::DHCP_PARAMETER_REQUEST_LIST, sizeof wanted, wanted});
    dhcp.end();

    UdpDatagram datagram;
    datagram.sourceMac = mac;
    datagram.destinationMac = BroadcastMac;
    datagram.destination = base::LimitedBroadcast;
    datagram.sourcePort = DhcpClient::Port;
    datagram.destinationPort = ServerPort;
    datagram.payload = dhcp.serialize();
    return datagram;
}

} // namespace

UdpDatagram DhcpClient::discover(const base::MacAddress& mac, std::uint32_t transaction)
{
    return toServers(clientMessage(Tins::DHCP::DISCOVER, mac, transaction), mac);
}

DhcpClient::DhcpClient(const base::MacAddress& mac, TimerQueue& timers, FrameSink send, std::mt19937& random)
    : m_mac(mac),
      m_timeouts(timers),
      m_send(std::move(send)),
      m_random(random)
{}

void DhcpClient::start(std::chrono::milliseconds patience, Done done)
{
    stop();
    m_done = std::move(done);
    m_transaction = static_cast<std::uint32_t>(m_random());
    m_state = State::Selecting;
    m_timeouts.after(patience, [this] { finish(std::nullopt); });
    std::uniform_int_distribution<std::chrono::milliseconds::rep> wait(0, patience.count() / BeginShare);
    const auto pause = std::max(patience / FirstPauseShare, std::chrono::milliseconds{1});
    m_timeouts.after(std::chrono::milliseconds{wait(m_random)}, [this, pause] { tryAgain(pause); });
}

void DhcpClient::stop()
{
    m_timeouts.cancelAll();
    m_state = State::Idle;
}

void DhcpClient::tryAgain(std::chrono::milliseconds pause)
{
    m_timeouts.after(pause, [this, pause] { tryAgain(2 * pause); });
    sendMessage();
}

void DhcpClient::sendMessage()
{
    if (m_state != State::Requesting) {
        m_send(discover(m_mac, m_transaction));
        return;
    }
    Tins::DHCP dhcp = clientMessage(Tins::DHCP::REQUEST, m_mac, m_transaction);
    dhcp.requested_ip(toTins(m_offer.address));
    dhcp.server_identifier(toTins(m_offer.server));
    m_send(toServers(std::move(dhcp), m_mac));
}

void DhcpClient::receive(const UdpDatagram& datagram)
{
    // This is looked at first because, with many cameras, most of a server's broadcasts are for others.
    if (m_state == State::Idle || datagram.payload.size() < FixedPart ||
        base::readU32(datagram.payload, TransactionAt) != m_transaction)
        return;
    const auto message = parse(datagram.payload, m_mac);
    if (!message)
        return;
    if (message->type == Tins::DHCP::NAK) {
        m_state = State::Selecting; // The next try asks anew.
    } else if (message->type == Tins::DHCP::OFFER && m_state == State::Selecting &&
               isUsable(message->lease)) {
        m_offer = {message->lease.address, message->server};
        m_state = State::Requesting;
        sendMessage();
    } else if (message->type == Tins::DHCP::ACK && m_state == State::Requesting &&
               message->server == m_offer.server && isUsable(message->lease)) {
        finish(message->lease);
    }
}

void DhcpClient::finish(const std::optional<base::IpSettings>& lease)
{
    stop();
    m_done(lease);
}

} // namespace simulator
