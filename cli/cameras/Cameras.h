// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/cameras/Camera.h"
#include "cli/session/Failure.h"
#include "device/QDeviceManager.h"

#include <functional>
#include <memory>

namespace cli {

struct Session;

/// A camera, and those that answered with it.
struct FoundCamera
{
    Camera camera;
    std::vector<Camera> all;                 ///< That camera among them.
    std::unique_ptr<QDeviceManager> manager; ///< Lists the same.
};

/// The cameras that answer now, as QDeviceManager lists them. Takes a little more than a second.
std::vector<Camera> findCameras();

/// Looks for the camera of that MAC address, a few times, as answers get lost. Throws a Failure (no such
/// camera) that says which ones there are, and where nobody could be asked.
FoundCamera findCamera(const base::MacAddress& mac, const Session& session);

/// One that answered while another one was looked for.
struct AnsweringCamera
{
    base::MacAddress mac;
    std::string model; ///< Fit for a terminal.
    base::Ipv4 address;
};

/// That no camera has that MAC address, which ones there are, and where nobody could be asked.
Failure noSuchCamera(const base::MacAddress& mac, const std::string& notSearched,
                     const std::vector<AnsweringCamera>& others);

/// The camera as it answers in one search; no value when it does not.
std::optional<Camera> lookForCamera(const base::MacAddress& mac);

/// Looks for a camera that changes at once until it is as wanted: a few times, as answers get lost. Gives
/// what it reported last, no value when it was never heard.
std::optional<Camera> awaitChange(const base::MacAddress& mac,
                                  const std::function<bool(const Camera&)>& isAsWanted);

} // namespace cli
