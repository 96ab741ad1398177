// SPDX-License-Identifier: Apache-2.0
#include "simulator/faults/FalseAnswers.h"

#include "gvcp/Packet.h"
#include "gvcp/Registers.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace simulator {

using namespace base::literals;

using base::Bytes;
using base::ByteView;

namespace {

namespace reg = gvcp::reg;

constexpr std::size_t MaxDatagram = 1472; // fills an Ethernet frame of the usual 1500 bytes

// Where the fields lie in a DISCOVERY acknowledge's packet: those of the header, and behind it the registers.
constexpr std::size_t LengthAt = 4;
constexpr std::size_t IdAt = 6;
constexpr std::size_t MacAt = gvcp::HeaderSize + reg::MacHigh + 2;
constexpr std::size_t AddressAt = gvcp::HeaderSize + reg::CurrentIp;
constexpr std::size_t MaskAt = gvcp::HeaderSize + reg::CurrentSubnetMask;

Bytes copyOf(ByteView bytes)
{
    return {bytes.begin(), bytes.end()};
}

Bytes bytesOf(std::string_view text)
{
    return {text.begin(), text.end()};
}

/// The text must be shorter than its register.
void setText(Bytes& packet, const gvcp::TextRegister& at, std::string_view text)
{
    const auto end = std::ranges::copy(text, packet.begin() + gvcp::HeaderSize + at.address).out;
    *end = 0;
}

Bytes garbage(std::size_t size, std::mt19937& random)
{
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

std::vector<Bytes> truncated(ByteView acknowledge, std::mt19937& random)
{
    std::vector<Bytes> packets{{}, copyOf(acknowledge.first(gvcp::HeaderSize))};
    for (int i = 0; i < 4; ++i)
        packets.push_back(copyOf(acknowledge.first(random() % acknowledge.size())));
    // Cut behind the address, with a header that says so: mask and gateway are missing.
    constexpr std::uint16_t Length = reg::CurrentIp + 4;
    Bytes consistent = copyOf(acknowledge.first(gvcp::HeaderSize + Length));
    base::writeU16(consistent, LengthAt, Length);
    packets.push_back(consistent);
    return packets;
}

std::vector<Bytes> oversized(ByteView acknowledge, std::mt19937& random)
{
    Bytes full = copyOf(acknowledge);
    const Bytes tail = garbage(MaxDatagram - acknowledge.size(), random);
    full.insert(full.end(), tail.begin(), tail.end());

    Bytes consistent = full;
    base::writeU16(consistent, LengthAt, static_cast<std::uint16_t>(MaxDatagram - gvcp::HeaderSize));
    Bytes beyondItself = copyOf(acknowledge);
    base::writeU16(beyondItself, LengthAt, 0xFFFF);
    Bytes beyondFrame = full;
    base::writeU16(beyondFrame, LengthAt, 0xFFF8);
    return {full, consistent, beyondItself, beyondFrame};
}

std::vector<Bytes> foreign(ByteView acknowledge)
{
    const std::uint16_t id = base::readU16(acknowledge, IdAt);
    const ByteView payload = acknowledge.subspan(gvcp::HeaderSize);
    return {
        gvcp::encodeAcknowledge(gvcp::Command::ForceIp, gvcp::Status::Success, id),
        gvcp::encodeAcknowledge(gvcp::Command::ReadRegister, gvcp::Status::Success, id, payload.first(4)),
        gvcp::encodeAcknowledge(gvcp::Command::ReadMemory, gvcp::Status::Success, id, payload),
        gvcp::encodeAcknowledge(gvcp::Command::Discovery, gvcp::Status::Error, id),
        gvcp::encodeCommand(gvcp::Command::Discovery, gvcp::FlagAcknowledge, id),
        bytesOf("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n"),
        bytesOf("NOTIFY * HTTP/1.1\r\nHOST: 239.255.255.250:1900\r\nNTS: ssdp:alive\r\n\r\n"),
        bytesOf(std::string_view("\x12\x34\x84\x00\x00\x00\x00\x01\x00\x00\x00\x00\x05local\x00", 19)),
    };
}

std::vector<Bytes> wrongIds(ByteView acknowledge)
{
    const std::uint16_t id = base::readU16(acknowledge, IdAt);
    Bytes packet = copyOf(acknowledge);
    // The same camera by its MAC, under another address and other names: whoever takes it for an answer shows
    // them.
    base::writeIpv4(packet, AddressAt, "198.51.100.1"_ip);
    setText(packet, reg::ModelName, "Wrong request id");
    setText(packet, reg::UserDefinedName, "wrong id");
    std::vector<Bytes> packets;
    for (const int other : {id - 1, id + 1, id ^ 0x8000, 0}) {
        base::writeU16(packet, IdAt, static_cast<std::uint16_t>(other));
        packets.push_back(packet);
    }
    return packets;
}

} // namespace

std::vector<Bytes> makeNoise(NoiseKind kind, ByteView acknowledge, std::mt19937& random)
{
    using Kind = NoiseKind;
    switch (kind) {
    case Kind::Truncated:
        return truncated(acknowledge, random);
    case Kind::Oversized:
        return oversized(acknowledge, random);
    case Kind::Foreign:
        return foreign(acknowledge);
    case Kind::Duplicate:
        return std::vector<Bytes>(3, copyOf(acknowledge));
    case Kind::Random:
        return {garbage(1 + random() % 16, random), garbage(1 + random() % 300, random),
                garbage(1 + random() % MaxDatagram, random)};
    case Kind::WrongId:
        return wrongIds(acknowledge);
    }
    return {};
}

Bytes forgeAnswer(ByteView acknowledge, std::uint32_t index)
{
    Bytes packet = copyOf(acknowledge);
    // A locally administered MAC that carries the genuine one's last byte, so that two forgers do not forge
    // the same.
    packet[MacAt] = 0x02;
    packet[MacAt + 1] = acknowledge[MacAt + 5];
    base::writeU32(packet, MacAt + 2, index);

    const base::Ipv4 mask = base::readIpv4(acknowledge, MaskAt);
    const base::Ipv4 address = base::readIpv4(acknowledge, AddressAt);
    base::writeIpv4(packet, AddressAt, (address & mask) | (address.plus(1 + index) & ~mask));
    setText(packet, reg::SerialNumber, "F" + std::to_string(index));
    setText(packet, reg::UserDefinedName, "");
    return packet;
}

} // namespace simulator
