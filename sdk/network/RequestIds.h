// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/Packet.h"

#include <random>

namespace sdk {

/// The request ids of one operation. They start anywhere, so that an answer to somebody else's request is
/// unlikely to carry one of them.
class RequestIds
{
public:
    std::uint16_t next() { return m_last = gvcp::nextId(m_last); }

private:
    std::uint16_t m_last = static_cast<std::uint16_t>(std::random_device{}());
};

} // namespace sdk
