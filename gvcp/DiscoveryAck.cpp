// SPDX-License-Identifier: Apache-2.0
#include "gvcp/DiscoveryAck.h"

#include <algorithm>

namespace gvcp {

namespace {

constexpr std::size_t EndOfAddressFields = reg::CurrentGateway + 4;
constexpr std::size_t MacAt = reg::MacHigh + 2;

struct TextField
{
    std::string DiscoveryAck::*member;
    TextRegister at;
};

constexpr TextField TextFields[] = {
    {&DiscoveryAck::manufacturerName, reg::ManufacturerName},
    {&DiscoveryAck::modelName, reg::ModelName},
    {&DiscoveryAck::deviceVersion, reg::DeviceVersion},
    {&DiscoveryAck::manufacturerInfo, reg::ManufacturerInfo},
    {&DiscoveryAck::serialNumber, reg::SerialNumber},
    {&DiscoveryAck::userDefinedName, reg::UserDefinedName},
};

} // namespace

std::optional<DiscoveryAck> parseDiscoveryAck(base::ByteView payload)
{
    if (payload.size() < EndOfAddressFields)
        return std::nullopt;

    DiscoveryAck ack;
    ack.versionMajor = base::readU16(payload, reg::Version);
    ack.versionMinor = base::readU16(payload, reg::Version + 2);
    ack.mac = base::readMac(payload, MacAt);
    ack.ipConfigOptions = base::readU32(payload, reg::SupportedIpConfig);
    ack.ipConfigCurrent = base::readU32(payload, reg::CurrentIpConfig);
    ack.ip = {base::readIpv4(payload, reg::CurrentIp), base::readIpv4(payload, reg::CurrentSubnetMask),
              base::readIpv4(payload, reg::CurrentGateway)};
    for (const auto& [member, at] : TextFields) {
        const std::size_t begin = std::min<std::size_t>(at.address, payload.size());
        const auto text = payload.subspan(begin, std::min<std::size_t>(at.size, payload.size() - begin));
        (ack.*member).assign(text.begin(), std::ranges::find(text, '\0'));
    }
    return ack;
}

base::Bytes encodeDiscoveryAck(const DiscoveryAck& ack)
{
    base::Bytes payload(DiscoveryAckSize);
    base::writeU16(payload, reg::Version, ack.versionMajor);
    base::writeU16(payload, reg::Version + 2, ack.versionMinor);
    base::writeMac(payload, MacAt, ack.mac);
    base::writeU32(payload, reg::SupportedIpConfig, ack.ipConfigOptions);
    base::writeU32(payload, reg::CurrentIpConfig, ack.ipConfigCurrent);
    base::writeIpv4(payload, reg::CurrentIp, ack.ip.address);
    base::writeIpv4(payload, reg::CurrentSubnetMask, ack.ip.mask);
    base::writeIpv4(payload, reg::CurrentGateway, ack.ip.gateway);
    for (const auto& [member, at] : TextFields) {
        const std::string& text = ack.*member;
        std::copy_n(text.begin(), std::min<std::size_t>(text.size(), at.size), payload.begin() + at.address);
    }
    return payload;
}

} // namespace gvcp
