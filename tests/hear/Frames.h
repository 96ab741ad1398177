// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Bytes.h"

#include <string>
#include <vector>

/// Ethernet frames, to the listener's adapter 02:00:00:00:00:05 or to all, as they are on the cable.
namespace frames {

/// A camera's answer, from 10.0.0.9:3956 to 192.168.1.5:40000; so its ports are at 34 and 36.
extern const base::Bytes Answer;
/// A DHCP client's first bytes, from 0.0.0.0:68 to 255.255.255.255:67.
extern const base::Bytes Discover;
extern const base::Bytes ArpRequest;
extern const base::Bytes ArpReply; ///< To the listener's adapter alone.
extern const base::Bytes ArpProbe; ///< Is anybody 192.168.1.9?

struct Named
{
    std::string what;
    base::Bytes frame;
};

/// What is no camera's answer to port 40000 of the adapter's own, each by one property; none has an
/// answer's last bytes.
std::vector<Named> unlikeAnswers();

/// With other bytes at this place.
base::Bytes changed(base::Bytes frame, std::size_t at, const base::Bytes& bytes);
/// With the tag of a VLAN: `tag` is its id, and its priority in the upper four bits.
base::Bytes tagged(base::Bytes frame, std::uint16_t tag);

} // namespace frames
