// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QString>

#include <chrono>
#include <optional>
#include <string>

namespace cli {

/// Who has an address, as far as it can be asked from here?
struct OwnerQuestion
{
    quint32 address = 0;        ///< In host order.
    int adapterIndex = 0;       ///< The adapter to ask on; 0 when it is gone.
    QString camera;             ///< MAC of the camera that is to get it, and whose it may be already.
    QSet<QString> otherCameras; ///< MACs of those that are known to have other addresses now.
};

struct AddressOwner
{
    QString macAddress; ///< Empty when it is not known.
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
