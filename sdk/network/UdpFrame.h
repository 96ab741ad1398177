// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/Ipv4.h"

#include <optional>

namespace sdk {

/// Where the fields stand that tell which packets are of interest, in bytes from the header's beginning.
namespace Ipv4Header {
inline constexpr std::uint32_t Fragment = 6; ///< Flags and offset.
inline constexpr std::uint32_t Protocol = 9;
inline constexpr std::uint32_t Source = 12;
inline constexpr std::uint16_t FragmentBits =
    0x3FFF; ///< More fragments, and the offset: 0 of a whole packet.
} // namespace Ipv4Header

namespace UdpHeader {
inline constexpr std::uint32_t SourcePort = 0;
inline constexpr std::uint32_t DestinationPort = 2;
inline constexpr std::uint32_t Length = 4;
inline constexpr std::uint32_t Checksum = 6;
inline constexpr std::uint32_t Size = 8;
} // namespace UdpHeader

/// A UDP datagram taken out of an IPv4 packet that the kernel's own checks have not seen.
struct UdpFrame
{
    base::Ipv4 source;
    std::uint16_t sourcePort = 0;
    std::uint16_t destinationPort = 0;
    base::ByteView payload; ///< Points into the packet.
};

/// Whether the UDP checksum is to be looked at: a packet that never left this host may not have been given
/// one yet.
enum class UdpChecksum
{
    Verify,
    Ignore,
};

/// Nothing unless the bytes are one whole, unfragmented IPv4 packet with one whole UDP datagram in it.
/// Padding after the packet is ignored.
std::optional<UdpFrame> parseUdpFrame(base::ByteView packet, UdpChecksum checksum);

} // namespace sdk
