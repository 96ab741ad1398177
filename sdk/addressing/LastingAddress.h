// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/IpSettings.h"
#include "sdk/camera/Session.h"

#include <map>
#include <mutex>

namespace sdk {

/// The addresses that were forced onto cameras, the latest of each. They are kept because a camera may be
/// told later to start with its stored address, which then has to be the forced one; some wait to be stored
/// as soon as their camera is open. Any thread.
class ForcedAddresses
{
public:
    /// The process's own.
    static ForcedAddresses& instance();

    /// The camera has just taken these.
    void keep(const base::MacAddress& mac, const base::IpSettings& addresses, Clock::time_point now);
    /// The camera cannot store any address: from now on of() gives nothing for it.
    void forget(const base::MacAddress& mac);
    /// Whether the camera starts with its stored address, so that the kept ones have to be stored next time.
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

/// What that network interface has stored. Throws CameraError.
base::IpSettings storedAddress(ControlChannel& channel, unsigned interface);

/// Has that network interface store these addresses; registers that hold them already are not written. The
/// camera is the right one, and under control. Throws CameraError.
void storeAddress(ControlChannel& channel, unsigned interface, const base::IpSettings& addresses);

/// Stores what waits to be stored on this camera, if anything. Throws CameraError, RZ_ERROR_NOT_STORED.
void storeWaitingAddress(Session& session, ForcedAddresses& forced);

/// To be called after a successful FORCEIP whose addresses are kept in `forced`. The camera is asked how it
/// starts:
/// - with its stored address: the forced one is stored now, or, should that fail, waits to be stored;
/// - otherwise, though it could store one: nothing more is done, the address stays kept;
/// - it cannot store any: the address is forgotten.
/// When it does not answer, `options` and `configuration` decide, its IpConfig bits as last heard.
void makeAddressLast(std::unique_ptr<Network> network, const base::MacAddress& mac,
                     const base::IpSettings& addresses, std::uint32_t options, std::uint32_t configuration,
                     ForcedAddresses& forced);

} // namespace sdk
