// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/RzCameraSdk.h"
#include "site/Plan.h"

#include <optional>
#include <vector>

/// What the SDK is told to do to a task's camera, and what it tells of it. Pure functions.
namespace site {

/// The camera as it was seen last, for the SDK.
RZ_CC_DEVICE_INFO asHeard(const inventory::Camera& camera);
/// With what it was told to have since then.
void update(RZ_CC_DEVICE_INFO& camera, const RZ_CC_SETTINGS& now);

/// To what is planned.
RZ_CC_SETTINGS toChange(const Task& task);
/// To the detour, for now.
RZ_CC_SETTINGS toDetour(const Task& task);
/// To what was before those steps (RZ_STEP bits) were done.
RZ_CC_SETTINGS toReturn(const Task& task, unsigned steps);

/// What of it is not told is as in `before`; nothing when not even its address is told.
std::optional<Settings> settingsOf(const RZ_CC_SETTINGS& now, const Settings& before);

/// In their order, for RZ_STEP bits.
std::vector<Action> actionsOf(unsigned steps);

} // namespace site
