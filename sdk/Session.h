// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"
#include "sdk/ControlChannel.h"
#include "sdk/ExclusiveControl.h"
#include "sdk/Heartbeat.h"

#include <memory>
#include <mutex>
#include <optional>

namespace sdk {

/// A camera that is open: under exclusive control and kept so by a heartbeat, until it is closed. Any thread.
class Session
{
public:
    /// Takes control; throws CameraError when that fails, and then has given back what it had taken.
    Session(std::unique_ptr<Network> network, gvcp::Ipv4 camera);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { close(); }

    /// Its commands fail with RZ_ERROR_NOT_OPEN once the session is closed.
    ControlChannel& channel() { return m_channel; }
    bool isOpen() const;

    /// Gives control back, and the sockets and the thread. Who comes second waits until that is done.
    void close();

    /// Closes, and has the camera run its stored IP configuration again. Throws CameraError.
    void closeWithIpRestart(const gvcp::MacAddress& mac);

private:
    std::unique_ptr<Network> shutDown();

    mutable std::mutex m_mutex; ///< Held while the session is being closed; guards m_control and m_heartbeat.
    ControlChannel m_channel;
    std::optional<ExclusiveControl> m_control;
    std::optional<Heartbeat> m_heartbeat; ///< Ends before what it uses.
};

} // namespace sdk
