// SPDX-License-Identifier: Apache-2.0
#include "sdk/network/RelayedPackets.h"

namespace sdk {

namespace {

constexpr std::size_t LengthSize = 2;

} // namespace

void RelayedPackets::add(base::ByteView bytes)
{
    m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(m_taken));
    m_taken = 0;
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

std::optional<base::ByteView> RelayedPackets::next()
{
    const base::ByteView rest = base::ByteView(m_bytes).subspan(m_taken);
    if (rest.size() < LengthSize)
        return std::nullopt;
    const std::size_t length = base::readU16(rest, 0);
    if (rest.size() < LengthSize + length)
        return std::nullopt;
    m_taken += LengthSize + length;
    return rest.subspan(LengthSize, length);
}

} // namespace sdk
