// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Unsigned big-endian numbers, and addresses, in byte sequences. Every number on the wire is in this order.
namespace base {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// The caller has checked that the 2, 4 or 6 bytes from `offset` on are there.
inline std::uint16_t readU16(ByteView bytes, std::size_t offset)
{
    return static_cast<std::uint16_t>(bytes[offset] << 8 | bytes[offset + 1]);
}

inline std::uint32_t readU32(ByteView bytes, std::size_t offset)
{
    return static_cast<std::uint32_t>(readU16(bytes, offset)) << 16 | readU16(bytes, offset + 2);
}

inline void writeU16(std::span<std::uint8_t> bytes, std::size_t offset, std::uint16_t value)
{
    bytes[offset] = static_cast<std::uint8_t>(value >> 8);
    bytes[offset + 1] = static_cast<std::uint8_t>(value);
}

inline void writeU32(std::span<std::uint8_t> bytes, std::size_t offset, std::uint32_t value)
{
    writeU16(bytes, offset, static_cast<std::uint16_t>(value >> 16));
    writeU16(bytes, offset + 2, static_cast<std::uint16_t>(value));
}

inline Ipv4 readIpv4(ByteView bytes, std::size_t offset)
{
    return Ipv4(readU32(bytes, offset));
}

inline void writeIpv4(std::span<std::uint8_t> bytes, std::size_t offset, Ipv4 address)
{
    writeU32(bytes, offset, address.number());
}

inline MacAddress readMac(ByteView bytes, std::size_t offset)
{
    MacAddress mac;
    std::ranges::copy(bytes.subspan(offset, mac.bytes.size()), mac.bytes.begin());
    return mac;
}

inline void writeMac(std::span<std::uint8_t> bytes, std::size_t offset, const MacAddress& mac)
{
    std::ranges::copy(mac.bytes, bytes.subspan(offset).begin());
}

} // namespace base
