// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/Frame.h"

#include <optional>
#include <tins/pdu.h>

namespace simulator {

/// What a captured frame is to the farm; nothing when it is none of its sorts.
std::optional<Frame> frameOf(const Tins::PDU& pdu);

/// The frame as it goes onto the wire, without Ethernet's padding.
base::Bytes bytesOf(const Frame& frame);

} // namespace simulator
