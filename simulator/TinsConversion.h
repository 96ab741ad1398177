// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Addresses.h"

#include <algorithm>
#include <tins/endianness.h>
#include <tins/hw_address.h>
#include <tins/ip_address.h>

/// Addresses in the packet library's own types.
namespace simulator {

inline gvcp::MacAddress fromTins(const Tins::HWAddress<6>& mac)
{
    gvcp::MacAddress result;
    std::copy(mac.begin(), mac.end(), result.bytes.begin());
    return result;
}

inline Tins::HWAddress<6> toTins(const gvcp::MacAddress& mac)
{
    return mac.bytes.data();
}

inline gvcp::Ipv4 fromTins(const Tins::IPv4Address& address)
{
    return Tins::Endian::be_to_host(static_cast<std::uint32_t>(address));
}

inline Tins::IPv4Address toTins(gvcp::Ipv4 address)
{
    return Tins::IPv4Address(Tins::Endian::host_to_be(address));
}

} // namespace simulator
