// SPDX-License-Identifier: Apache-2.0
#include "tests/save/NetworkSave.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <utility>

NetworkSave::NetworkSave(const Site& site, const RZ_CC_DEVICE_INFO& record)
    : m_site(site),
      m_record(const_cast<RZ_CC_DEVICE_INFO&>(record)),
      m_manager(new QDeviceManager)
{
    takeFound();
    m_worker.SetThreadInfo(m_manager, m_found, wanted);
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

void NetworkSave::takeFound()
{
    const lab::Visit visit(m_site.host());
    m_found = QDevice();
    m_found.InitDeviceInfo(&m_record);
    wanted = m_found;
    const std::lock_guard lock(m_mutex);
    m_said.clear();
}

void NetworkSave::wantStatic(const std::string& address)
{
    wantType("Static IP");
    wantAddress(address);
}

void NetworkSave::listCameras()
{
    const lab::Visit visit(m_site.host());
    m_manager->EnumGigEDevices();
}

void NetworkSave::start()
{
    // The worker's thread starts where this one is.
    const lab::Visit visit(m_site.host());
    m_worker.SetThreadInfo(m_manager, m_found, wanted);
    if (m_worker.isRunning())
        m_worker.terminate();
    m_worker.start();
}

bool NetworkSave::awaitEnd()
{
    // A save that was started while another one ran begins here.
    const lab::Visit visit(m_site.host());
    const QDeadlineTimer deadline(60000);
    do {
        while (!m_worker.wait(20)) {
            if (deadline.hasExpired())
                return false;
            QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
    } while (m_worker.isRunning());
    return true;
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
