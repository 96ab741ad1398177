// SPDX-License-Identifier: Apache-2.0
#include "ui/AddressRules.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr int LoopbackNetwork = 127;
constexpr int FirstMulticastNetwork = 224;

/// The first octet of a text of four parts that all pass `isOctet`; nothing for any other text.
std::optional<int> firstOctet(const QString& strText, bool (*isOctet)(const QString&))
{
    const QStringList parts = strText.split(QLatin1Char('.'));
    if (parts.size() != 4 || parts.last().isEmpty() || !std::all_of(parts.begin(), parts.end(), isOctet))
        return std::nullopt;
    return parts.first().toInt();
}

bool isGateway(std::optional<int> nFirst)
{
    return nFirst && *nFirst < FirstMulticastNetwork && *nFirst != LoopbackNetwork;
}

bool isCameraAddress(std::optional<int> nFirst)
{
    return isGateway(nFirst) && *nFirst != 0;
}

std::optional<int> firstOctetOfMain(const QString& strText)
{
    return firstOctet(strText, [](const QString& strPart) {
        return MainAddressRules::IsNumber(strPart) && !strPart.isEmpty() && strPart.toInt() <= 255;
    });
}

std::optional<int> firstOctetOfDialog(const QString& strText)
{
    return firstOctet(strText, [](const QString& strPart) {
        const int nValue = strPart.toInt();
        return nValue >= 0 && nValue <= 255;
    });
}

std::array<int, 4> octets(quint32 nAddress)
{
    return {static_cast<int>(nAddress >> 24), static_cast<int>(nAddress >> 16 & 0xFF),
            static_cast<int>(nAddress >> 8 & 0xFF), static_cast<int>(nAddress & 0xFF)};
}

} // namespace

bool MainAddressRules::IsNumber(const QString& strText)
{
    // QChar::isDigit() would take the digits of every script.
    return std::all_of(strText.begin(), strText.end(), [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    });
}

bool MainAddressRules::IsCameraAddress(const QString& strText)
{
    return isCameraAddress(firstOctetOfMain(strText));
}

bool MainAddressRules::IsSubnetMask(const QString& strText)
{
    return strText == QLatin1String("255.255.255.0") || strText == QLatin1String("255.255.0.0") ||
           strText == QLatin1String("255.0.0.0");
}

bool MainAddressRules::IsGateway(const QString& strText)
{
    return isGateway(firstOctetOfMain(strText));
}

bool DialogAddressRules::IsCameraAddress(const QString& strText)
{
    return isCameraAddress(firstOctetOfDialog(strText));
}

bool DialogAddressRules::IsSubnetMask(const QString& strText)
{
    return firstOctetOfDialog(strText).has_value();
}

bool DialogAddressRules::IsGateway(const QString& strText)
{
    return isGateway(firstOctetOfDialog(strText));
}

QString DialogAddressRules::ValidRange(const _NETWORK_INFO& adapter)
{
    const quint32 nNetwork = adapter.nIpAddress & adapter.nSubnetMask;
    const auto first = octets(nNetwork);
    const auto last = octets(~adapter.nSubnetMask | nNetwork);
    return QString::asprintf("%d.%d.%d.%d~%d.%d.%d.%d", first[0], first[1], first[2], first[3], last[0],
                             last[1], last[2], last[3] - 2);
}
