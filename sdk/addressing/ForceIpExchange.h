// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/ForceIp.h"
#include "sdk/RzCameraSdk.h"
#include "sdk/network/Exchange.h"

namespace sdk {

/// Sends FORCEIPs to one camera. One packet at a time, since a camera that begins anew with each must not get
/// two. Some cameras ignore the limited broadcast, and some networks drop that of the subnet: where the
/// camera would hear both, they take turns.
class ForceIpSender
{
public:
    /// Out of that adapter of the network, to a camera that has the address `before`.
    ForceIpSender(Network& network, std::size_t adapter, base::Ipv4 before)
        : m_network(network),
          m_adapter(adapter),
          m_before(before)
    {}

    /// False when the host could not.
    bool send(base::ByteView packet);
    int sent() const { return m_sent; }

private:
    Network& m_network;
    std::size_t m_adapter;
    base::Ipv4 m_before;
    int m_sent = 0;
};

/// FORCEIP three times at most, all within the first second. The acknowledge names no camera: one that comes
/// from its old or its new address counts as its own.
Exchange::Plan forceIpPlan(const gvcp::ForceIp& wanted, base::Ipv4 before,
                           std::function<void(base::ByteView packet)> send);

/// Sends FORCEIP on the network's first adapter until the camera acknowledges it or is found at the new
/// address; what mask and gateway it makes of them is its own affair. `before` is what the camera had when it
/// was last heard.
///
/// FORCEIP goes out three times at most, all within the first second, because a camera may begin to change
/// its address anew with each, and leave the network for some seconds while it does. From then on the camera
/// is only looked for by DISCOVERY, until six seconds have passed since the first FORCEIP. If it answers from
/// where it was, a while after the last FORCEIP, and no application is known to control it, it has probably
/// missed all three; then the three are sent and the camera is looked for a second time.
///
/// A camera that is forced to the address that it has is found there whether it obeyed or not. When such a
/// camera acknowledges no FORCEIP, it is asked whether an application controls it, which would have made it
/// ignore FORCEIP: if none does, it counts as forced.
RZ_ERROR forceIp(Network& network, const gvcp::ForceIp& wanted, const base::IpSettings& before);

} // namespace sdk
