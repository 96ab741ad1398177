// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/network/CameraError.h"
#include "sdk/network/Network.h"
#include "sdk/network/RequestIds.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace sdk {

class CameraCommand;

/// The way to one camera's registers and memory: one command at a time, sent again with the same id while it
/// is unanswered. Any thread. Every command throws CameraError when it failed, with a sentence that names the
/// command, the address and the cause.
class ControlChannel
{
public:
    /// How often a command is sent, a fifth of a second each, before the camera counts as silent.
    static constexpr int Tries = 8;    ///< Gets through a megabyte on a network that loses a tenth each way.
    static constexpr int FewTries = 3; ///< For what must not take long and is not worth much.
    static constexpr int ManyTries =
        30; ///< For a camera that may just be changing its address, for 6 seconds.

    static constexpr std::size_t MaxBlock = 512; ///< Bytes; some cameras do not bear the 536 of the protocol.

    /// Commands go out on the network's first adapter.
    ControlChannel(std::unique_ptr<Network> network, base::Ipv4 camera);

    base::Ipv4 camera() const { return m_camera; }

    std::uint32_t readRegister(std::uint32_t address, int tries = Tries);
    /// Nothing when the camera answers with an error, for registers that a camera may not have.
    std::optional<std::uint32_t> findRegister(std::uint32_t address);
    void writeRegister(std::uint32_t address, std::uint32_t value, int tries = Tries);
    /// Address and size are multiples of 4, at most MaxBlock.
    void readMemory(std::uint32_t address, std::span<std::uint8_t> out, int tries = Tries);
    void writeMemory(std::uint32_t address, base::ByteView data);

    /// How often to try what only leaves the camera tidy: one that has just been silent is not waited for.
    int triesForFarewell() const;

    /// Ends the channel when a command under way is done: from then on each fails with RZ_ERROR_NOT_OPEN, or
    /// for the reason given. Gives the network back; null the second time.
    std::unique_ptr<Network> close(const std::optional<CameraError>& reason = std::nullopt);

    bool isOpen() const { return m_isOpen; }
    /// Throws what a command would throw after close().
    void requireOpen() const;

private:
    base::Bytes execute(const CameraCommand& command, int tries);

    const base::Ipv4 m_camera;
    mutable std::mutex m_mutex; ///< Held while a command is under way; guards what follows.
    std::unique_ptr<Network> m_network;
    CameraError m_closed{RZ_ERROR_NOT_OPEN, "the camera is not open any more"};
    RequestIds m_ids;
    std::atomic<bool> m_isOpen{true};
    std::atomic<bool> m_isSilent{false}; ///< To the latest command.
};

} // namespace sdk
