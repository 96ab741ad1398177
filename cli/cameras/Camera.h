// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "base/MacAddress.h"
#include "device/QDevice.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// A camera as it answered, with the values of its texts.
struct Camera
{
    explicit Camera(const QDevice& answered);

    bool isStatic() const { return type == IpConfigType::Static; }

    QDevice device;
    base::MacAddress mac;
    base::IpSettings settings;
    std::optional<IpConfigType> type;
    std::optional<CameraStatus> status;
    base::Ipv4 adapter; ///< This computer's, which hears it.
};

/// The camera with that MAC address; null when it is not among them.
const Camera* cameraByMac(const std::vector<Camera>& cameras, const base::MacAddress& mac);

// In words that are fit for a terminal:

/// "FC-2400M (00:1A:2B:3C:4D:5E)"
std::string describe(const Camera& camera);

/// "192.168.1.20, mask 255.255.255.0, no gateway"
std::string describe(const base::IpSettings& settings);

/// "DHCP, 192.168.1.20, mask 255.255.255.0, no gateway"
std::string describeAddressing(const Camera& camera);

/// "its stored address is 192.168.1.20, mask 255.255.255.0, no gateway", or empty when the camera, which is
/// asked, does not tell.
std::string describeStored(const Camera& camera);

/// The same, or that it may be some of the old and some of the new.
std::string describeStoredOrDoubt(const Camera& camera);

/// The text with these cameras' models before their MAC addresses.
std::string withModels(const std::string& text, const std::vector<Camera>& cameras);

} // namespace cli
