// SPDX-License-Identifier: Apache-2.0
#include "base/Ipv4.h"

#include <ostream>

namespace base {

std::string Ipv4::toText() const
{
    const auto octet = [this](unsigned shift) { return std::to_string(m_number >> shift & 0xFF); };
    return octet(24) + '.' + octet(16) + '.' + octet(8) + '.' + octet(0);
}

std::ostream& operator<<(std::ostream& out, Ipv4 address)
{
    return out << address.toText();
}

} // namespace base
