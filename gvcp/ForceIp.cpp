// SPDX-License-Identifier: Apache-2.0
#include "gvcp/ForceIp.h"

namespace gvcp {

namespace {

constexpr std::size_t PayloadSize = 56;
constexpr std::size_t MacAt = 2;
constexpr std::size_t IpAt = 20;
constexpr std::size_t SubnetMaskAt = 36;
constexpr std::size_t GatewayAt = 52;

} // namespace

base::Bytes encodeForceIp(const ForceIp& command)
{
    base::Bytes payload(PayloadSize);
    base::writeMac(payload, MacAt, command.mac);
    base::writeIpv4(payload, IpAt, command.ip.address);
    base::writeIpv4(payload, SubnetMaskAt, command.ip.mask);
    base::writeIpv4(payload, GatewayAt, command.ip.gateway);
    return payload;
}

std::optional<ForceIp> parseForceIp(base::ByteView payload)
{
    if (payload.size() < PayloadSize)
        return std::nullopt;
    return ForceIp{base::readMac(payload, MacAt),
                   {base::readIpv4(payload, IpAt), base::readIpv4(payload, SubnetMaskAt),
                    base::readIpv4(payload, GatewayAt)}};
}

} // namespace gvcp
