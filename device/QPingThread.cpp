// SPDX-License-Identifier: Apache-2.0
#include "device/QPingThread.h"

#include "device/PingProcess.h"

namespace {

constexpr int FinishMilliseconds = 30000;

}

QPingThread::QPingThread() = default;

QPingThread::~QPingThread()
{
    // Qt ends the whole process when a QThread is destroyed before its thread is gone.
    wait();
}

void QPingThread::SetIPAddress(const QString& strIPAddress)
{
    m_strIPAddress = strIPAddress;
}

bool QPingThread::GetPingResult() const
{
    return m_bPingResult;
}

bool QPingThread::PingIPAddr(const QString& strIPAddress)
{
    const QString command = QStringLiteral("ping %1 -n 1").arg(strIPAddress);
    return PingAnswers(QStringLiteral("cmd"), {QStringLiteral("/c"), command}, FinishMilliseconds);
}

void QPingThread::run()
{
    if (m_bRunning)
        return;

    m_bRunning = true;
    const QString strIPAddress = m_strIPAddress;
    m_bPingResult = PingIPAddr(strIPAddress);
    ExitThread();
}

void QPingThread::ExitThread()
{
    m_bRunning = false;
    emit SigEndThread();
}
