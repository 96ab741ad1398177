// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace base {

/// An IPv4 address, subnet mask or gateway; 0.0.0.0 where nothing else is said. Ordered as numbers
/// are: 10.0.0.9 before 10.0.0.10. No integer becomes one by itself, nor the other way round.
class Ipv4
{
public:
    constexpr Ipv4() = default;
    /// In host order: the first octet is the top byte.
    constexpr explicit Ipv4(std::uint32_t number) : m_number(number) {}

    /// Four decimal octets of one to three digits, 0 to 255 each, and nothing else; no other spelling is
    /// taken.
    static constexpr std::optional<Ipv4> parse(std::string_view text);

    constexpr std::uint32_t number() const { return m_number; }
    constexpr std::uint8_t firstOctet() const { return static_cast<std::uint8_t>(m_number >> 24); }
    /// 0.0.0.0, which stands for "none".
    constexpr bool isUnspecified() const { return m_number == 0; }
    /// Of the ranges that single hosts have: neither 0.x, nor loopback, nor multicast or above.
    constexpr bool canBeHost() const
    {
        return firstOctet() >= 1 && firstOctet() <= 223 && firstOctet() != 127;
    }
    /// 169.254.x.x.
    constexpr bool isLinkLocal() const { return m_number >> 16 == 0xA9FE; }
    /// "192.168.1.20".
    std::string toText() const;

    /// Ones, then zeros: 255.255.254.0 is a mask, 255.0.255.0 is none. 0.0.0.0 and 255.255.255.255 are masks
    /// too.
    constexpr bool isMask() const
    {
        const std::uint32_t hostBits = ~m_number;
        return (hostBits & (hostBits + 1)) == 0;
    }
    constexpr bool isInSubnetOf(Ipv4 other, Ipv4 mask) const { return (*this & mask) == (other & mask); }
    /// The first address of its subnet, and the last.
    constexpr Ipv4 networkAddress(Ipv4 mask) const { return *this & mask; }
    constexpr Ipv4 broadcastAddress(Ipv4 mask) const { return *this | ~mask; }
    /// The address that many further on, around the end of all addresses.
    constexpr Ipv4 plus(std::uint32_t count) const { return Ipv4(m_number + count); }

    constexpr auto operator<=>(const Ipv4&) const = default;
    friend constexpr Ipv4 operator&(Ipv4 a, Ipv4 b) { return Ipv4(a.m_number & b.m_number); }
    friend constexpr Ipv4 operator|(Ipv4 a, Ipv4 b) { return Ipv4(a.m_number | b.m_number); }
    friend constexpr Ipv4 operator~(Ipv4 a) { return Ipv4(~a.m_number); }

private:
    std::uint32_t m_number = 0;
};

/// As text.
std::ostream& operator<<(std::ostream& out, Ipv4 address);

constexpr std::optional<Ipv4> Ipv4::parse(std::string_view text)
{
    std::uint32_t number = 0;
    std::size_t at = 0;
    for (int octet = 0; octet < 4; ++octet) {
        if (octet > 0 && (at == text.size() || text[at++] != '.'))
            return std::nullopt;
        std::uint32_t value = 0;
        const std::size_t begin = at;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && at - begin < 3; ++at)
            value = value * 10 + static_cast<std::uint32_t>(text[at] - '0');
        if (at == begin || value > 255)
            return std::nullopt;
        number = number << 8 | value;
    }
    return at == text.size() ? std::optional(Ipv4(number)) : std::nullopt;
}

/// For `using namespace base::literals`.
inline namespace literals {
/// "192.168.1.20"_ip. What is no address does not compile.
consteval Ipv4 operator""_ip(const char* text, std::size_t length)
{
    const auto address = Ipv4::parse({text, length});
    if (!address)
        throw std::invalid_argument("no IPv4 address");
    return *address;
}
} // namespace literals

/// To all hosts of the network that a packet is sent on, whatever their subnets.
inline constexpr Ipv4 LimitedBroadcast = "255.255.255.255"_ip;

} // namespace base
