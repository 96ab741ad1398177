// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/MacAddress.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/discovery/AccessCheck.h"
#include "sdk/discovery/RegisterSurvey.h"

namespace sdk {

/// Fills in what the camera with that MAC has told when it was asked whether it is accessible.
void addPrivilege(RZ_CC_SIGHTING& sighting, const AccessCheck& access, std::size_t adapter,
                  base::Ipv4 camera);

/// Fills in what it has told of its other registers; or that another camera did.
void addTold(RZ_CC_SIGHTING& sighting, const RegisterSurvey& survey, const base::MacAddress& mac);

} // namespace sdk
