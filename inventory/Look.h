// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "inventory/Inventory.h"

#include <chrono>
#include <functional>
#include <vector>

namespace inventory {

/// Looks at what there is on this computer's networks: asks every adapter for cameras, and every camera that
/// is in reach for its registers, all at once; changes nothing and takes control of nothing. Used by one
/// thread at a time; several may look side by side.
class Look
{
public:
    /// Opens the adapters' sockets and listeners. Throws std::system_error when nothing can be looked at.
    Look();
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;
    ~Look();

    struct Plan
    {
        /// How long it listens, should that be longer than cameras take: 1.2 seconds.
        std::chrono::milliseconds time{};
        /// Asks each camera in reach twenty times, to tell how many questions get lost.
        bool countsLosses = false;
        /// Told at once, on the calling thread, before the inventory is complete: a camera when it is known
        /// whether it is free (its conflicts are not known yet), and whoever speaks. None must throw.
        std::function<void(const Camera&)> onCamera = [](const Camera&) {};
        std::function<void(const Arrival&)> onArrival = [](const Arrival&) {};
        /// Asked many times a second, on that thread too: whether to end at once, with what there is. Must
        /// not throw.
        std::function<bool()> isOver = [] { return false; };
    };

    /// Once more. Throws std::system_error when nothing could be asked, though there are adapters.
    Inventory once(const Plan& plan);

    /// Those of this computer when this was made.
    const std::vector<Adapter>& adapters() const { return m_adapters; }

    /// Whether the computer has still the adapters, in the same state, as when this was made; else it is time
    /// for another one.
    bool isCurrent() const;

private:
    std::vector<Adapter> m_adapters;
    void* m_look = nullptr; ///< The SDK's.
};

} // namespace inventory
