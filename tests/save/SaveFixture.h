// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDeviceManager.h"
#include "save/QSaveThread.h"
#include "tests/device/QtFixture.h"
#include "tests/support/ScriptedProgram.h"
#include "tests/support/SdkDouble.h"

#include <QMutex>

#include <memory>
#include <string>
#include <vector>

/// A save worker between a double of the SDK and a program "ping" of the test's own, which at first answers
/// nothing. What it signals is noted in the worker's thread, in order.
class SaveFixture : public QtFixture
{
protected:
    SaveFixture()
    {
        ping.set("echo \"$@\" >> \"$(dirname \"$0\")/pings\"; exit 1");
        orderEndOf(*thread);
        const auto direct = Qt::DirectConnection;
        QObject::connect(
            thread.get(), &QSaveThread::SigShowMsg, thread.get(),
            [this](const QString& title, const QString& text) {
                note("ShowMsg(" + title.toStdString() + "|" + text.toStdString() + ")");
            },
            direct);
        QObject::connect(
            thread.get(), &QSaveThread::SigRefresh, thread.get(), [this] { noteWithHandles("Refresh"); },
            direct);
        QObject::connect(
            thread.get(), &QSaveThread::SigEndThread, thread.get(), [this] { noteWithHandles("End"); },
            direct);
    }

    void note(const std::string& event)
    {
        const QMutexLocker lock(&m_mutex);
        m_events.push_back(event);
    }

    /// "ShowMsg(title|text)", "Refresh(0)", "End(0)" with the number of handles at that moment, and whatever
    /// else was noted.
    std::vector<std::string> events() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_events;
    }

    void forgetEvents()
    {
        const QMutexLocker lock(&m_mutex);
        m_events.clear();
    }

    /// A camera as it would be found, with the SDK's record of it.
    QDevice found(const SdkDouble::Camera& camera = {}, const QString& type = "DHCP")
    {
        QDevice device;
        device.m_pDeviceInfo = sdk.record(camera);
        device.m_strMacAddress = QString::fromStdString(camera.mac);
        device.m_strIpAddress = QString::fromStdString(camera.ip);
        device.m_strSubnetMask = QString::fromStdString(camera.mask);
        device.m_strDefaultGateway = QString::fromStdString(camera.gateway);
        device.m_strUserDefinedName = QString::fromStdString(camera.userName);
        device.m_strIpConfigType = type;
        return device;
    }

    /// One save from start to end.
    void save(const QDevice& cur, const QDevice& modified)
    {
        thread->SetThreadInfo(manager, cur, modified);
        thread->start();
        ASSERT_TRUE(awaitEnd(*thread));
    }

    SdkDouble sdk;
    ScriptedProgram ping{"ping"};
    QDeviceManager* const manager = new QDeviceManager; ///< The thread's, from its first save on.
    std::unique_ptr<QSaveThread> thread = std::make_unique<QSaveThread>();

private:
    void noteWithHandles(const std::string& signal)
    {
        note(signal + "(" + std::to_string(sdk.livingHandles()) + ")");
    }

    mutable QMutex m_mutex;
    std::vector<std::string> m_events;
};
