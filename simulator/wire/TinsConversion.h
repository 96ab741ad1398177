// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <algorithm>
#include <tins/endianness.h>
#include <tins/hw_address.h>
#include <tins/ip_address.h>

/// Addresses in the packet library's own types.
namespace simulator {

inline base::MacAddress fromTins(const Tins::HWAddress<6>& mac)
{
    base::MacAddress result;
    std::copy(mac.begin(), mac.end(), result.bytes.begin());
    return result;
}

inline Tins::HWAddress<6> toTins(const base::MacAddress& mac)
{
    return mac.bytes.data();
}

inline base::Ipv4 fromTins(const Tins::IPv4Address& address)
{
    return base::Ipv4(Tins::Endian::be_to_host(static_cast<std::uint32_t>(address)));
}

inline Tins::IPv4Address toTins(base::Ipv4 address)
{
    return Tins::IPv4Address(Tins::Endian::host_to_be(address.number()));
}

} // namespace simulator
