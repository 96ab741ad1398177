// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "base/MacAddress.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/discovery/Enumeration.h"

/// Between the records of the C interface, which have numbers, and what they stand for.
namespace sdk {

RZ_CC_DEVICE_INFO recordOf(const FoundCamera& camera, const Adapter& adapter);

base::MacAddress macOf(const RZ_CC_DEVICE_INFO& record);
/// That the camera had when it was heard.
base::IpSettings ipSettingsOf(const RZ_CC_DEVICE_INFO& record);
base::Ipv4 addressOf(const RZ_CC_DEVICE_INFO& record);

} // namespace sdk
