// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDeviceManager.h"
#include "save/QSaveThread.h"
#include "sdk/RzCameraSdk.h"
#include "tests/network/Site.h"

#include <functional>
#include <mutex>
#include <string>
#include <vector>

/// The saves of one camera with the real SDK: the worker, and what it has said so far.
class NetworkSave
{
public:
    /// On the site's host; the camera as the record says.
    NetworkSave(const Site& site, const RZ_CC_DEVICE_INFO& record);

    /// Takes over what the record says now; nothing is to change then, and nothing is said yet. Not while a
    /// save is running.
    void takeFound();

    QDevice wanted; ///< What is to change is changed here.
    /// Called in the worker for each message, as a blocking receiver.
    std::function<void()> atMessage = [] {};

    void wantType(const char* type) { wanted.m_strIpConfigType = type; }
    void wantAddress(const std::string& address) { wanted.m_strIpAddress = QString::fromStdString(address); }
    void wantName(const char* name) { wanted.m_strUserDefinedName = name; }
    void wantStatic(const std::string& address);

    /// Has the worker's list of cameras filled.
    void listCameras();
    /// As the window does it, whether a save is running or not.
    void start();
    void terminate() { m_worker.terminate(); }
    /// Waits for the end of what was started; false when it does not come in a generous time.
    bool awaitEnd();

    /// "Refresh", "End", and "title: text" of the messages, in their order.
    std::vector<std::string> said() const;

private:
    void say(const std::string& what);

    const Site& m_site;
    RZ_CC_DEVICE_INFO& m_record; ///< The SDK's.
    QDevice m_found;
    QDeviceManager* m_manager;  ///< The worker's from the start, which deletes it.
    mutable std::mutex m_mutex; ///< Guards m_said.
    std::vector<std::string> m_said;
    QSaveThread m_worker; ///< Ends before what it says things to.
};
