// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/Ipv4.h"

#include <optional>

namespace sdk {

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
