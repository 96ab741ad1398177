// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QThread>

#include <atomic>

class QDeviceManager;

/// Enumerates once for each start().
///
/// SigEndThread() comes once for each job that was begun, from the worker thread and after everything else of
/// the job. The thread itself is then still ending: a start() right away may find it running and do nothing,
/// so the owner wait()s first.
class QRefreshThread : public QThread
{
    Q_OBJECT

public:
    QRefreshThread();
    /// Cuts a running enumeration off; returns when the thread is gone.
    ~QRefreshThread() override;

    /// The manager is not owned. Called before start(); without a manager a job does nothing and emits
    /// nothing.
    void SetThreadInfo(QDeviceManager* pDeviceManager);

    /// The job; does nothing and emits nothing while one is in progress.
    void run() override;

    /// Declares the job ended, without a signal.
    void ExitThread();

signals:
    void SigEndThread();

private:
    /// Cleared on destruction, maybe in the middle of a job.
    std::atomic<QDeviceManager*> m_pDeviceManager = nullptr;
    bool m_bRunning = false; ///< Written on the worker thread; others may look after SigEndThread().
};
