// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <optional>

namespace sdk {

/// What the listener writes, taken apart again: packets, each behind its length in two bytes. The bytes may
/// come in pieces of any size.
class RelayedPackets
{
public:
    void add(base::ByteView bytes);

    /// The next packet that is whole; an empty one when the listener begins to listen. Valid until the next
    /// add().
    std::optional<base::ByteView> next();

private:
    base::Bytes m_bytes;
    std::size_t m_taken = 0; ///< Of m_bytes, by next().
};

} // namespace sdk
