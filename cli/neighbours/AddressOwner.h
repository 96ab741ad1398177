// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Ipv4.h"
#include "base/MacAddress.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace cli {

/// Who has an address, as far as it can be asked from here?
struct OwnerQuestion
{
    base::Ipv4 address;
    int adapterIndex = 0;                    ///< The adapter to ask on; 0 when it is gone.
    base::MacAddress camera;                 ///< The one that is to get it, and whose it may be already.
    std::set<base::MacAddress> otherCameras; ///< Those that are known to have other addresses now.
};

struct AddressOwner
{
    std::optional<base::MacAddress> mac; ///< When it is known.
    bool answersPing = false;
    /// Given when it does not answer now but had the address this long ago.
    std::optional<std::chrono::milliseconds> lastHeard;
};

struct OwnerAnswer
{
    std::optional<AddressOwner> owner;
    // Why one of the two ways could not be gone; empty when it was.
    std::string pingFailure;
    std::string arpFailure;
};

/// Asks for the owner, by ping and by way of the kernel's ARP. Returns as soon as it is known; after about
/// six seconds when there is none, and fifteen when the kernel remembers one.
OwnerAnswer findAddressOwner(const OwnerQuestion& question);

} // namespace cli
