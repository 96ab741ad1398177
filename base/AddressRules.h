// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"
#include "base/Sentence.h"

#include <optional>
#include <string>

/// What a user may ask for a camera to have. Each says what is wrong and what is allowed, or nothing.
namespace base {

/// What the user calls it: "--ip", "address".
struct GivenIpv4
{
    std::string name;
    Ipv4 address;
};

/// Four decimal numbers from 0 to 255 without signs, spaces or leading zeros, joined by dots.
std::optional<Sentence> whyNoIpv4(const std::string& name, const std::string& text);

/// A mask from 128.0.0.0 to 255.255.255.252, ones before zeros: a longer one has no room for two hosts.
std::optional<Sentence> whyNoMask(const GivenIpv4& mask);

/// An address that a host can have in general: neither 0.x, 127.x, multicast nor above.
std::optional<Sentence> whyNoHost(const GivenIpv4& given);

/// One of those, neither the first nor the last of its subnet.
std::optional<Sentence> whyNoHostOf(const GivenIpv4& given, Ipv4 mask);

/// A host's address in the same subnet, other than the address; or 0.0.0.0.
std::optional<Sentence> whyNoGateway(const GivenIpv4& gateway, const GivenIpv4& address,
                                     const GivenIpv4& mask);

/// Twelve hexadecimal digits, all pairs separated by colons, by dashes, or by nothing; neither all zeros nor
/// a group's.
std::optional<Sentence> whyNoCamera(const std::string& name, const std::string& text);

} // namespace base
