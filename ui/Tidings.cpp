// SPDX-License-Identifier: Apache-2.0
#include "ui/Tidings.h"

#include <algorithm>
#include <set>

using base::Sentence;

std::string NameOf(const QDevice& device)
{
    for (const QString& strName : {device.m_strUserDefinedName, device.m_strSerialNumber})
        if (!strName.isEmpty())
            return strName.toStdString();
    return device.m_strMacAddress.toStdString();
}

Sentence CountOf(const QVector<QDevice>& devices)
{
    std::set<quint32> adapters;
    for (const QDevice& device : devices)
        adapters.insert(device.m_nNetExport);
    const std::string count = std::to_string(devices.size());
    if (devices.isEmpty())
        return {TRANSLATABLE("Sentence", "No camera"), {}};
    if (devices.size() == 1)
        return {TRANSLATABLE("Sentence", "1 camera"), {}};
    if (adapters.size() == 1)
        return {TRANSLATABLE("Sentence", "%1 cameras on 1 adapter"), {count}};
    return {TRANSLATABLE("Sentence", "%1 cameras on %2 adapters"), {count, std::to_string(adapters.size())}};
}

std::vector<Sentence> OutcomeOf(const QDevice& before, const QDevice& asked, const QVector<QDevice>& listed)
{
    const auto found = std::find_if(listed.begin(), listed.end(), [&before](const QDevice& device) {
        return device.m_strMacAddress == before.m_strMacAddress;
    });
    if (found == listed.end())
        return {{TRANSLATABLE("Sentence", "%1 was not heard after the change"), {NameOf(asked)}}};

    std::vector<Sentence> outcome;
    const std::string name = NameOf(*found);
    const auto judge = [&](const QString& strBefore, const QString& strAsked, const QString& strNow,
                           const char* done, const char* refused) {
        if (strAsked != strBefore)
            outcome.push_back({strNow == strAsked ? done : refused, {name, strAsked.toStdString()}});
    };
    judge(before.m_strIpConfigType, asked.m_strIpConfigType, found->m_strIpConfigType,
          TRANSLATABLE("Sentence", "%1 is set to %2"), TRANSLATABLE("Sentence", "%1 is not set to %2"));
    judge(before.m_strIpAddress, asked.m_strIpAddress, found->m_strIpAddress,
          TRANSLATABLE("Sentence", "%1 has the address %2"),
          TRANSLATABLE("Sentence", "%1 has not taken the address %2"));
    judge(before.m_strSubnetMask, asked.m_strSubnetMask, found->m_strSubnetMask,
          TRANSLATABLE("Sentence", "%1 has the subnet mask %2"),
          TRANSLATABLE("Sentence", "%1 has not taken the subnet mask %2"));
    judge(before.m_strDefaultGateway, asked.m_strDefaultGateway, found->m_strDefaultGateway,
          TRANSLATABLE("Sentence", "%1 has the default gateway %2"),
          TRANSLATABLE("Sentence", "%1 has not taken the default gateway %2"));
    judge(before.m_strUserDefinedName, asked.m_strUserDefinedName, found->m_strUserDefinedName,
          TRANSLATABLE("Sentence", "%1 has its new name"),
          TRANSLATABLE("Sentence", "%1 has not taken the name %2"));
    if (outcome.empty())
        outcome.push_back({TRANSLATABLE("Sentence", "%1 is as it was"), {name}});
    return outcome;
}
