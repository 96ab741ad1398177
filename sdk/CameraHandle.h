// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"
#include "sdk/Port.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/camera/Session.h"

#include <memory>
#include <mutex>
#include <thread>

namespace sdk {

/// What a caller's handle stands for: a camera as its record said when the handle was made, and the session
/// when it is open. Any thread.
class CameraHandle
{
public:
    explicit CameraHandle(const RZ_CC_DEVICE_INFO& info) : m_info(info) {}

    const RZ_CC_DEVICE_INFO& info() const { return m_info; }
    base::MacAddress mac() const;
    base::Ipv4 address() const;

    /// Stores the address that waits to be stored on the camera, too. Throws CameraError. The session belongs
    /// to the calling thread: it is to be closed when that ends.
    void open(std::unique_ptr<Network> network);
    /// The port stays where it is; its calls fail from now on.
    void close();
    bool isOpen() const;
    bool wasOpenedBy(std::thread::id thread) const;

    /// Throws CameraError when the camera is not open, or not any more.
    std::shared_ptr<Session> session() const;
    /// Null when the camera is not open. Valid until open() or the handle's end.
    GenApi::IPort* port() const;

private:
    const RZ_CC_DEVICE_INFO m_info;
    mutable std::mutex m_mutex; ///< Guards what follows.
    std::shared_ptr<Session> m_session;
    std::unique_ptr<Port> m_port;
    std::thread::id m_openedBy;
};

} // namespace sdk
