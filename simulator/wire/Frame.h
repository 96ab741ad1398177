// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <functional>
#include <optional>
#include <variant>

namespace Tins {
class PDU;
}

namespace simulator {

inline constexpr base::MacAddress BroadcastMac{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};

struct UdpDatagram
{
    base::MacAddress sourceMac;
    base::MacAddress destinationMac;
    base::Ipv4 source;
    base::Ipv4 destination;
    std::uint16_t sourcePort = 0;
    std::uint16_t destinationPort = 0;
    base::Bytes payload;
};

struct ArpMessage
{
    base::MacAddress sourceMac; ///< Of the Ethernet header and of the message's sender.
    base::MacAddress destinationMac;
    bool isRequest = true;
    base::Ipv4 sender;
    base::Ipv4 target;
    base::MacAddress targetMac;
};

/// ICMP echo request or reply.
struct Echo
{
    base::MacAddress sourceMac;
    base::MacAddress destinationMac;
    base::Ipv4 source;
    base::Ipv4 destination;
    bool isRequest = true;
    std::uint16_t id = 0;
    std::uint16_t sequence = 0;
    base::Bytes payload;
};

/// The Ethernet frames that the farm has to do with.
using Frame = std::variant<UdpDatagram, ArpMessage, Echo>;

/// Puts a frame on the wire.
using FrameSink = std::function<void(const Frame&)>;

/// What a captured frame is to the farm; nothing when it is none of its sorts.
std::optional<Frame> frameOf(const Tins::PDU& pdu);

/// The frame as it goes onto the wire, without Ethernet's padding.
base::Bytes bytesOf(const Frame& frame);

} // namespace simulator
