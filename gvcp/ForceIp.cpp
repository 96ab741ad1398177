// SPDX-License-Identifier: Apache-2.0
#include "gvcp/ForceIp.h"

#include <algorithm>

namespace gvcp {

namespace {

constexpr std::size_t PayloadSize = 56;
constexpr std::size_t MacAt = 2;
constexpr std::size_t IpAt = 20;
constexpr std::size_t SubnetMaskAt = 36;
constexpr std::size_t GatewayAt = 52;

} // namespace

Bytes encodeForceIp(const ForceIp& command)
{
    Bytes payload(PayloadSize);
    std::copy(command.mac.bytes.begin(), command.mac.bytes.end(), payload.begin() + MacAt);
    writeU32(payload, IpAt, command.ip);
    writeU32(payload, SubnetMaskAt, command.subnetMask);
    writeU32(payload, GatewayAt, command.gateway);
    return payload;
}

std::optional<ForceIp> parseForceIp(ByteView payload)
{
    if (payload.size() < PayloadSize)
        return std::nullopt;
    ForceIp command;
    std::copy_n(payload.begin() + MacAt, command.mac.bytes.size(), command.mac.bytes.begin());
    command.ip = readU32(payload, IpAt);
    command.subnetMask = readU32(payload, SubnetMaskAt);
    command.gateway = readU32(payload, GatewayAt);
    return command;
}

} // namespace gvcp
