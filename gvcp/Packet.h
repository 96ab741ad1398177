// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <cstdint>
#include <optional>

/// The GigE Vision Control Protocol's packets: an 8-byte header and a payload, over UDP. Pure functions on
/// bytes; views point into the bytes they were parsed from.
namespace gvcp {

/// The UDP port a camera listens on, and answers from.
inline constexpr std::uint16_t DevicePort = 3956;
inline constexpr std::size_t HeaderSize = 8;
/// A READMEM of 536 bytes with its address: nothing longer is exchanged.
inline constexpr std::size_t MaxPayload = 540;

/// Command codes; each one's acknowledge code is one higher.
enum class Command : std::uint16_t
{
    Discovery = 0x0002,
    ForceIp = 0x0004,
    ReadRegister = 0x0080,
    WriteRegister = 0x0082,
    ReadMemory = 0x0084,
    WriteMemory = 0x0086,
};

enum class Status : std::uint16_t
{
    Success = 0x0000,
    NotImplemented = 0x8001,
    InvalidParameter = 0x8002,
    InvalidAddress = 0x8003,
    WriteProtect = 0x8004,
    BadAlignment = 0x8005,
    AccessDenied = 0x8006,
    Busy = 0x8007,
    Error = 0x8FFF,
};

inline constexpr std::uint8_t FlagAcknowledge = 0x01;
/// The camera may answer by broadcast when it cannot reach the asker; DISCOVERY and FORCEIP only.
inline constexpr std::uint8_t FlagBroadcastAcknowledge = 0x10;

struct CommandPacket
{
    std::uint8_t flags = 0;
    Command command{}; ///< As received: may be none of the enumerators.
    std::uint16_t id = 0;
    base::ByteView payload;
};

struct AcknowledgePacket
{
    Status status{};   ///< As received: an unknown 0x8xxx is an error of that camera's own.
    Command command{}; ///< The command it answers, that is the acknowledge code less one.
    std::uint16_t id = 0;
    base::ByteView payload;
};

base::Bytes encodeCommand(Command command, std::uint8_t flags, std::uint16_t id, base::ByteView payload = {});
base::Bytes encodeAcknowledge(Command command, Status status, std::uint16_t id, base::ByteView payload = {});

/// Nothing when the bytes are no GVCP command: too short, another key, or a length that the datagram does not
/// hold.
std::optional<CommandPacket> parseCommand(base::ByteView datagram);

/// Nothing when the bytes are no acknowledge: too short, a length that the datagram does not hold, an even
/// acknowledge code. Bytes after the payload are ignored (Ethernet's padding can get here).
std::optional<AcknowledgePacket> parseAcknowledge(base::ByteView datagram);

/// Ids run from 1 to 0xFFFF and start again at 1: 0 is not a legal request id.
inline std::uint16_t nextId(std::uint16_t id)
{
    return id == 0xFFFF ? std::uint16_t{1} : static_cast<std::uint16_t>(id + 1);
}

} // namespace gvcp
