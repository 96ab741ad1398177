// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"
#include "sdk/ControlChannel.h"
#include "sdk/ExclusiveControl.h"
#include "sdk/TimeRequests.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace sdk {

/// A camera that is open: under exclusive control and kept so by a heartbeat, until it is closed or another
/// camera answers at its address. Any thread.
class Session
{
public:
    /// Has the function called time and again, until it returns false or until what is returned goes.
    using StartHeartbeat =
        std::function<std::shared_ptr<void>(std::chrono::milliseconds interval, std::function<bool()> beat)>;

    /// Takes control; throws CameraError when that fails or another camera answers, and then has given back
    /// what it had taken. `tries` is how often the first command is sent.
    Session(std::unique_ptr<Network> network, gvcp::Ipv4 camera, const gvcp::MacAddress& mac,
            int tries = ControlChannel::Tries, const StartHeartbeat& startHeartbeat = onThreadOfItsOwn);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { close(); }

    /// Its commands fail once the session is closed.
    ControlChannel& channel() { return m_channel; }
    /// Which of the camera's network interfaces, counted from 0, this one talks to.
    unsigned interface() const { return m_interface; }
    bool isOpen() const;

    /// Asks the camera who it is. Should it be another one, ends the session and throws CameraError.
    void requireSameCamera(int tries = ControlChannel::Tries);

    /// Gives control back, and the sockets and the thread. Who comes second waits until that is done.
    void close();

    /// Closes, and has the camera run its stored IP configuration again. Throws CameraError.
    void closeWithIpRestart();

private:
    static std::shared_ptr<void> onThreadOfItsOwn(std::chrono::milliseconds interval,
                                                  std::function<bool()> beat);
    bool isAlive();
    std::unique_ptr<Network> shutDown();

    const gvcp::MacAddress m_mac;
    mutable std::mutex m_mutex; ///< Held while the session is being closed; guards what is optional.
    ControlChannel m_channel;
    std::optional<ExclusiveControl> m_control;
    unsigned m_interface = 0;
    std::optional<TimeRequests> m_timeRequests;
    std::shared_ptr<void> m_heartbeat; ///< Ends before what it uses.
};

} // namespace sdk
