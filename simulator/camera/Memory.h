// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"
#include "simulator/config/CameraConfig.h"

#include <map>
#include <memory>

namespace simulator {

/// A camera's memory: which registers of 32 bits exist, what they hold, and whether an application may read
/// and write them. Knows nothing of what they mean.
class Memory
{
public:
    using Access = CameraConfig::MakersRegister::Access;

    /// Registers from the address on, so many bytes of them, that hold 0. One that is there already stays.
    void add(std::uint32_t address, std::size_t size, Access access);
    /// Registers that hold these bytes and can only be read. One such file for each memory; null for none.
    void addFile(std::uint32_t address, std::shared_ptr<const base::Bytes> file);

    /// As an application may: InvalidAddress for what does not exist, BadAlignment unless address and length
    /// are multiples of 4, AccessDenied for what may only be written. `out` is unspecified unless Success.
    gvcp::Status read(std::uint32_t address, std::span<std::uint8_t> out) const;
    /// Whether an application may write that many bytes: as read; WriteProtect for what may only be read.
    gvcp::Status mayWrite(std::uint32_t address, std::size_t size) const;

    /// For the camera itself, past write protection; the register must exist and not be the file's.
    std::uint32_t word(std::uint32_t address) const;
    void setWord(std::uint32_t address, std::uint32_t value);
    /// Whole registers, one after the other.
    void setBytes(std::uint32_t address, base::ByteView bytes);

private:
    struct Register
    {
        std::uint32_t value;
        Access access;
    };

    bool isInFile(std::uint32_t address) const;

    std::map<std::uint32_t, Register> m_registers;
    std::uint32_t m_fileAddress = 0;
    std::shared_ptr<const base::Bytes> m_file; ///< Shared by cameras that have the same one.
};

} // namespace simulator
