// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"
#include "gvcp/Packet.h"

#include <chrono>
#include <optional>

namespace gvcp {

/// What a PENDING_ACK seems to answer: by its code it would be this command's, which does not exist.
inline constexpr Command PendingCommand{0x0088};

/// PENDING_ACK, sent ahead of the true acknowledge and with the id of the command that it is about: how much
/// longer than usual the camera will take. Nothing when the payload is too short.
std::optional<std::chrono::milliseconds> parsePendingAck(base::ByteView payload);

/// At most 65535 ms.
base::Bytes encodePendingAck(std::chrono::milliseconds time);

} // namespace gvcp
