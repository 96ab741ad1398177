// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"
#include "gvcp/Bytes.h"

#include <optional>
#include <string>

namespace gvcp {

/// What a camera says of itself in answer to DISCOVERY: the first 248 bytes of its register map.
struct DiscoveryAck
{
    std::uint16_t versionMajor = 0;
    std::uint16_t versionMinor = 0;
    MacAddress mac;
    std::uint32_t ipConfigOptions = 0; ///< IpConfig bits (gvcp/Registers.h) that the camera supports.
    std::uint32_t ipConfigCurrent = 0; ///< IpConfig bits in force.
    Ipv4 ip = 0;
    Ipv4 subnetMask = 0;
    Ipv4 gateway = 0;
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
std::optional<DiscoveryAck> parseDiscoveryAck(ByteView payload);

/// All 248 bytes; a text longer than its field is cut.
Bytes encodeDiscoveryAck(const DiscoveryAck& ack);

} // namespace gvcp
