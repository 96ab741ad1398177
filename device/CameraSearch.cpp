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

ListenerReport GetListenerReport()
{
    static_assert(static_cast<int>(ListenerState::Hears) == RZ_LISTENER_HEARS);
    static_assert(static_cast<int>(ListenerState::Missing) == RZ_LISTENER_MISSING);
    static_assert(static_cast<int>(ListenerState::Forbidden) == RZ_LISTENER_FORBIDDEN);
    static_assert(static_cast<int>(ListenerState::Unprivileged) == RZ_LISTENER_UNPRIVILEGED);
    static_assert(static_cast<int>(ListenerState::Failed) == RZ_LISTENER_FAILED);
    std::array<char, 4096> path{};
    unsigned state = RZ_LISTENER_HEARS;
    RZ_CC_GetListener(&state, path.data(), path.size());
    return {static_cast<ListenerState>(state), QString::fromUtf8(path.data())};
}

void ExpectCamera(const QString& strMacAddress)
{
    const quint64 number = QString(strMacAddress).remove(QLatin1Char(':')).toULongLong(nullptr, 16);
    RZ_CC_ExpectDevice(static_cast<unsigned>(number >> 32), static_cast<unsigned>(number));
}
