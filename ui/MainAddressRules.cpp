// SPDX-License-Identifier: Apache-2.0
#include "ui/MainAddressRules.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace {

constexpr int LoopbackNetwork = 127;
constexpr int LastUnicastNetwork = 223;

/// The first octet of a text that is four octets; nothing for any other text.
std::optional<int> firstOctet(const QString& strText)
{
    const QStringList parts = strText.split(QLatin1Char('.'));
    const auto isOctet = [](const QString& strPart) {
        return MainAddressRules::IsNumber(strPart) && !strPart.isEmpty() && strPart.toInt() <= 255;
    };
    if (parts.size() != 4 || !std::all_of(parts.begin(), parts.end(), isOctet))
        return std::nullopt;
    return parts.first().toInt();
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
    return IsGateway(strText) && firstOctet(strText) != 0;
}

bool MainAddressRules::IsSubnetMask(const QString& strText)
{
    return strText == QLatin1String("255.255.255.0") || strText == QLatin1String("255.255.0.0") ||
           strText == QLatin1String("255.0.0.0");
}

bool MainAddressRules::IsGateway(const QString& strText)
{
    const std::optional<int> nFirst = firstOctet(strText);
    return nFirst && *nFirst <= LastUnicastNetwork && *nFirst != LoopbackNetwork;
}
