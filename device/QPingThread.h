// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QThread>

/// Pings one address once for each start().
///
/// SigEndThread() comes once for each job that was begun, from the worker thread; the result may be read from
/// then on. The thread itself is then still ending: a start() right away may find it running and do nothing,
/// so the owner wait()s first.
class QPingThread : public QThread
{
    Q_OBJECT

public:
    QPingThread();
    /// Waits for a running ping (at most a minute, see PingIPAddr).
    ~QPingThread() override;

    /// Dotted text; called before start().
    void SetIPAddress(const QString& strIPAddress);

    /// Whether the last ping was answered.
    bool GetPingResult() const;

    /// Runs one ping through the program "cmd", which takes it as a command line after "/c", and looks for
    /// "ms" in what it prints. False when the program cannot be started, crashes, or runs for more than 30 s.
    static bool PingIPAddr(const QString& strIPAddress);

    /// The job; does nothing and emits nothing while one is in progress.
    void run() override;

    /// Declares the job ended and says so: emits SigEndThread().
    void ExitThread();

signals:
    void SigEndThread();

private:
    // Written on the worker thread; others may look after SigEndThread().
    bool m_bRunning = false;
    QString m_strIPAddress;
    bool m_bPingResult = false;
};
