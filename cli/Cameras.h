// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"

#include <functional>
#include <optional>
#include <string>

class QDeviceManager;

namespace cli {

struct IpSettings;
struct Session;

/// The cameras that answer now, as QDeviceManager lists them. Takes a little more than a second.
QVector<QDevice> findCameras();

/// The camera with that MAC address; null when it is not among them.
const QDevice* cameraByMac(const QVector<QDevice>& cameras, const QString& macAddress);

/// The cameras that answer now, that of the MAC address among them: looks for it a few times, as answers get
/// lost. The manager's list is theirs then. Throws a Failure (no such camera) that says which ones there are,
/// and where nobody could be asked.
QVector<QDevice> findCamerasWith(const QString& macAddress, QDeviceManager& manager, const Session& session);

/// Looks for a camera that changes at once until it is as wanted: a few times, as answers get lost. Gives
/// what it reported last, no value when it was never heard.
std::optional<QDevice> awaitChange(const QString& macAddress,
                                   const std::function<bool(const QDevice&)>& isAsWanted);

IpSettings settingsOf(const QDevice& camera);

bool reports(const QDevice& camera, const IpSettings& settings);

/// Whether its IP configuration is the persistent one, so that it keeps its address at a reset.
bool isStatic(const QDevice& camera);

/// "FC-2400M (00:1A:2B:3C:4D:5E)", fit for a terminal.
std::string describe(const QDevice& camera);

/// The text, which is fit for a terminal, with these cameras' models before their MAC addresses.
std::string withModels(const std::string& text, const QVector<QDevice>& cameras);

} // namespace cli
