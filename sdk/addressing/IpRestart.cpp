// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/IpRestart.h"

#include "gvcp/ForceIp.h"
#include "sdk/camera/Session.h"
#include "sdk/network/CameraError.h"
#include "sdk/network/RequestIds.h"

namespace sdk {

namespace {

using namespace std::chrono_literals;

constexpr int Tries = 3;
constexpr auto TimeOfOneTry = 250ms;

/// The camera's answer to that id; nothing when none comes in time.
std::optional<gvcp::Status> listen(Network& network, std::uint16_t id, base::Ipv4 before)
{
    const auto deadline = network.now() + TimeOfOneTry;
    while (network.now() < deadline) {
        const auto datagram = network.receive(deadline);
        if (!datagram)
            continue;
        const auto acknowledge = gvcp::parseAcknowledge(datagram->payload);
        if (!acknowledge || acknowledge->command != gvcp::Command::ForceIp || acknowledge->id != id)
            continue;
        // A camera that obeys may answer from any address; one that does not still has the old one. The next
        // try may find a busy one idle.
        const bool isRefusal = acknowledge->status != gvcp::Status::Busy && datagram->source == before;
        if (acknowledge->status == gvcp::Status::Success || isRefusal)
            return acknowledge->status;
    }
    return std::nullopt;
}

} // namespace

void restartIp(Network& network, const base::MacAddress& mac, base::Ipv4 before)
{
    const std::uint16_t id = RequestIds().next();
    const auto packet =
        gvcp::encodeCommand(gvcp::Command::ForceIp, gvcp::FlagAcknowledge | gvcp::FlagBroadcastAcknowledge,
                            id, gvcp::encodeForceIp({.mac = mac, .ip = {}}));
    for (int i = 0; i < Tries; ++i) {
        if (!network.broadcast(0, packet))
            throw CameraError(RZ_ERROR_NETWORK,
                              "restarting the address of " + mac.toText() + ": the host cannot send");
        const auto status = listen(network, id, before);
        if (status == gvcp::Status::Success)
            return;
        if (status)
            throw CameraError(*status, "restarting the address of " + mac.toText() + ": the camera refuses");
    }
}

void closeWithIpRestart(Session& session)
{
    const bool wasOpen = session.close(
        [&session](Network& network) { restartIp(network, session.mac(), session.channel().camera()); });
    if (!wasOpen)
        throw CameraError(RZ_ERROR_NOT_OPEN, "the camera is not open any more");
}

} // namespace sdk
