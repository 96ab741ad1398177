// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "sdk/RzCameraSdk.h"
#include "tests/network/Site.h"

#include <set>
#include <string>
#include <vector>

using namespace base::literals;

/// The SDK's calls as a program on the site's host makes them.

/// All records of one enumeration; the calling test fails when that reports an error.
std::vector<const RZ_CC_DEVICE_INFO*> enumerate(const Site& site);

/// The same by a program without CAP_NET_RAW.
std::vector<const RZ_CC_DEVICE_INFO*> enumerateUnprivileged(const Site& site);

/// What one look tells at its end, by the order in which it does.
std::vector<RZ_CC_SIGHTING> look(const Site& site);

std::string macText(const RZ_CC_DEVICE_INFO& info);
std::set<std::string> macTexts(const std::vector<const RZ_CC_DEVICE_INFO*>& records);

/// The record of that camera, by the adapter with that address when one is given; null when there is none.
const RZ_CC_DEVICE_INFO* recordOf(const std::vector<const RZ_CC_DEVICE_INFO*>& records,
                                  const std::string& mac, base::Ipv4 adapterAddress = {});

/// The address that the camera has, by the record.
base::Ipv4 addressIn(const RZ_CC_DEVICE_INFO& record);

int force(const Site& site, const RZ_CC_DEVICE_INFO& camera, base::Ipv4 address,
          base::Ipv4 mask = "255.255.255.0"_ip, base::Ipv4 gateway = {});
