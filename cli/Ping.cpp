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
    // -n: a name server that does not answer must not hold up the one that does.
    process.start(QStringLiteral("ping"), {"-n", "-c", "1", "-W", "1", QString::fromStdString(address)});
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
