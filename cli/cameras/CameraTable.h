// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/ListedCamera.h"

#include <string>

namespace cli {

struct Session;

/// The cameras as a table for people, a line each under a header; nothing for no camera. An exclamation mark
/// is on an address that somebody else has too, and on an adapter without one, with a line each below that
/// says more. `coloured` marks each status with a terminal's colour.
std::string cameraTable(const std::vector<ListedCamera>& cameras, bool coloured);

/// Prints what a camera said before and after a change that is done. Throws a Failure that says both when
/// that cannot be written.
void reportChange(const Camera& before, const Camera& after, const Session& session);

} // namespace cli
