// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/ArrivalFrame.h"

#include "sdk/network/UdpFrame.h"

#include <algorithm>
#include <array>

namespace sdk {

namespace {

constexpr std::uint16_t EtherTypeArp = 0x0806;

/// Where an ARP packet's fields stand, and how long it is.
namespace Arp {
constexpr std::array<std::uint8_t, 6> Ipv4OnEthernet{0, 1, 8, 0, 6, 4};
constexpr std::size_t SenderMac = 8;
constexpr std::size_t SenderAddress = 14;
constexpr std::size_t TargetAddress = 24;
constexpr std::size_t Size = 28;
} // namespace Arp

namespace Dhcp {
constexpr std::uint16_t ServerPort = 67;
constexpr std::array<std::uint8_t, 3> RequestByEthernet{1, 1, 6};
constexpr std::size_t ClientMac = 28;
constexpr std::size_t Cookie = 236;
constexpr std::array<std::uint8_t, 4> CookieValue{99, 130, 83, 99};
constexpr std::size_t Options = 240;
constexpr std::uint8_t Pad = 0;
constexpr std::uint8_t RequestedAddress = 50;
constexpr std::uint8_t MessageType = 53;
constexpr std::uint8_t End = 255;
constexpr std::uint8_t Discover = 1;
constexpr std::uint8_t Request = 3;
} // namespace Dhcp

template <std::size_t Size>
bool beginsWith(base::ByteView bytes, const std::array<std::uint8_t, Size>& wanted)
{
    return bytes.size() >= Size && std::ranges::equal(bytes.first(Size), wanted);
}

std::optional<Arrival> parseArp(base::ByteView packet)
{
    if (packet.size() < Arp::Size || !beginsWith(packet, Arp::Ipv4OnEthernet))
        return std::nullopt;
    const base::Ipv4 sender = base::readIpv4(packet, Arp::SenderAddress);
    const base::Ipv4 target = base::readIpv4(packet, Arp::TargetAddress);
    Arrival arrival;
    arrival.mac = base::readMac(packet, Arp::SenderMac);
    arrival.kind = sender.isUnspecified() ? RZ_ARRIVAL_PROBE
                   : sender == target     ? RZ_ARRIVAL_ANNOUNCEMENT
                                          : RZ_ARRIVAL_SPEECH;
    arrival.address = sender.isUnspecified() ? target : sender;
    return arrival;
}

/// The contents of an option that has the size; nothing when there is none such.
base::ByteView option(base::ByteView options, std::uint8_t wanted, std::size_t size)
{
    while (options.size() >= 2 && options[0] != Dhcp::End) {
        if (options[0] == Dhcp::Pad) {
            options = options.subspan(1);
            continue;
        }
        const std::size_t length = options[1];
        if (options.size() < 2 + length)
            break;
        if (options[0] == wanted && length == size)
            return options.subspan(2, length);
        options = options.subspan(2 + length);
    }
    return {};
}

std::optional<Arrival> parseDhcp(base::ByteView message)
{
    if (message.size() < Dhcp::Options || !beginsWith(message, Dhcp::RequestByEthernet) ||
        !beginsWith(message.subspan(Dhcp::Cookie), Dhcp::CookieValue))
        return std::nullopt;
    const base::ByteView options = message.subspan(Dhcp::Options);
    const base::ByteView type = option(options, Dhcp::MessageType, 1);
    if (type.empty() || (type[0] != Dhcp::Discover && type[0] != Dhcp::Request))
        return std::nullopt;
    Arrival arrival;
    arrival.kind = RZ_ARRIVAL_DHCP;
    arrival.mac = base::readMac(message, Dhcp::ClientMac);
    const base::ByteView address = option(options, Dhcp::RequestedAddress, 4);
    if (!address.empty())
        arrival.address = base::readIpv4(address, 0);
    return arrival;
}

} // namespace

std::optional<Arrival> parseArrivalFrame(base::ByteView frame, std::size_t adapter)
{
    std::optional<Arrival> arrival;
    if (const auto packet = ethernetPayload(frame, EtherTypeArp))
        arrival = parseArp(*packet);
    else if (const auto udp = parseUdpFrame(frame); udp && udp->destinationPort == Dhcp::ServerPort)
        arrival = parseDhcp(udp->payload);
    if (!arrival || arrival->mac.isUnspecified() || arrival->mac.isGroup())
        return std::nullopt;
    arrival->adapter = adapter;
    return arrival;
}

} // namespace sdk
