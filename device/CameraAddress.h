// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"

#include <QString>

#include <optional>

class QDevice;

/// How a call below ended. Numbered as the SDK's error codes, all of which it may hold: those without a name
/// here say nothing to a user.
enum class AddressError
{
    None = 0,
    BadAddress = 2,  ///< The SDK takes no such address.
    Network = 3,     ///< The adapter that heard the camera cannot be used.
    NoAnswer = 4,    ///< The camera is not heard any more.
    InUse = 5,       ///< Another application controls the camera.
    Refused = 6,     ///< The camera answered with an error.
    NotStored = 9,   ///< The camera did not store the address.
    OtherCamera = 13 ///< Another camera answers at the camera's address; it was left as it is.
};

/// Forces the settings onto the camera, until its next reset; takes up to some seconds.
AddressError ForceAddress(const QDevice& device, const base::IpSettings& settings);

/// Whether the camera is to start with an address that was forced onto it and that it has not stored yet.
bool IsForcedAddressWaiting(const QDevice& device);

/// Has it stored, by opening and closing the camera.
AddressError StoreForcedAddress(const QDevice& device);

/// Asks the camera what it starts with; no value when it does not tell. Takes some seconds when it is silent.
std::optional<base::IpSettings> ReadStoredAddress(const QDevice& device);

/// Why the latest of the above, or of the save worker's accesses, failed: part of a sentence, to stand behind
/// the camera's name. Empty when it did not fail or there is no more to say.
QString GetCameraError(const QDevice& device);
