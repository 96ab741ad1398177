// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"
#include "sdk/camera/ControlChannel.h"
#include "sdk/camera/ExclusiveControl.h"

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
    Session(std::unique_ptr<Network> network, base::Ipv4 camera, const base::MacAddress& mac,
            int tries = ControlChannel::Tries, const StartHeartbeat& startHeartbeat = onThreadOfItsOwn);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Its commands fail once the session is closed.
    ControlChannel& channel() { return m_channel; }
    /// Which of the camera's network interfaces, counted from 0, this one talks to.
    unsigned interface() const { return m_interface; }
    bool isOpen() const;
    const base::MacAddress& mac() const { return m_mac; }

    /// Asks the camera who it is. Should it be another one, ends the session and throws CameraError.
    void requireSameCamera(int tries = ControlChannel::Tries);

    /// Ends the heartbeat, gives control back and closes the sockets, which `last` may use just before. False
    /// when the session is closed already: then nothing is done, but what another thread's close() is still
    /// about is waited for.
    bool close(const std::function<void(Network&)>& last = nullptr);

private:
    class TimeRequests;

    static std::shared_ptr<void> onThreadOfItsOwn(std::chrono::milliseconds interval,
                                                  std::function<bool()> beat);
    bool isAlive();

    const base::MacAddress m_mac;
    mutable std::mutex m_mutex; ///< Held while the session is being closed; guards what is optional.
    ControlChannel m_channel;
    std::optional<ExclusiveControl> m_control;
    unsigned m_interface = 0;
    std::unique_ptr<TimeRequests> m_timeRequests;
    std::shared_ptr<void> m_heartbeat; ///< Ends before what it uses.
};

} // namespace sdk
