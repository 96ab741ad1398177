// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <linux/filter.h>
#include <vector>

namespace sdk {

/// Has the kernel pass on, of all IPv4 packets, whole UDP datagrams from a camera's port to `localPort`.
std::vector<sock_filter> filterFor(std::uint16_t localPort);

} // namespace sdk
