// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Holding.h"
#include "inventory/Inventory.h"
#include "inventory/UdpSockets.h"

#include <cstdint>
#include <string>
#include <vector>

namespace inventory {

/// A UDP socket and those who have it open.
struct OwnedSocket
{
    UdpSocket socket;
    std::string user;               ///< Who opened it.
    std::vector<Process> processes; ///< Empty when they may not be seen.
};

/// What this computer tells of the applications that may hold cameras.
struct LocalSockets
{
    std::vector<OwnedSocket> sockets; ///< Those of this process and of its helpers left out.
    // The kernel gives ports from here to there to whoever asks for no certain one.
    std::uint16_t firstGivenPort = 32768;
    std::uint16_t lastGivenPort = 60999;
    std::vector<Neighbour> neighbours;
};

/// Of the calling thread's network, as far as the user may see.
LocalSockets localSockets();

/// whoHolds() from these: for many cameras the computer is looked at once. A pure function.
Holding whoHolds(const Camera& camera, const std::vector<Adapter>& adapters, const LocalSockets& local);

} // namespace inventory
