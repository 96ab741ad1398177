// SPDX-License-Identifier: Apache-2.0
#include "device/CameraSearch.h"

#include "sdk/RzCameraSdk.h"

#include <array>

SearchReport GetSearchReport()
{
    std::array<char, 4096> text{};
    SearchReport report;
    RZ_CC_GetEnumReport(&report.nUnlisted, text.data(), text.size());
    report.strNotSearched = QString::fromUtf8(text.data());
    return report;
}

void ExpectCamera(const QString& strMacAddress)
{
    const quint64 number = QString(strMacAddress).remove(QLatin1Char(':')).toULongLong(nullptr, 16);
    RZ_CC_ExpectDevice(static_cast<unsigned>(number >> 32), static_cast<unsigned>(number));
}
