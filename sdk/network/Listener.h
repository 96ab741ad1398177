// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/network/RelayedPackets.h"

#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>

namespace sdk {

/// The listener (hear/) at work on one adapter: a process of its own with the one privilege, that hears what
/// the kernel keeps from ordinary sockets, and passes on the frames that a camera sends to one UDP port; or
/// those in which a device tells of itself, by ARP or as a DHCP client.
///
/// One that is killed, or ends though it had listened, is started again, some times. Used by one thread at a
/// time.
class Listener
{
public:
    /// Starts it, and does not wait until it listens. Throws std::system_error when this computer has no room
    /// for it: no descriptor, no process, no memory.
    Listener(unsigned adapterIndex, std::uint16_t port) : Listener(adapterIndex, std::to_string(port)) {}
    struct Arrivals
    {};
    Listener(unsigned adapterIndex, Arrivals) : Listener(adapterIndex, "arrivals") {}
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    /// Ends it and waits until it is gone.
    ~Listener();

    /// Has it end, without waiting for that; then there is nothing more to hear.
    void end();

    /// Readable when read() has something to do; negative when it is over.
    int descriptor() const { return m_link.get(); }
    /// It has neither said that it listens nor ended.
    bool isStarting() const { return m_link && m_state == RZ_LISTENER_FAILED; }
    /// Failed as long as it has not said that it listens.
    RZ_LISTENER state() const { return m_state; }

    /// Takes what has come by now, and does not wait.
    void read();
    /// The next frame of what has been read, from its Ethernet header on. Valid until the next read().
    std::optional<base::ByteView> nextFrame();

private:
    Listener(unsigned adapterIndex, std::string what);
    void start();
    bool finish();
    void takeFirst();

    const unsigned m_adapterIndex;
    const std::string m_what;    ///< The program's second argument.
    base::FileDescriptor m_link; ///< The listener's standard input and output; it ends with the former.
    pid_t m_process = -1;
    int m_starts = 0;
    RZ_LISTENER m_state = RZ_LISTENER_FAILED;
    RelayedPackets m_packets;
};

} // namespace sdk
