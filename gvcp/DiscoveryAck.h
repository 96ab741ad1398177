// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "base/IpSettings.h"
#include "gvcp/Registers.h"

#include <optional>
#include <string>

namespace gvcp {

/// How much of a camera's register map, from its beginning on, answers DISCOVERY: 248 bytes.
inline constexpr std::size_t DiscoveryAckSize = reg::UserDefinedName.address + reg::UserDefinedName.size;

/// What a camera says of itself in there.
struct DiscoveryAck
{
    std::uint16_t versionMajor = 0;
    std::uint16_t versionMinor = 0;
    base::MacAddress mac;
    std::uint32_t ipConfigOptions = 0; ///< IpConfig bits (gvcp/Registers.h) that the camera supports.
    std::uint32_t ipConfigCurrent = 0; ///< IpConfig bits in force.
    base::IpSettings ip;               ///< In force.
    /// Texts end at their first NUL; their bytes are the camera's own, valid UTF-8 or not.
    std::string manufacturerName;
    std::string modelName;
    std::string deviceVersion;
    std::string manufacturerInfo;
    std::string serialNumber;
    std::string userDefinedName;

    bool operator==(const DiscoveryAck&) const = default;
};

/// Cameras exist that send fewer than the 248 bytes: what is missing is empty, as long as the address fields
/// are there. Nothing otherwise.
std::optional<DiscoveryAck> parseDiscoveryAck(base::ByteView payload);

/// All 248 bytes; a text longer than its field is cut.
base::Bytes encodeDiscoveryAck(const DiscoveryAck& ack);

} // namespace gvcp
