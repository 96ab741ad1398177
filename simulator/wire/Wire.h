// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/wire/Frame.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace simulator {

/// An Ethernet interface, read and written past the kernel's own network stack. Throws std::runtime_error
/// when it cannot be opened, or is gone.
class Wire
{
public:
    explicit Wire(const std::string& interface);
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;
    ~Wire();

    /// Readable when frames are waiting.
    int fd() const;
    /// Within which time receive() is to be called although nothing is readable, if at all: while the
    /// interface is down, nothing else tells that it is gone or up again.
    std::optional<std::chrono::milliseconds> recheckTime() const;
    /// The next frame that was sent by others; nothing when none is waiting. Never blocks.
    std::optional<Frame> receive();
    /// A frame that the interface does not take is lost, as on any network.
    void send(const Frame& frame);

private:
    class Capture;
    std::unique_ptr<Capture> m_capture;
};

} // namespace simulator
