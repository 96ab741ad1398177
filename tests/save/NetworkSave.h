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

/// One save with the real SDK: the worker, and what it has said so far.
class NetworkSave
{
public:
    /// The camera as the record says; what is to change is changed in `wanted`.
    explicit NetworkSave(const RZ_CC_DEVICE_INFO& record);

    QDevice wanted;
    /// Called in the worker for each message, as a blocking receiver.
    std::function<void()> atMessage = [] {};

    /// Asks for that static address.
    void wantStatic(const std::string& address);
    /// Begins a save on the site's host.
    void start(const Site& site);
    /// Waits for its end; false when it does not come in a generous time.
    bool awaitEnd();
    QSaveThread& worker() { return m_worker; }

    /// "Refresh", "End", and "title: text" of the messages, in their order.
    std::vector<std::string> said() const;

private:
    void say(const std::string& what);

    QDevice m_found;
    QDeviceManager* m_manager;  ///< The worker's, which deletes it.
    mutable std::mutex m_mutex; ///< Guards m_said.
    std::vector<std::string> m_said;
    QSaveThread m_worker; ///< Ends before what it says things to.
};
