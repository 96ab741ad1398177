// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <string>

namespace cli {

/// The cameras as a table for people, a line each under a header; nothing for no camera. `coloured` marks
/// each status with a terminal's colour.
std::string deviceTable(const QVector<QDevice>& devices, bool coloured);

/// What a camera said before and after a change.
std::string changeTable(const QDevice& before, const QDevice& after, bool coloured);

} // namespace cli
