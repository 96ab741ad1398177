// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/UdpFrame.h"

namespace sdk {

namespace {

constexpr std::size_t MinIpHeader = 20;
constexpr std::uint8_t ProtocolUdp = 17;

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

bool isChecksumRight(base::ByteView packet, base::ByteView udp)
{
    if (base::readU16(udp, UdpHeader::Checksum) == 0)
        return true; // The sender made none.
    std::uint32_t sum = sumOfWords(packet.subspan(Ipv4Header::Source, 8)) + ProtocolUdp +
                        static_cast<std::uint32_t>(udp.size());
    sum += sumOfWords(udp);
    while (sum > 0xFFFF)
        sum = (sum & 0xFFFF) + (sum >> 16);
    return sum == 0xFFFF;
}

} // namespace

std::optional<UdpFrame> parseUdpFrame(base::ByteView packet, UdpChecksum checksum)
{
    if (packet.size() < MinIpHeader || packet[0] >> 4 != 4)
        return std::nullopt;
    const std::size_t headerSize = (packet[0] & 0xFu) * 4;
    const std::size_t packetSize = base::readU16(packet, 2);
    if (headerSize < MinIpHeader || packetSize > packet.size() || packetSize < headerSize + UdpHeader::Size)
        return std::nullopt;
    if ((base::readU16(packet, Ipv4Header::Fragment) & Ipv4Header::FragmentBits) != 0 ||
        packet[Ipv4Header::Protocol] != ProtocolUdp)
        return std::nullopt;

    const std::size_t udpSize = base::readU16(packet, headerSize + UdpHeader::Length);
    if (udpSize < UdpHeader::Size || udpSize > packetSize - headerSize)
        return std::nullopt;
    const base::ByteView udp = packet.subspan(headerSize, udpSize);
    if (checksum == UdpChecksum::Verify && !isChecksumRight(packet, udp))
        return std::nullopt;
    return UdpFrame{base::readIpv4(packet, Ipv4Header::Source), base::readU16(udp, UdpHeader::SourcePort),
                    base::readU16(udp, UdpHeader::DestinationPort), udp.subspan(UdpHeader::Size)};
}

} // namespace sdk
