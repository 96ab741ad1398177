// SPDX-License-Identifier: Apache-2.0
#include "gvcp/DiscoveryAck.h"

#include <algorithm>

namespace gvcp {

namespace {

constexpr std::size_t FullSize = 248;
constexpr std::size_t EndOfAddressFields = 72;

/// Where the fields lie, which is also where the bootstrap registers lie in the camera's memory.
namespace at {
constexpr std::size_t Version = 0;
constexpr std::size_t Mac = 10;
constexpr std::size_t IpConfigOptions = 16;
constexpr std::size_t IpConfigCurrent = 20;
constexpr std::size_t Ip = 36;
constexpr std::size_t SubnetMask = 52;
constexpr std::size_t Gateway = 68;
} // namespace at

struct TextField
{
    std::string DiscoveryAck::*member;
    std::size_t offset;
    std::size_t size;
};

constexpr TextField TextFields[] = {
    {&DiscoveryAck::manufacturerName, 72, 32}, {&DiscoveryAck::modelName, 104, 32},
    {&DiscoveryAck::deviceVersion, 136, 32},   {&DiscoveryAck::manufacturerInfo, 168, 48},
    {&DiscoveryAck::serialNumber, 216, 16},    {&DiscoveryAck::userDefinedName, 232, 16},
};

} // namespace

std::optional<DiscoveryAck> parseDiscoveryAck(ByteView payload)
{
    if (payload.size() < EndOfAddressFields)
        return std::nullopt;

    DiscoveryAck ack;
    ack.versionMajor = readU16(payload, at::Version);
    ack.versionMinor = readU16(payload, at::Version + 2);
    std::copy_n(payload.begin() + at::Mac, ack.mac.bytes.size(), ack.mac.bytes.begin());
    ack.ipConfigOptions = readU32(payload, at::IpConfigOptions);
    ack.ipConfigCurrent = readU32(payload, at::IpConfigCurrent);
    ack.ip = readU32(payload, at::Ip);
    ack.subnetMask = readU32(payload, at::SubnetMask);
    ack.gateway = readU32(payload, at::Gateway);
    for (const TextField& field : TextFields) {
        const std::size_t begin = std::min(field.offset, payload.size());
        const ByteView text = payload.subspan(begin, std::min(field.size, payload.size() - begin));
        (ack.*field.member).assign(text.begin(), std::find(text.begin(), text.end(), '\0'));
    }
    return ack;
}

Bytes encodeDiscoveryAck(const DiscoveryAck& ack)
{
    Bytes payload(FullSize);
    writeU16(payload, at::Version, ack.versionMajor);
    writeU16(payload, at::Version + 2, ack.versionMinor);
    std::copy(ack.mac.bytes.begin(), ack.mac.bytes.end(), payload.begin() + at::Mac);
    writeU32(payload, at::IpConfigOptions, ack.ipConfigOptions);
    writeU32(payload, at::IpConfigCurrent, ack.ipConfigCurrent);
    writeU32(payload, at::Ip, ack.ip);
    writeU32(payload, at::SubnetMask, ack.subnetMask);
    writeU32(payload, at::Gateway, ack.gateway);
    for (const TextField& field : TextFields) {
        const std::string& text = ack.*field.member;
        std::copy_n(text.begin(), std::min(text.size(), field.size),
                    payload.begin() + static_cast<std::ptrdiff_t>(field.offset));
    }
    return payload;
}

} // namespace gvcp
