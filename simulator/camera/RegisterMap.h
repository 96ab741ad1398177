// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/camera/Memory.h"
#include "simulator/camera/StoredSettings.h"

#include <optional>
#include <vector>

namespace simulator {

/// A camera's bootstrap registers, and its maker's own: what stands in which one, and what a write of it
/// does. Knows nothing of who asks.
class RegisterMap
{
public:
    /// As the factory left it.
    explicit RegisterMap(const CameraConfig& config);
    /// As it is after a reset: without an address, and with the settings that were stored before.
    RegisterMap(const CameraConfig& config, const StoredSettings& settings);

    /// As an application may; see Memory.
    gvcp::Status read(std::uint32_t address, std::span<std::uint8_t> out) const
    {
        return m_memory.read(address, out);
    }
    /// Likewise. Writes all or nothing.
    gvcp::Status write(std::uint32_t address, base::ByteView data);

    /// The register must exist.
    std::uint32_t word(std::uint32_t address) const { return m_memory.word(address); }

    /// Of the interface that is on this network.
    base::IpSettings currentIp() const;
    void setCurrentIp(const base::IpSettings& ip);
    /// What outlives a reset.
    StoredSettings stored() const;
    /// Its part for the interface that is on this network.
    StoredIp storedIp() const { return storedIp(m_interface); }
    /// The application in control; all zero for none.
    void setController(std::uint32_t privilege, base::Ipv4 address, std::uint16_t port);
    /// No images go anywhere any more.
    void closeStreams();
    /// The first stream's images go there from now on; there must be one.
    void openStream(const Endpoint& destination);
    /// Where they go; nothing when they go nowhere.
    std::optional<Endpoint> stream() const;
    /// Whether a reset has been asked for, by way of its register, since the last call.
    bool takeResetRequest();
    /// What a DISCOVERY acknowledge carries: the first 248 bytes, with what belongs to this network's
    /// interface in place of the first one's.
    base::Bytes discoveryBlock() const;

private:
    /// Makes the registers, all of them 0.
    void layOut(const CameraConfig& config);
    void layOutInterface(unsigned number, bool tellsLinkSpeed);
    /// Fills in what the camera says of itself and of this interface. The first interface's is a DISCOVERY
    /// acknowledge as it stands; of the others' only the interface's own part has registers.
    void describe(const CameraConfig& config, const StoredSettings& settings, unsigned interface);
    std::uint32_t supportedIpConfig(unsigned interface) const;
    bool hasStoredAddress(unsigned interface) const { return m_hasPersistentIp || interface != m_interface; }
    StoredIp storedIp(unsigned interface) const;
    /// What a register holds when an application has written this.
    std::uint32_t accepted(std::uint32_t address, std::uint32_t value) const;

    Memory m_memory;
    unsigned m_interface;
    unsigned m_interfaceCount;
    unsigned m_streamCount;
    std::vector<std::uint32_t> m_makersRegisters; ///< Their addresses.
    std::uint32_t m_resetRegister;
    std::uint32_t m_resetMask;
    bool m_isResetAsked = false;
    bool m_hasPersistentIp;
};

} // namespace simulator
