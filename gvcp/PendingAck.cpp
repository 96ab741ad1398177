// SPDX-License-Identifier: Apache-2.0
#include "gvcp/PendingAck.h"

namespace gvcp {

namespace {

constexpr std::size_t PayloadSize = 4;
constexpr std::size_t TimeAt = 2;

} // namespace

std::optional<std::chrono::milliseconds> parsePendingAck(base::ByteView payload)
{
    if (payload.size() < PayloadSize)
        return std::nullopt;
    return std::chrono::milliseconds(base::readU16(payload, TimeAt));
}

base::Bytes encodePendingAck(std::chrono::milliseconds time)
{
    base::Bytes payload(PayloadSize);
    base::writeU16(payload, TimeAt, static_cast<std::uint16_t>(time.count()));
    return payload;
}

} // namespace gvcp
