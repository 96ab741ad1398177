// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

class QDevice;

/// What a camera has stored to start with, in host order.
struct StoredAddress
{
    quint32 nIp = 0;
    quint32 nSubnetMask = 0;
    quint32 nGateway = 0;
};

/// Forces addresses (host order) onto the camera, until its next reset; takes up to some seconds. Empty when
/// done, else a sentence that says what failed and what may be done.
QString ForceAddress(const QDevice& device, quint32 nIp, quint32 nSubnetMask, quint32 nGateway);

/// Whether the camera is to start with an address that was forced onto it and that it has not stored yet.
bool IsForcedAddressWaiting(const QDevice& device);

/// Has it stored, by opening and closing the camera. Empty when done, else a sentence as of ForceAddress().
QString StoreForcedAddress(const QDevice& device);

/// Asks the camera; no value when it does not tell. Takes some seconds when it is silent.
std::optional<StoredAddress> ReadStoredAddress(const QDevice& device);

/// Why the latest of the above, or of the save worker's accesses, failed: part of a sentence, to stand behind
/// the camera's name. Empty when it did not fail or there is no more to say.
QString GetCameraError(const QDevice& device);
