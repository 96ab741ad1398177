// SPDX-License-Identifier: Apache-2.0
#include "sdk/addressing/IpRestart.h"

#include "gvcp/ForceIp.h"
#include "sdk/camera/Session.h"
#include "sdk/network/CameraError.h"
#include "sdk/network/Exchange.h"

namespace sdk {

using namespace std::chrono_literals;

namespace {

std::string naming(const base::MacAddress& mac)
{
    return "restarting the address of " + mac.toText();
}

} // namespace

Exchange::Plan ipRestartPlan(Network& network, std::size_t adapter, const base::MacAddress& mac,
                             base::Ipv4 before)
{
    const auto send = [&network, adapter, mac](base::ByteView packet) {
        if (!network.broadcast(adapter, packet))
            throw CameraError(RZ_ERROR_NETWORK, naming(mac) + ": the host cannot send");
    };
    // The acknowledge names no camera. One that obeys may have another address already when it answers; one
    // that refuses still has the old one.
    const auto isBelieved = [before](const Datagram& datagram, const gvcp::AcknowledgePacket& acknowledge) {
        return acknowledge.status == gvcp::Status::Success || datagram.source == before;
    };
    return {.command = gvcp::Command::ForceIp,
            .flags = gvcp::FlagAcknowledge | gvcp::FlagBroadcastAcknowledge,
            .payload = gvcp::encodeForceIp({.mac = mac, .ip = {}}),
            .tries = 3,
            .wait = 250ms,
            .send = send,
            .isBelieved = isBelieved};
}

void requireRestarted(const Exchange& exchange, const base::MacAddress& mac)
{
    const auto& answer = exchange.answer();
    if (answer && answer->status != gvcp::Status::Success)
        throw CameraError(answer->status, naming(mac) + ": the camera refuses");
}

void restartIp(Network& network, const base::MacAddress& mac, base::Ipv4 before)
{
    RequestIds ids;
    Exchange exchange(network, ids, ipRestartPlan(network, 0, mac, before));
    exchange.run();
    requireRestarted(exchange, mac);
}

void closeWithIpRestart(Session& session)
{
    const bool wasOpen = session.close(
        [&session](Network& network) { restartIp(network, session.mac(), session.channel().camera()); });
    if (!wasOpen)
        throw CameraError(RZ_ERROR_NOT_OPEN, "the camera is not open any more");
}

} // namespace sdk
