// SPDX-License-Identifier: Apache-2.0
#include "device/PingProcess.h"

#include <QProcess>

namespace {

constexpr int StartMilliseconds = 30000;

}

bool PingAnswers(const QString& program, const QStringList& arguments, int nFinishMilliseconds)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadWrite);
    process.waitForStarted(StartMilliseconds);
    if (!process.waitForFinished(nFinishMilliseconds)) {
        process.kill();
        process.waitForFinished(); // Else QProcess prints a warning when it is destroyed.
        return false;
    }
    if (process.exitStatus() == QProcess::CrashExit)
        return false;

    const QByteArray output = process.readAllStandardOutput();
    return QString::fromLocal8Bit(output.constData()).contains(QLatin1String("ms"));
}
