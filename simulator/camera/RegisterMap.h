// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "gvcp/Packet.h"
#include "simulator/camera/StoredSettings.h"
#include "simulator/config/CameraConfig.h"

#include <string>
#include <vector>

namespace simulator {

/// A camera's memory: its bootstrap registers as bytes, and which of them can be written. Knows nothing of
/// who asks.
class RegisterMap
{
public:
    /// As the factory left it.
    explicit RegisterMap(const CameraConfig& config);
    /// As it is after a reset: without an address, and with the settings that were stored before.
    RegisterMap(const CameraConfig& config, const StoredSettings& settings);

    /// As an application may: InvalidAddress for what does not exist, BadAlignment unless address and length
    /// are multiples of 4, AccessDenied for what may only be written. `out` is unspecified unless Success.
    gvcp::Status read(std::uint32_t address, std::span<std::uint8_t> out) const;
    /// As read; also WriteProtect. Writes all or nothing.
    gvcp::Status write(std::uint32_t address, base::ByteView data);

    /// For the camera itself, past write protection; the register must exist.
    std::uint32_t word(std::uint32_t address) const;
    void setWord(std::uint32_t address, std::uint32_t value);

    /// Of the interface that is on this network.
    base::IpSettings currentIp() const;
    void setCurrentIp(const base::IpSettings& ip);
    /// What outlives a reset.
    StoredSettings stored() const;
    /// Its part for the interface that is on this network.
    StoredIp storedIp() const { return storedIp(m_interface); }
    /// The application in control; all zero for none.
    void setController(std::uint32_t privilege, base::Ipv4 address, std::uint16_t port);
    /// Whether a reset has been asked for, by way of its register, since the last call.
    bool takeResetRequest();
    /// What a DISCOVERY acknowledge carries: the first 248 bytes, with what belongs to this network's
    /// interface in place of the first one's.
    base::Bytes discoveryBlock() const;

private:
    struct Region
    {
        std::uint32_t address;
        bool writable;
        base::Bytes bytes;

        bool holds(std::uint32_t at) const { return at >= address && at - address < bytes.size(); }
    };

    const Region* regionAt(std::uint32_t address) const;
    /// Four bytes; null where nothing is.
    const std::uint8_t* wordAt(std::uint32_t address) const;
    void layOut(const CameraConfig& config);
    void layOutInterface(unsigned number);
    bool hasStoredAddress(unsigned interface) const { return m_hasPersistentIp || interface != m_interface; }
    StoredIp storedIp(unsigned interface) const;
    void store(unsigned interface, const StoredIp& settings);
    /// What a register holds when an application has written this.
    std::uint32_t accepted(std::uint32_t address, std::uint32_t value) const;
    bool isWriteOnly(std::uint32_t address) const;
    void store(const StoredSettings& settings);
    std::uint32_t capabilities(const CameraConfig& config) const;
    void add(std::uint32_t address, std::size_t size, bool writable);
    void setText(std::uint32_t address, std::size_t size, const std::string& text);
    /// The bytes from this address to the end of its region.
    std::span<std::uint8_t> bytesAt(std::uint32_t address);

    std::vector<Region> m_regions;                    ///< Each of whole registers, none overlapping.
    std::shared_ptr<const base::Bytes> m_description; ///< Shared by cameras that have the same one.
    unsigned m_interface;
    unsigned m_interfaceCount;
    std::vector<CameraConfig::MakersRegister> m_makers;
    std::uint32_t m_resetRegister;
    std::uint32_t m_resetMask;
    bool m_isResetAsked = false;
    bool m_hasPersistentIp;
};

} // namespace simulator
