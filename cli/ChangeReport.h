// SPDX-License-Identifier: Apache-2.0
#pragma once

class QDevice;

namespace cli {

struct Session;

/// Prints what a camera said before and after a change that is done. Throws a Failure that says both when
/// that cannot be written.
void reportChange(const QDevice& before, const QDevice& after, const Session& session);

} // namespace cli
