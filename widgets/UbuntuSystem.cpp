// SPDX-License-Identifier: Apache-2.0
#include "widgets/UbuntuSystem.h"

#include <QProcess>

bool IsUbuntuSystem()
{
    constexpr int WaitMilliseconds = 30000;
    QProcess process;
    process.start(QStringLiteral("uname"), {QStringLiteral("-a")}, QIODevice::ReadWrite);
    process.waitForStarted(WaitMilliseconds);
    process.waitForFinished(WaitMilliseconds);
    return QString::fromLocal8Bit(process.readAllStandardOutput()).contains(QLatin1String("Ubuntu"));
}
