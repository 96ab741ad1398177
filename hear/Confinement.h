// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the program limits itself to, for good. Each gives null, or what failed, with errno.
namespace hear {

/// The kernel drops whatever else comes to the packet socket than frames of this adapter itself, and of these
/// what cameras send to `port`; of port 0, arrivals: ARP and what DHCP clients send.
const char* hearOnly(int socket, int adapter, int port);

/// No privilege is left, and no system call but exit_group and those that relay: ppoll, recvfrom on the
/// socket, read on 0, write on 1. The kernel kills who makes another.
const char* confineTo(int socket);

} // namespace hear
