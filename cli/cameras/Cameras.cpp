// SPDX-License-Identifier: Apache-2.0
#include "cli/cameras/Cameras.h"

#include "cli/cameras/ListenerHint.h"
#include "cli/session/Session.h"
#include "cli/text/DisplayText.h"
#include "device/CameraSearch.h"

#include <ostream>

namespace cli {
namespace {

constexpr int LooksForCamera = 3;
constexpr int LooksForChange = 5;

std::vector<AnsweringCamera> answering(const std::vector<Camera>& cameras)
{
    std::vector<AnsweringCamera> result;
    for (const Camera& camera : cameras)
        result.push_back({camera.mac, displayText(camera.device.m_strModelName), camera.settings.address});
    return result;
}

std::vector<Camera> findCameras(QDeviceManager& manager)
{
    manager.EnumGigEDevices();
    QVector<QDevice> devices;
    manager.GetAllDevices(devices);
    return {devices.begin(), devices.end()};
}

} // namespace

std::vector<Camera> findCameras()
{
    // A new manager each time: it looks at the adapters anew, and has no old list to fall back on.
    QDeviceManager manager;
    return findCameras(manager);
}

FoundCamera findCamera(const base::MacAddress& mac, const Session& session)
{
    if (session.interactive)
        session.err << "Looking for cameras ...\n" << std::flush;
    ExpectCamera(QString::fromStdString(mac.toText()));
    auto manager = std::make_unique<QDeviceManager>();
    std::vector<Camera> cameras;
    for (int i = 0; i < LooksForCamera; ++i) {
        cameras = findCameras(*manager);
        if (const Camera* const camera = cameraByMac(cameras, mac))
            return {*camera, cameras, std::move(manager)};
    }
    session.err << listenerHint(GetListenerReport());
    throw noSuchCamera(mac, GetSearchReport().strNotSearched.toStdString(), answering(cameras));
}

Failure noSuchCamera(const base::MacAddress& mac, const std::string& notSearched,
                     const std::vector<AnsweringCamera>& others)
{
    std::string text = notSearched.empty()
                           ? "no camera has the MAC address " + mac.toText()
                           : "no camera that answered has the MAC address " + mac.toText() +
                                 ", but not all networks were searched (" + displayText(notSearched) + ")";
    text += others.empty() ? "; no camera answered at all" : "; found:";
    for (const AnsweringCamera& camera : others)
        text += "\n    " + camera.mac.toText() + "  " + camera.model + "  " + camera.address.toText();
    return {ExitStatus::NoSuchCamera, text};
}

std::optional<Camera> lookForCamera(const base::MacAddress& mac)
{
    const std::vector<Camera> cameras = findCameras();
    const Camera* const camera = cameraByMac(cameras, mac);
    return camera ? std::optional(*camera) : std::nullopt;
}

std::optional<Camera> awaitChange(const base::MacAddress& mac,
                                  const std::function<bool(const Camera&)>& isAsWanted)
{
    std::optional<Camera> last;
    for (int i = 0; i < LooksForChange; ++i) {
        if (auto camera = lookForCamera(mac)) {
            last = std::move(camera);
            if (isAsWanted(*last))
                break;
        }
    }
    return last;
}

} // namespace cli
