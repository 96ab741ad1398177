// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"
#include "gvcp/Bytes.h"

#include <functional>
#include <variant>

namespace simulator {

inline constexpr gvcp::MacAddress BroadcastMac{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};

struct UdpDatagram
{
    gvcp::MacAddress sourceMac;
    gvcp::MacAddress destinationMac;
    gvcp::Ipv4 source = 0;
    gvcp::Ipv4 destination = 0;
    std::uint16_t sourcePort = 0;
    std::uint16_t destinationPort = 0;
    gvcp::Bytes payload;
};

struct ArpMessage
{
    gvcp::MacAddress sourceMac; ///< The sender's in the message too.
    gvcp::MacAddress destinationMac;
    bool isRequest = true;
    gvcp::Ipv4 sender = 0;
    gvcp::Ipv4 target = 0;
    gvcp::MacAddress targetMac;
};

/// ICMP echo request or reply.
struct Echo
{
    gvcp::MacAddress sourceMac;
    gvcp::MacAddress destinationMac;
    gvcp::Ipv4 source = 0;
    gvcp::Ipv4 destination = 0;
    bool isRequest = true;
    std::uint16_t id = 0;
    std::uint16_t sequence = 0;
    gvcp::Bytes payload;
};

/// The Ethernet frames that the farm has to do with.
using Frame = std::variant<UdpDatagram, ArpMessage, Echo>;

/// Puts a frame on the wire.
using FrameSink = std::function<void(const Frame&)>;

} // namespace simulator
