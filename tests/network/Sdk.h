// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/RzCameraSdk.h"
#include "tests/network/Site.h"

#include <set>
#include <string>
#include <vector>

/// The SDK's calls as a program on the site's host makes them.

/// All records of one enumeration; the calling test fails when that reports an error.
std::vector<const RZ_CC_DEVICE_INFO*> enumerate(const Site& site);

/// The same by a program without CAP_NET_RAW.
std::vector<const RZ_CC_DEVICE_INFO*> enumerateUnprivileged(const Site& site);

std::string macText(const RZ_CC_DEVICE_INFO& info);
std::set<std::string> macTexts(const std::vector<const RZ_CC_DEVICE_INFO*>& records);

/// The record of that camera, by the adapter with that address when one is given; null when there is none.
const RZ_CC_DEVICE_INFO* recordOf(const std::vector<const RZ_CC_DEVICE_INFO*>& records,
                                  const std::string& mac, unsigned adapterAddress = 0);

int force(const Site& site, const RZ_CC_DEVICE_INFO& camera, unsigned ip, unsigned mask = 0xFFFFFF00,
          unsigned gateway = 0);
