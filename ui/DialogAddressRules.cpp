// SPDX-License-Identifier: Apache-2.0
#include "ui/DialogAddressRules.h"

#include "device/QDevice.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr int LoopbackNetwork = 127;
constexpr int FirstMulticastNetwork = 224;

/// The first of four octets; nothing for any other text.
std::optional<int> firstOctet(const QString& strText)
{
    const QStringList parts = strText.split(QLatin1Char('.'));
    const auto isOctet = [](const QString& strPart) {
        const int nValue = strPart.toInt();
        return nValue >= 0 && nValue <= 255;
    };
    if (parts.size() != 4 || parts.last().isEmpty() || !std::all_of(parts.begin(), parts.end(), isOctet))
        return std::nullopt;
    return parts.first().toInt();
}

std::array<int, 4> octets(quint32 nAddress)
{
    return {static_cast<int>(nAddress >> 24), static_cast<int>(nAddress >> 16 & 0xFF),
            static_cast<int>(nAddress >> 8 & 0xFF), static_cast<int>(nAddress & 0xFF)};
}

} // namespace

bool DialogAddressRules::IsCameraAddress(const QString& strText)
{
    return IsGateway(strText) && firstOctet(strText) != 0;
}

bool DialogAddressRules::IsSubnetMask(const QString& strText)
{
    return firstOctet(strText).has_value();
}

bool DialogAddressRules::IsGateway(const QString& strText)
{
    const std::optional<int> nFirst = firstOctet(strText);
    return nFirst && *nFirst < FirstMulticastNetwork && *nFirst != LoopbackNetwork;
}

QString DialogAddressRules::ValidRange(const _NETWORK_INFO& adapter)
{
    const quint32 nNetwork = adapter.nIpAddress & adapter.nSubnetMask;
    const auto first = octets(nNetwork);
    const auto last = octets(~adapter.nSubnetMask | nNetwork);
    return QString::asprintf("%d.%d.%d.%d~%d.%d.%d.%d", first[0], first[1], first[2], first[3], last[0],
                             last[1], last[2], last[3] - 2);
}
