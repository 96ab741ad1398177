// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/camera/ControlChannel.h"

namespace sdk {

/// Fetches the camera's description file, byte for byte, from where its first URL says, else its second.
/// Throws CameraError: RZ_ERROR_DESCRIPTION when neither makes sense, RZ_ERROR_DESCRIPTION_ELSEWHERE when it
/// is not in the camera, RZ_ERROR_BUFFER when it is longer than RZ_MAX_DESCRIPTION, or what the channel
/// throws.
base::Bytes fetchDescription(ControlChannel& channel);

} // namespace sdk
