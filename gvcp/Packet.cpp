// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Packet.h"

#include <algorithm>

namespace gvcp {

namespace {

constexpr std::uint8_t Key = 0x42;

base::Bytes withPayload(base::ByteView payload)
{
    base::Bytes packet(HeaderSize + payload.size());
    std::copy(payload.begin(), payload.end(), packet.begin() + HeaderSize);
    return packet;
}

/// The payload that the header announces, when the datagram holds all of it.
std::optional<base::ByteView> announcedPayload(base::ByteView datagram)
{
    const std::size_t length = base::readU16(datagram, 4);
    if (datagram.size() < HeaderSize + length)
        return std::nullopt;
    return datagram.subspan(HeaderSize, length);
}

} // namespace

base::Bytes encodeCommand(Command command, std::uint8_t flags, std::uint16_t id, base::ByteView payload)
{
    base::Bytes packet = withPayload(payload);
    packet[0] = Key;
    packet[1] = flags;
    base::writeU16(packet, 2, static_cast<std::uint16_t>(command));
    base::writeU16(packet, 4, static_cast<std::uint16_t>(payload.size()));
    base::writeU16(packet, 6, id);
    return packet;
}

base::Bytes encodeAcknowledge(Command command, Status status, std::uint16_t id, base::ByteView payload)
{
    base::Bytes packet = withPayload(payload);
    base::writeU16(packet, 0, static_cast<std::uint16_t>(status));
    base::writeU16(packet, 2, static_cast<std::uint16_t>(static_cast<std::uint16_t>(command) + 1));
    base::writeU16(packet, 4, static_cast<std::uint16_t>(payload.size()));
    base::writeU16(packet, 6, id);
    return packet;
}

std::optional<CommandPacket> parseCommand(base::ByteView datagram)
{
    if (datagram.size() < HeaderSize || datagram[0] != Key)
        return std::nullopt;
    const auto payload = announcedPayload(datagram);
    if (!payload)
        return std::nullopt;
    return CommandPacket{datagram[1], Command{base::readU16(datagram, 2)}, base::readU16(datagram, 6),
                         *payload};
}

std::optional<AcknowledgePacket> parseAcknowledge(base::ByteView datagram)
{
    if (datagram.size() < HeaderSize)
        return std::nullopt;
    const auto payload = announcedPayload(datagram);
    const std::uint16_t code = base::readU16(datagram, 2);
    if (!payload || code % 2 == 0)
        return std::nullopt;
    return AcknowledgePacket{Status{base::readU16(datagram, 0)},
                             Command{static_cast<std::uint16_t>(code - 1)}, base::readU16(datagram, 6),
                             *payload};
}

} // namespace gvcp
