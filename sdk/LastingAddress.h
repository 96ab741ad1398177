// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "gvcp/ForceIp.h"
#include "sdk/ControlChannel.h"
#include "sdk/RzCameraSdk.h"

#include <map>
#include <mutex>

namespace sdk {

/// The addresses that were forced onto cameras, for when a camera is told later to start with a stored one.
/// Any thread.
class ForcedAddresses
{
public:
    /// The process's own.
    static ForcedAddresses& instance();

    void keep(const gvcp::ForceIp& addresses);
    void forget(const gvcp::MacAddress& mac);
    std::optional<gvcp::ForceIp> of(const gvcp::MacAddress& mac) const;

private:
    mutable std::mutex m_mutex;
    std::map<gvcp::MacAddress, gvcp::ForceIp> m_addresses;
};

/// Writes the camera's persistent address registers, those of them that hold something else. Under exclusive
/// control; throws CameraError.
void storeAddress(ControlChannel& channel, const gvcp::ForceIp& addresses);

/// What follows a successful FORCEIP. A camera that starts with a stored address gets these stored; for one
/// that could do so but does not they are kept; for one that never could, nothing is done.
/// `configuration` and `options` are what the camera said last (IpConfig bits), and decide when it cannot be
/// asked. RZ_ERROR_NOT_STORED when the addresses should have been stored and are not.
RZ_ERROR makeAddressLast(std::unique_ptr<Network> network, const gvcp::ForceIp& addresses,
                         std::uint32_t options, std::uint32_t configuration, ForcedAddresses& forced);

} // namespace sdk
