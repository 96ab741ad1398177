// SPDX-License-Identifier: Apache-2.0
#include "simulator/wire/Frame.h"

#include "simulator/wire/TinsConversion.h"

#include <tins/arp.h>
#include <tins/ethernetII.h>
#include <tins/icmp.h>
#include <tins/ip.h>
#include <tins/rawpdu.h>
#include <tins/udp.h>

namespace simulator {

namespace {

base::Bytes payloadOf(const Tins::PDU& pdu)
{
    const auto* const raw = pdu.find_pdu<Tins::RawPDU>();
    return raw ? base::Bytes(raw->payload().begin(), raw->payload().end()) : base::Bytes();
}

Tins::IP ipHeader(base::Ipv4 source, base::Ipv4 destination)
{
    Tins::IP ip(toTins(destination), toTins(source));
    ip.ttl(64);
    return ip;
}

base::Bytes serialize(const UdpDatagram& datagram)
{
    auto frame = Tins::EthernetII(toTins(datagram.destinationMac), toTins(datagram.sourceMac)) /
                 ipHeader(datagram.source, datagram.destination) /
                 Tins::UDP(datagram.destinationPort, datagram.sourcePort) /
                 Tins::RawPDU(datagram.payload.data(), static_cast<std::uint32_t>(datagram.payload.size()));
    return frame.serialize();
}

base::Bytes serialize(const ArpMessage& message)
{
    Tins::ARP arp(toTins(message.target), toTins(message.sender), toTins(message.targetMac),
                  toTins(message.sourceMac));
    arp.opcode(message.isRequest ? Tins::ARP::REQUEST : Tins::ARP::REPLY);
    auto frame = Tins::EthernetII(toTins(message.destinationMac), toTins(message.sourceMac)) / arp;
    return frame.serialize();
}

base::Bytes serialize(const Echo& echo)
{
    Tins::ICMP icmp(echo.isRequest ? Tins::ICMP::ECHO_REQUEST : Tins::ICMP::ECHO_REPLY);
    icmp.id(echo.id);
    icmp.sequence(echo.sequence);
    auto frame = Tins::EthernetII(toTins(echo.destinationMac), toTins(echo.sourceMac)) /
                 ipHeader(echo.source, echo.destination) / icmp /
                 Tins::RawPDU(echo.payload.data(), static_cast<std::uint32_t>(echo.payload.size()));
    return frame.serialize();
}

} // namespace

std::optional<Frame> frameOf(const Tins::PDU& pdu)
{
    const auto* const ethernet = pdu.find_pdu<Tins::EthernetII>();
    if (!ethernet)
        return std::nullopt;
    const base::MacAddress source = fromTins(ethernet->src_addr());
    const base::MacAddress destination = fromTins(ethernet->dst_addr());
    if (const auto* const arp = ethernet->find_pdu<Tins::ARP>()) {
        ArpMessage message;
        message.sourceMac = source;
        message.destinationMac = destination;
        message.isRequest = arp->opcode() == Tins::ARP::REQUEST;
        message.sender = fromTins(arp->sender_ip_addr());
        message.target = fromTins(arp->target_ip_addr());
        message.targetMac = fromTins(arp->target_hw_addr());
        return message;
    }
    const auto* const ip = ethernet->find_pdu<Tins::IP>();
    if (!ip)
        return std::nullopt;
    if (const auto* const udp = ip->find_pdu<Tins::UDP>())
        return UdpDatagram{source,       destination,  fromTins(ip->src_addr()), fromTins(ip->dst_addr()),
                           udp->sport(), udp->dport(), payloadOf(*udp)};
    const auto* const icmp = ip->find_pdu<Tins::ICMP>();
    if (icmp && (icmp->type() == Tins::ICMP::ECHO_REQUEST || icmp->type() == Tins::ICMP::ECHO_REPLY))
        return Echo{source,
                    destination,
                    fromTins(ip->src_addr()),
                    fromTins(ip->dst_addr()),
                    icmp->type() == Tins::ICMP::ECHO_REQUEST,
                    icmp->id(),
                    icmp->sequence(),
                    payloadOf(*icmp)};
    return std::nullopt;
}

base::Bytes bytesOf(const Frame& frame)
{
    return std::visit([](const auto& message) { return serialize(message); }, frame);
}

} // namespace simulator
