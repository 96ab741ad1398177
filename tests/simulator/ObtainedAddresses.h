// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How simulated cameras obtain their addresses, and which they have then.
namespace simulator_tests {

/// Members of a camera's configuration. It obtains its address when the farm starts.
inline constexpr char Leased[] = R"("ipConfiguration": "dhcp")";
inline constexpr char LinkLocal[] = R"("ipConfiguration": "lla")";

/// For a DhcpServer.
inline constexpr char LeasedRange[] = "192.168.3.100,192.168.3.199,255.255.0.0";

/// Regular expressions.
inline constexpr char LeasedAddress[] = "192\\.168\\.3\\.1[0-9][0-9]";
inline constexpr char LinkLocalAddress[] = "169\\.254\\..*";

} // namespace simulator_tests
