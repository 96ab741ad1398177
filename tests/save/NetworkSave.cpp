// SPDX-License-Identifier: Apache-2.0
#include "tests/save/NetworkSave.h"

NetworkSave::NetworkSave(const RZ_CC_DEVICE_INFO& record) : m_manager(new QDeviceManager)
{
    m_found.InitDeviceInfo(const_cast<RZ_CC_DEVICE_INFO*>(&record));
    wanted = m_found;
    QObject::connect(
        &m_worker, &QSaveThread::SigShowMsg, &m_worker,
        [this](const QString& title, const QString& text) {
            say(title.toStdString() + ": " + text.toStdString());
            atMessage();
        },
        Qt::DirectConnection);
    QObject::connect(
        &m_worker, &QSaveThread::SigRefresh, &m_worker, [this] { say("Refresh"); }, Qt::DirectConnection);
    QObject::connect(
        &m_worker, &QSaveThread::SigEndThread, &m_worker, [this] { say("End"); }, Qt::DirectConnection);
}

void NetworkSave::wantStatic(const std::string& address)
{
    wanted.m_strIpConfigType = QStringLiteral("Static IP");
    wanted.m_strIpAddress = QString::fromStdString(address);
}

void NetworkSave::start(const Site& site)
{
    // The worker's thread starts where this one is.
    const lab::Visit visit(site.host());
    m_worker.SetThreadInfo(m_manager, m_found, wanted);
    m_worker.start();
}

bool NetworkSave::awaitEnd()
{
    return m_worker.wait(60000);
}

std::vector<std::string> NetworkSave::said() const
{
    const std::lock_guard lock(m_mutex);
    return m_said;
}

void NetworkSave::say(const std::string& what)
{
    const std::lock_guard lock(m_mutex);
    m_said.push_back(what);
}
