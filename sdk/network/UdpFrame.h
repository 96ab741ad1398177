// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/Ipv4.h"

#include <optional>

namespace sdk {

/// What an Ethernet frame of that type carries, with the padding behind it; nothing of any other.
std::optional<base::ByteView> ethernetPayload(base::ByteView frame, std::uint16_t etherType);

/// A UDP datagram taken out of a frame that the kernel's own checks have not seen.
struct UdpFrame
{
    base::Ipv4 source;
    base::Ipv4 destination;
    std::uint16_t sourcePort = 0;
    std::uint16_t destinationPort = 0;
    base::ByteView payload; ///< Points into the frame.
};

/// Nothing unless the bytes are an Ethernet frame with one whole, unfragmented IPv4 packet and one whole UDP
/// datagram in it, whose checksum is right, or is none. Padding after the packet is ignored.
std::optional<UdpFrame> parseUdpFrame(base::ByteView frame);

} // namespace sdk
