// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"

#include <iosfwd>

namespace cli {

struct Camera;
struct FoundCamera;
struct Session;

/// Throws a Failure that says who has the address: another camera, this computer, a device that says so while
/// it is looked around, or whoever session.findOwner finds. An address that the camera has already is its
/// own. Where nobody can be asked, that is said on session.err and the address counts as unused. Takes some
/// seconds.
void requireUnusedAddress(const FoundCamera& found, base::Ipv4 address, const Session& session);

/// Whether a camera with that address would be in another subnet than the adapter that hears it.
bool isOutsideAdapterSubnet(const Camera& camera, base::Ipv4 address);

/// Says so, if it is.
void noteOutsideAdapterSubnet(const Camera& camera, base::Ipv4 address, std::ostream& err);

} // namespace cli
