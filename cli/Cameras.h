// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <optional>
#include <string>

namespace cli {

struct IpSettings;

/// The cameras that answer now, as QDeviceManager lists them. Takes a little more than a second.
QVector<QDevice> findCameras();

/// The camera with that MAC address; null when it is not among them.
const QDevice* cameraByMac(const QVector<QDevice>& cameras, const QString& macAddress);

/// Looks for the camera until it reports these settings, `looks` times at most. Gives what it reported last,
/// no value when it was never heard.
std::optional<QDevice> awaitSettings(const QString& macAddress, const IpSettings& wanted, int looks);

bool reports(const QDevice& camera, const IpSettings& settings);

/// Whether its IP configuration is the persistent one, so that it keeps its address at a reset.
bool isStatic(const QDevice& camera);

/// "FC-2400M (00:1A:2B:3C:4D:5E)", fit for a terminal.
std::string describe(const QDevice& camera);

} // namespace cli
