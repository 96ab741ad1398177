// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/UdpFrame.h"

namespace sdk {

namespace {

constexpr std::size_t EthernetHeader = 14;
constexpr std::size_t EtherType = 12; // Where it stands.
constexpr std::uint16_t EtherTypeIpv4 = 0x0800;

constexpr std::size_t MinIpHeader = 20;
constexpr std::uint8_t ProtocolUdp = 17;

/// Where the fields stand, in bytes from the header's beginning.
namespace Ipv4Header {
constexpr std::size_t Length = 2;
constexpr std::size_t Fragment = 6; ///< Flags and offset.
constexpr std::size_t Protocol = 9;
constexpr std::size_t Source = 12;
constexpr std::size_t Destination = 16;
constexpr std::uint16_t FragmentBits = 0x3FFF; ///< More fragments, and the offset: 0 of a whole packet.
} // namespace Ipv4Header

namespace UdpHeader {
constexpr std::size_t SourcePort = 0;
constexpr std::size_t DestinationPort = 2;
constexpr std::size_t Length = 4;
constexpr std::size_t Checksum = 6;
constexpr std::size_t Size = 8;
} // namespace UdpHeader

/// The ones' complement sum of RFC 1071; an odd last byte counts as the upper one.
std::uint32_t sumOfWords(base::ByteView bytes)
{
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        sum += base::readU16(bytes, i);
    if (bytes.size() % 2 != 0)
        sum += static_cast<std::uint32_t>(bytes.back() << 8);
    return sum;
}

std::uint16_t folded(std::uint32_t sum)
{
    while (sum > 0xFFFF)
        sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<std::uint16_t>(sum);
}

bool isChecksumRight(base::ByteView packet, base::ByteView udp)
{
    const std::uint16_t checksum = base::readU16(udp, UdpHeader::Checksum);
    if (checksum == 0)
        return true; // The sender made none.
    const std::uint32_t pseudoHeader = sumOfWords(packet.subspan(Ipv4Header::Source, 8)) + ProtocolUdp +
                                       static_cast<std::uint32_t>(udp.size());
    // The kernel leaves the rest to the adapter, and a packet that never leaves the host meets none.
    if (checksum == folded(pseudoHeader))
        return true;
    return folded(pseudoHeader + sumOfWords(udp)) == 0xFFFF;
}

} // namespace

std::optional<base::ByteView> ethernetPayload(base::ByteView frame, std::uint16_t etherType)
{
    if (frame.size() < EthernetHeader || base::readU16(frame, EtherType) != etherType)
        return std::nullopt;
    return frame.subspan(EthernetHeader);
}

std::optional<UdpFrame> parseUdpFrame(base::ByteView frame)
{
    const auto payload = ethernetPayload(frame, EtherTypeIpv4);
    if (!payload)
        return std::nullopt;
    const base::ByteView packet = *payload;
    if (packet.size() < MinIpHeader || packet[0] >> 4 != 4)
        return std::nullopt;
    const std::size_t headerSize = (packet[0] & 0xFu) * 4;
    const std::size_t packetSize = base::readU16(packet, Ipv4Header::Length);
    if (headerSize < MinIpHeader || packetSize > packet.size() || packetSize < headerSize + UdpHeader::Size)
        return std::nullopt;
    if ((base::readU16(packet, Ipv4Header::Fragment) & Ipv4Header::FragmentBits) != 0 ||
        packet[Ipv4Header::Protocol] != ProtocolUdp)
        return std::nullopt;

    const std::size_t udpSize = base::readU16(packet, headerSize + UdpHeader::Length);
    if (udpSize < UdpHeader::Size || udpSize > packetSize - headerSize)
        return std::nullopt;
    const base::ByteView udp = packet.subspan(headerSize, udpSize);
    if (!isChecksumRight(packet, udp))
        return std::nullopt;
    return UdpFrame{base::readIpv4(packet, Ipv4Header::Source),
                    base::readIpv4(packet, Ipv4Header::Destination),
                    base::readU16(udp, UdpHeader::SourcePort), base::readU16(udp, UdpHeader::DestinationPort),
                    udp.subspan(UdpHeader::Size)};
}

} // namespace sdk
