// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Addresses and bits of the bootstrap registers that every GigE Vision camera has: 32 bits each, big-endian,
/// but for the texts. A camera's answer to DISCOVERY is its memory up to and with UserDefinedName.
namespace gvcp {

/// Where a text stands in a camera's memory; the bytes behind it are NULs.
struct TextRegister
{
    std::uint32_t address;
    std::uint32_t size; ///< Bytes.
};

namespace reg {
inline constexpr std::uint32_t Version = 0x0000; ///< Of the standard: the major number in the upper 16 bits.
inline constexpr std::uint32_t DeviceMode = 0x0004;
inline constexpr std::uint32_t MacHigh = 0x0008; ///< The first two bytes in the low 16 bits.
inline constexpr std::uint32_t MacLow = 0x000C;
inline constexpr std::uint32_t SupportedIpConfig = 0x0010;
inline constexpr std::uint32_t CurrentIpConfig = 0x0014;
inline constexpr std::uint32_t CurrentIp = 0x0024;
inline constexpr std::uint32_t CurrentSubnetMask = 0x0034;
inline constexpr std::uint32_t CurrentGateway = 0x0044;
inline constexpr TextRegister ManufacturerName{0x0048, 32};
inline constexpr TextRegister ModelName{0x0068, 32};
inline constexpr TextRegister DeviceVersion{0x0088, 32};
inline constexpr TextRegister ManufacturerInfo{0x00A8, 48};
inline constexpr TextRegister SerialNumber{0x00D8, 16};
inline constexpr TextRegister UserDefinedName{0x00E8, 16};
inline constexpr TextRegister FirstDescriptionUrl{0x0200, 512};
inline constexpr TextRegister SecondDescriptionUrl{0x0400, 512};
inline constexpr std::uint32_t InterfaceCount = 0x0600;
inline constexpr std::uint32_t PersistentIp = 0x064C;
inline constexpr std::uint32_t PersistentSubnetMask = 0x065C;
inline constexpr std::uint32_t PersistentGateway = 0x066C;
inline constexpr std::uint32_t LinkSpeed = 0x0670; ///< Mbit/s.
inline constexpr std::uint32_t MessageChannelCount = 0x0900;
inline constexpr std::uint32_t StreamChannelCount = 0x0904;
inline constexpr std::uint32_t GvcpCapability = 0x0934;
inline constexpr std::uint32_t HeartbeatTimeout = 0x0938;  ///< Milliseconds.
inline constexpr std::uint32_t DiscoveryAckDelay = 0x0950; ///< Milliseconds, at most 1000.
inline constexpr std::uint32_t GvcpConfiguration = 0x0954;
inline constexpr std::uint32_t ControlChannelPrivilege = 0x0A00;
inline constexpr std::uint32_t ApplicationPort = 0x0A04; ///< Of the application in control.
inline constexpr std::uint32_t ApplicationAddress = 0x0A14;
inline constexpr std::uint32_t StreamPort = 0x0D00; ///< Where the first stream's images go, likewise below.
inline constexpr std::uint32_t StreamPacketSize = 0x0D04; ///< Bytes in the low 16 bits; see StreamPacket.
inline constexpr std::uint32_t StreamAddress = 0x0D18;

/// The same register of a camera's network interface `number`, counted from 0, given that of the first one.
/// The first one's MAC, IP configuration and current addresses stand at the beginning of the map; those of
/// the others, like all stored addresses, in blocks of 0x80 bytes.
constexpr std::uint32_t ofInterface(unsigned number, std::uint32_t ofFirst)
{
    constexpr std::uint32_t BlockSize = 0x80;
    constexpr std::uint32_t SecondMac = 0x0680;
    if (number == 0)
        return ofFirst;
    return ofFirst < InterfaceCount ? ofFirst - MacHigh + SecondMac + BlockSize * (number - 1)
                                    : ofFirst + BlockSize * number;
}

/// The same register of a camera's stream `number`, counted from 0, given that of the first one.
constexpr std::uint32_t ofStream(unsigned number, std::uint32_t ofFirst)
{
    constexpr std::uint32_t BlockSize = 0x40;
    return ofFirst + BlockSize * number;
}
} // namespace reg

/// By the standard a camera has no more network interfaces.
inline constexpr unsigned MaxInterfaces = 4;

/// Bits of the two IP configuration registers and of the same fields of a discovery acknowledge.
namespace IpConfig {
inline constexpr std::uint32_t Persistent = 0x1;
inline constexpr std::uint32_t Dhcp = 0x2;
inline constexpr std::uint32_t LinkLocal = 0x4; ///< Always on by the standard.
} // namespace IpConfig

/// Values of the control channel privilege register.
namespace Privilege {
inline constexpr std::uint32_t Open = 0x0;
inline constexpr std::uint32_t Exclusive = 0x1; ///< Other applications may not even read.
inline constexpr std::uint32_t Control = 0x2;   ///< Other applications may read.
} // namespace Privilege

/// Bits of the GVCP capability register.
namespace Capability {
inline constexpr std::uint32_t Concatenation = 1u << 0;
inline constexpr std::uint32_t WriteMemory = 1u << 1;
inline constexpr std::uint32_t PendingAck = 1u << 5;
inline constexpr std::uint32_t ApplicationInControl = 1u << 27; ///< Its address and port can be read.
inline constexpr std::uint32_t LinkSpeed = 1u << 28;
inline constexpr std::uint32_t HeartbeatOff = 1u << 29; ///< The heartbeat can be switched off.
inline constexpr std::uint32_t SerialNumber = 1u << 30;
inline constexpr std::uint32_t UserDefinedName = 1u << 31;
} // namespace Capability

/// Bits of the GVCP configuration register.
namespace Configuration {
inline constexpr std::uint32_t HeartbeatOff = 1u << 0; ///< Silence does not end control.
inline constexpr std::uint32_t PendingAck = 1u << 1;   ///< The camera may ask for more time.
} // namespace Configuration

/// Bits of a stream's packet size register, above the size.
namespace StreamPacket {
inline constexpr std::uint32_t FireTest = 1u << 31; ///< Sends one packet of that size, and is 0 again.
} // namespace StreamPacket

} // namespace gvcp
