// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/camera/ControlChannel.h"

namespace sdk {

/// A camera's address space as bytes: any address, any length. What is exactly a register is accessed as one,
/// all else in blocks of whole words; a write that covers a word in part reads that word first. Throws
/// CameraError; a write that fails half way leaves its beginning written. One thread at a time.
class CameraMemory
{
public:
    explicit CameraMemory(ControlChannel& channel) : m_channel(channel) {}

    void read(std::uint64_t address, std::span<std::uint8_t> out);
    void write(std::uint64_t address, base::ByteView data);

private:
    void writeWords(std::uint32_t address, base::ByteView data);
    bool writeBlock(std::uint32_t address, base::ByteView data);
    bool canWriteMemory();

    ControlChannel& m_channel;
    std::optional<bool> m_canWriteMemory; ///< Whether the camera has WRITEMEM; asked for once.
};

} // namespace sdk
