// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/CameraSearch.h"

#include <string>

namespace cli {

/// Says that cameras outside the computer's subnets may be missing, why, and the command that changes it.
/// Empty when all are heard.
std::string listenerHint(const ListenerReport& report);

/// The part of a sentence that says so of one camera which is not heard again; empty likewise.
std::string listenerDoubt(const ListenerReport& report);

} // namespace cli
