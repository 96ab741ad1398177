// SPDX-License-Identifier: Apache-2.0
#include "cli/Ping.h"

#include "cli/DisplayText.h"

#include <QProcess>

namespace cli {
namespace {

constexpr int PatienceMilliseconds = 10000;

}

PingResult ping(const std::string& address)
{
    QProcess process;
    process.start(QStringLiteral("ping"), {QStringLiteral("-c"), QStringLiteral("1"), QStringLiteral("-W"),
                                           QStringLiteral("1"), QString::fromStdString(address)});
    if (!process.waitForFinished(PatienceMilliseconds) || process.exitStatus() != QProcess::NormalExit)
        return {false, "ping: " + displayText(process.errorString())};

    switch (process.exitCode()) {
    case 0:
        return {true, {}};
    case 1:
        return {false, {}};
    default: // It could not send anything; its last words say why.
        return {false, displayText(QString::fromLocal8Bit(process.readAllStandardError()).trimmed())};
    }
}

} // namespace cli
