// SPDX-License-Identifier: Apache-2.0
#include "cli/IpSettings.h"

#include "cli/DisplayText.h"
#include "cli/Failure.h"

#include <QHostAddress>
#include <QRegularExpression>

namespace cli {
namespace {

constexpr quint32 LongestMask = 0xFFFFFFFC;

/// One option of the command line and what its value means.
struct Given
{
    std::string option;
    std::string text;
    quint32 number = 0;

    [[noreturn]] void refuse(const std::string& reason) const
    {
        throw Failure(ExitStatus::WrongArguments, option + " \"" + displayText(text) + "\" " + reason);
    }
};

Given parse(const std::string& option, const std::string& text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(QStringLiteral(
        "(0|[1-9][0-9]{0,2})\\.(0|[1-9][0-9]{0,2})\\.(0|[1-9][0-9]{0,2})\\.(0|[1-9][0-9]{0,2})")));
    Given given{option, text};
    const QRegularExpressionMatch match = form.match(QString::fromStdString(text));
    bool wellFormed = match.hasMatch();
    for (int i = 1; i <= 4; ++i) {
        const quint32 octet = match.captured(i).toUInt();
        wellFormed = wellFormed && octet <= 255;
        given.number = given.number << 8 | octet;
    }
    if (!wellFormed)
        given.refuse(
            "is no IPv4 address: four numbers from 0 to 255 without leading zeros, joined by dots, are "
            "allowed, such as 192.168.1.20");
    return given;
}

void requireMask(const Given& mask)
{
    const quint32 hostBits = ~mask.number;
    if ((hostBits & (hostBits + 1)) != 0)
        mask.refuse(
            "is no subnet mask: only ones before zeros, in binary, are allowed, such as 255.255.255.0");
    if (mask.number == 0)
        mask.refuse("makes all addresses one subnet; 128.0.0.0 to 255.255.255.252 are allowed");
    if (mask.number > LongestMask)
        mask.refuse("leaves no room for a camera and a host in the subnet; 128.0.0.0 to 255.255.255.252 are "
                    "allowed");
}

/// Whether a host can have the address, in a subnet of this mask.
void requireHost(const Given& given, quint32 mask)
{
    const quint32 first = given.number >> 24;
    if (first == 0)
        given.refuse("begins with 0, which is no host's; 1 to 223 other than 127 are allowed there");
    if (first == 127)
        given.refuse(
            "is a loopback address, which no camera can have; 1 to 223 other than 127 are allowed as the "
            "first number");
    if (first >= 240)
        given.refuse(
            "is in the reserved range from 240.0.0.0; 1 to 223 other than 127 are allowed as the first "
            "number");
    if (first >= 224)
        given.refuse("is a multicast address; 1 to 223 other than 127 are allowed as the first number");

    const quint32 network = given.number & mask;
    const std::string allowed = "; " + dotted(network + 1).toStdString() + " to " +
                                dotted((network | ~mask) - 1).toStdString() + " are allowed";
    if (given.number == network)
        given.refuse("is the address of the subnet itself with mask " + dotted(mask).toStdString() + allowed);
    if (given.number == (network | ~mask))
        given.refuse("is the broadcast address of its subnet with mask " + dotted(mask).toStdString() +
                     allowed);
}

} // namespace

IpSettings parseIpSettings(const std::string& addressText, const std::string& maskText,
                           const std::string& gatewayText)
{
    const Given address = parse("--ip", addressText);
    const Given mask = parse("--mask", maskText);
    const Given gateway = parse("--gateway", gatewayText);

    requireMask(mask);
    requireHost(address, mask.number);
    if (gateway.number != 0) {
        if (((gateway.number ^ address.number) & mask.number) != 0)
            gateway.refuse("is not in the subnet of --ip " + addressText + " with --mask " + maskText +
                           "; an address of that subnet is allowed, or 0.0.0.0 for no gateway");
        requireHost(gateway, mask.number);
        if (gateway.number == address.number)
            gateway.refuse(
                "is the camera's own new address; another of its subnet is allowed, or 0.0.0.0 for no "
                "gateway");
    }
    return {address.number, mask.number, gateway.number};
}

QString dotted(quint32 address)
{
    return QHostAddress(address).toString();
}

std::string describe(const IpSettings& settings)
{
    const QString gateway =
        settings.gateway == 0 ? QStringLiteral("no gateway") : "gateway " + dotted(settings.gateway);
    return (dotted(settings.address) + ", mask " + dotted(settings.mask) + ", " + gateway).toStdString();
}

} // namespace cli
