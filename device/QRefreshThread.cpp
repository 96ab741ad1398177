// SPDX-License-Identifier: Apache-2.0
#include "device/QRefreshThread.h"

#include "device/QDeviceManager.h"

QRefreshThread::QRefreshThread() = default;

QRefreshThread::~QRefreshThread()
{
    m_pDeviceManager = nullptr;
    quit();
    terminate();
    // Qt ends the whole process when a QThread is destroyed before its thread is gone.
    wait();
}

void QRefreshThread::SetThreadInfo(QDeviceManager* pDeviceManager)
{
    m_pDeviceManager = pDeviceManager;
}

void QRefreshThread::run()
{
    QDeviceManager* const pDeviceManager = m_pDeviceManager;
    if (!pDeviceManager || m_bRunning)
        return;

    m_bRunning = true;
    pDeviceManager->EnumGigEDevices();
    ExitThread();
    emit SigEndThread();
}

void QRefreshThread::ExitThread()
{
    m_bRunning = false;
}
