// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <algorithm>

/// A fuzzer's bytes, taken from the front as what a target needs next; all zeros once they are used up.
class Input
{
public:
    explicit Input(base::ByteView bytes) : m_rest(bytes) {}

    bool isAtEnd() const { return m_rest.empty(); }

    std::uint8_t byte()
    {
        const base::ByteView one = bytes(1);
        return one.empty() ? std::uint8_t{0} : one[0];
    }
    std::uint16_t u16()
    {
        const auto high = static_cast<unsigned>(byte() << 8);
        return static_cast<std::uint16_t>(high | byte());
    }
    std::uint32_t u32()
    {
        const auto high = static_cast<std::uint32_t>(u16()) << 16;
        return high | u16();
    }
    /// So many, or what is left.
    base::ByteView bytes(std::size_t count)
    {
        const auto taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.subspan(taken.size());
        return taken;
    }
    base::ByteView rest() { return bytes(m_rest.size()); }

    template <typename T, std::size_t Count>
    const T& oneOf(const T (&choices)[Count])
    {
        return choices[byte() % Count];
    }

private:
    base::ByteView m_rest;
};
