// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <optional>
#include <string>

namespace cli {

struct SaveOutcome;
struct Session;
struct SetRequest;

/// What the camera reports other than asked; empty when nothing.
std::string differences(const QDevice& camera, const SetRequest& request);

/// Throws a Failure unless the camera reports, `after` the save, all that was asked, has it stored as far as
/// is known, and nothing went wrong on the way. `sent` is the camera as the worker got it, and the cameras
/// are those of then.
void requireDone(const QDevice& sent, const std::optional<QDevice>& after, const SetRequest& request,
                 const SaveOutcome& outcome, const QVector<QDevice>& cameras, const Session& session);

} // namespace cli
