// SPDX-License-Identifier: Apache-2.0
#include "cli/neighbours/Ping.h"

#include "cli/text/DisplayText.h"

#include <QThread>

namespace cli {
namespace {

// What it ends with.
constexpr int Answered = 0;
constexpr int Silence = 1;

} // namespace

Ping::Ping(const QString& adapter, const QString& address)
{
    // -n: a name server that does not answer must not hold up the one that does. With -w, -c counts answers.
    m_process.start(QStringLiteral("ping"), {"-n", "-I", adapter, "-c", "1", "-w", "6", address});
    m_process.waitForStarted();
}

Ping::~Ping()
{
    m_process.kill();
    m_process.waitForFinished(); // Else Qt complains of it to the user.
}

Ping::Outcome Ping::outcome() const
{
    if (m_process.state() != QProcess::NotRunning)
        return Outcome::Pending;
    if (hasNotRun())
        return Outcome::Failure;
    switch (m_process.exitCode()) {
    case Answered:
        return Outcome::Answered;
    case Silence:
        return Outcome::Silence;
    default:
        return Outcome::Failure;
    }
}

void Ping::wait(std::chrono::milliseconds patience)
{
    if (outcome() == Outcome::Pending)
        m_process.waitForFinished(static_cast<int>(patience.count()));
    else
        QThread::msleep(static_cast<unsigned long>(patience.count()));
}

std::string Ping::failure()
{
    if (hasNotRun())
        return "ping: " + displayText(m_process.errorString());
    const QString said = QString::fromLocal8Bit(m_process.readAllStandardError()).trimmed();
    return displayText(said.section(QLatin1Char('\n'), -1)); // Warnings come before it.
}

bool Ping::hasNotRun() const
{
    return m_process.error() == QProcess::FailedToStart || m_process.exitStatus() != QProcess::NormalExit;
}

} // namespace cli
