// SPDX-License-Identifier: Apache-2.0
#include "base/AddressRules.h"

namespace base {
namespace {

constexpr Ipv4 LongestMask = "255.255.255.252"_ip;

std::vector<std::string> valuesOf(const GivenIpv4& given)
{
    return {given.name, given.address.toText()};
}

} // namespace

std::optional<Sentence> whyNoIpv4(const std::string& name, const std::string& text)
{
    const std::optional<Ipv4> address = Ipv4::parse(text);
    // A leading zero is octal to some programs.
    if (!address || address->toText() != text)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is no IPv4 address: four numbers from 0 to 255 "
                                                 "without leading zeros, joined by dots, are allowed, such "
                                                 "as 192.168.1.20"),
                        {name, text}};
    return std::nullopt;
}

std::optional<Sentence> whyNoMask(const GivenIpv4& mask)
{
    if (!mask.address.isMask())
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is no subnet mask: only ones before zeros, in "
                                                 "binary, are allowed, such as 255.255.255.0"),
                        valuesOf(mask)};
    if (mask.address.isUnspecified())
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" makes all addresses one subnet; 128.0.0.0 to "
                                                 "255.255.255.252 are allowed"),
                        valuesOf(mask)};
    if (mask.address > LongestMask)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" leaves no room for a camera and a host in the "
                                                 "subnet; 128.0.0.0 to 255.255.255.252 are allowed"),
                        valuesOf(mask)};
    return std::nullopt;
}

std::optional<Sentence> whyNoHost(const GivenIpv4& given)
{
    const unsigned first = given.address.firstOctet();
    if (first == 0)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" begins with 0, which is no host's; 1 to 223 "
                                                 "other than 127 are allowed there"),
                        valuesOf(given)};
    if (first == 127)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is a loopback address, which no camera can "
                                                 "have; 1 to 223 other than 127 are allowed as the first "
                                                 "number"),
                        valuesOf(given)};
    if (first >= 240)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is in the reserved range from 240.0.0.0; 1 to "
                                                 "223 other than 127 are allowed as the first number"),
                        valuesOf(given)};
    if (first >= 224)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is a multicast address; 1 to 223 other than 127 "
                                                 "are allowed as the first number"),
                        valuesOf(given)};
    return std::nullopt;
}

std::optional<Sentence> whyNoHostOf(const GivenIpv4& given, Ipv4 mask)
{
    if (auto why = whyNoHost(given))
        return why;
    const Ipv4 network = given.address.networkAddress(mask);
    const Ipv4 broadcast = given.address.broadcastAddress(mask);
    const std::vector<std::string> values{given.name, given.address.toText(), mask.toText(),
                                          network.plus(1).toText(), Ipv4(broadcast.number() - 1).toText()};
    if (given.address == network)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is the address of the subnet itself with mask "
                                                 "%3; %4 to %5 are allowed"),
                        values};
    if (given.address == broadcast)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is the broadcast address of its subnet with "
                                                 "mask %3; %4 to %5 are allowed"),
                        values};
    return std::nullopt;
}

std::optional<Sentence> whyNoGateway(const GivenIpv4& gateway, const GivenIpv4& address,
                                     const GivenIpv4& mask)
{
    if (gateway.address.isUnspecified())
        return std::nullopt;
    if (!gateway.address.isInSubnetOf(address.address, mask.address))
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is not in the subnet of %3 %4 with %5 %6; an "
                                                 "address of that subnet is allowed, or 0.0.0.0 for no "
                                                 "gateway"),
                        {gateway.name, gateway.address.toText(), address.name, address.address.toText(),
                         mask.name, mask.address.toText()}};
    if (auto why = whyNoHostOf(gateway, mask.address))
        return why;
    if (gateway.address == address.address)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is the camera's own new address; another of its "
                                                 "subnet is allowed, or 0.0.0.0 for no gateway"),
                        valuesOf(gateway)};
    return std::nullopt;
}

std::optional<Sentence> whyNoCamera(const std::string& name, const std::string& text)
{
    const std::optional<MacAddress> mac = MacAddress::parse(text);
    const std::vector<std::string> values{name, text};
    if (!mac)
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is no MAC address: twelve hexadecimal digits "
                                                 "are allowed, the pairs separated by colons, dashes or "
                                                 "nothing, such as 00:1A:2B:3C:4D:5E"),
                        values};
    if (mac->isUnspecified())
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is all zeros, which is no camera's; the list "
                                                 "command shows the cameras' own"),
                        values};
    if (mac->isGroup())
        return Sentence{TRANSLATABLE("Sentence", "%1 \"%2\" is the address of a group (its first pair is "
                                                 "odd), which is no camera's; the list command shows the "
                                                 "cameras' own"),
                        values};
    return std::nullopt;
}

} // namespace base
