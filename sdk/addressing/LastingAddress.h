// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "sdk/camera/Session.h"

#include <map>
#include <mutex>

namespace sdk {

/// The addresses that were forced onto cameras: some wait to be stored, all for when a camera is told later
/// to start with a stored one. Any thread.
class ForcedAddresses
{
public:
    /// The process's own.
    static ForcedAddresses& instance();

    /// The camera has just taken these.
    void keep(const base::MacAddress& mac, const base::IpSettings& addresses, Clock::time_point now);
    /// The camera stores no address.
    void forget(const base::MacAddress& mac);
    /// Whether the kept addresses ought to be stored now.
    void setWaiting(const base::MacAddress& mac, bool isWaiting);

    std::optional<base::IpSettings> of(const base::MacAddress& mac) const;
    bool isWaiting(const base::MacAddress& mac) const;
    /// So lately that the camera may still be changing.
    bool wasJustForced(const base::MacAddress& mac, Clock::time_point now) const;

private:
    struct Entry
    {
        base::IpSettings addresses;
        Clock::time_point time;
        bool isStorable = true;
        bool isWaiting = false;
    };

    mutable std::mutex m_mutex;
    std::map<base::MacAddress, Entry> m_entries;
};

/// Writes the stored address registers of that network interface, those of them that hold something else.
/// Under control of the right camera; throws CameraError.
void storeAddress(ControlChannel& channel, unsigned interface, const base::IpSettings& addresses);

/// Stores what waits to be stored on this camera, if anything. Throws CameraError, RZ_ERROR_NOT_STORED.
void storeWaitingAddress(Session& session, const base::MacAddress& mac, ForcedAddresses& forced);

/// What follows a successful FORCEIP, whose addresses are kept. A camera that starts with a stored address
/// gets these stored, or they wait; for one that could do so but does not nothing more is done; those of one
/// that never could are forgotten. `options` and `configuration` are what the camera said last (IpConfig
/// bits), and decide when it cannot be asked.
void makeAddressLast(std::unique_ptr<Network> network, const base::MacAddress& mac,
                     const base::IpSettings& addresses, std::uint32_t options, std::uint32_t configuration,
                     ForcedAddresses& forced);

} // namespace sdk
