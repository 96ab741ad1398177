// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"

#include "cli/arguments/Arguments.h"
#include "cli/session/Failure.h"
#include "cli/text/DisplayText.h"

namespace cli {
namespace {

using namespace base;

constexpr Ipv4 LongestMask = "255.255.255.252"_ip;

[[noreturn]] void refuse(const std::string& name, const std::string& text, const std::string& reason)
{
    throw Failure(ExitStatus::WrongArguments, name + " \"" + displayText(text) + "\" " + reason);
}

/// One option of the command line and the address that is its value.
struct Given
{
    std::string option;
    std::string text;
    Ipv4 address;

    [[noreturn]] void refuse(const std::string& reason) const { cli::refuse(option, text, reason); }
};

Given parse(const std::string& option, const std::string& text)
{
    const std::optional<Ipv4> address = Ipv4::parse(text);
    // A leading zero is octal to some programs.
    if (!address || address->toText() != text)
        refuse(option, text,
               "is no IPv4 address: four numbers from 0 to 255 without leading zeros, joined by dots, are "
               "allowed, such as 192.168.1.20");
    return {option, text, *address};
}

void requireMask(const Given& mask)
{
    if (!mask.address.isMask())
        mask.refuse(
            "is no subnet mask: only ones before zeros, in binary, are allowed, such as 255.255.255.0");
    if (mask.address.isUnspecified())
        mask.refuse("makes all addresses one subnet; 128.0.0.0 to 255.255.255.252 are allowed");
    if (mask.address > LongestMask)
        mask.refuse("leaves no room for a camera and a host in the subnet; 128.0.0.0 to 255.255.255.252 are "
                    "allowed");
}

// What no host has, by the address's first number.

bool beginsWithZero(Ipv4 address)
{
    return address.firstOctet() == 0;
}

bool isLoopback(Ipv4 address)
{
    return address.firstOctet() == 127;
}

bool isMulticast(Ipv4 address)
{
    return address.firstOctet() >= 224 && address.firstOctet() < 240;
}

bool isReserved(Ipv4 address)
{
    return address.firstOctet() >= 240;
}

/// Whether a host can have the address, in a subnet of this mask.
void requireHost(const Given& given, Ipv4 mask)
{
    if (beginsWithZero(given.address))
        given.refuse("begins with 0, which is no host's; 1 to 223 other than 127 are allowed there");
    if (isLoopback(given.address))
        given.refuse(
            "is a loopback address, which no camera can have; 1 to 223 other than 127 are allowed as the "
            "first number");
    if (isReserved(given.address))
        given.refuse(
            "is in the reserved range from 240.0.0.0; 1 to 223 other than 127 are allowed as the first "
            "number");
    if (isMulticast(given.address))
        given.refuse("is a multicast address; 1 to 223 other than 127 are allowed as the first number");

    const Ipv4 network = given.address.networkAddress(mask);
    const Ipv4 broadcast = given.address.broadcastAddress(mask);
    const std::string allowed =
        "; " + network.plus(1).toText() + " to " + Ipv4(broadcast.number() - 1).toText() + " are allowed";
    if (given.address == network)
        given.refuse("is the address of the subnet itself with mask " + mask.toText() + allowed);
    if (given.address == broadcast)
        given.refuse("is the broadcast address of its subnet with mask " + mask.toText() + allowed);
}

void requireGateway(const Given& gateway, const Given& address, const Given& mask)
{
    if (!gateway.address.isInSubnetOf(address.address, mask.address))
        gateway.refuse("is not in the subnet of --ip " + address.text + " with --mask " + mask.text +
                       "; an address of that subnet is allowed, or 0.0.0.0 for no gateway");
    requireHost(gateway, mask.address);
    if (gateway.address == address.address)
        gateway.refuse("is the camera's own new address; another of its subnet is allowed, or 0.0.0.0 for no "
                       "gateway");
}

} // namespace

MacAddress parseMacAddress(const std::string& text)
{
    const std::optional<MacAddress> mac = MacAddress::parse(text);
    if (!mac)
        refuse("MAC", text,
               "is no MAC address: twelve hexadecimal digits are allowed, the pairs separated by "
               "colons, dashes or nothing, such as 00:1A:2B:3C:4D:5E");
    if (mac->isUnspecified())
        refuse("MAC", text, "is all zeros, which is no camera's; the list command shows the cameras' own");
    if (mac->isGroup())
        refuse("MAC", text,
               "is the address of a group (its first pair is odd), which is no camera's; the list "
               "command shows the cameras' own");
    return *mac;
}

IpSettings parseIpSettings(const Arguments& arguments)
{
    const Given address = parse("--ip", arguments.options.at("--ip"));
    const Given mask = parse("--mask", arguments.options.at("--mask"));
    const Given gateway =
        parse("--gateway", arguments.has("--gateway") ? arguments.options.at("--gateway") : "0.0.0.0");

    requireMask(mask);
    requireHost(address, mask.address);
    if (!gateway.address.isUnspecified())
        requireGateway(gateway, address, mask);
    return {address.address, mask.address, gateway.address};
}

} // namespace cli
