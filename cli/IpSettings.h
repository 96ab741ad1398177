// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>

namespace cli {

/// Where a camera is in its network; numbers in host order.
struct IpSettings
{
    quint32 address = 0;
    quint32 mask = 0;
    quint32 gateway = 0; ///< 0: none.
};

/// Dotted texts as settings that a camera can have. Throws a Failure (wrong arguments) that names the option
/// (--ip, --mask or --gateway), what is wrong with its value and what is allowed:
/// - four decimal numbers from 0 to 255 without signs, spaces or leading zeros, joined by dots;
/// - a mask from 128.0.0.0 to 255.255.255.252, ones before zeros: a longer one has no room for two hosts;
/// - an address that a host can have, in general (neither 0.x, 127.x, multicast nor above) and in the subnet
///   (neither its first nor its last);
/// - a gateway of the same kind in the same subnet, other than the address; or 0.0.0.0.
IpSettings parseIpSettings(const std::string& address, const std::string& mask, const std::string& gateway);

QString dotted(quint32 address);

/// "192.168.1.20, mask 255.255.255.0, no gateway"
std::string describe(const IpSettings& settings);

} // namespace cli
