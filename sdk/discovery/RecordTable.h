// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sdk/RzCameraSdk.h"
#include "sdk/discovery/Enumeration.h"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

namespace sdk {

/// The records that the program holds pointers to: one for each camera and adapter, never moved, never given
/// to another camera, never freed. Thread-safe; a record itself is written word by word, and only where it
/// changes, because other threads may be reading it.
class RecordTable
{
public:
    /// The process's one table. It is never destroyed: callers use records up to the very end.
    static RecordTable& instance();

    /// From now on the camera comes first in every list.
    void expect(const base::MacAddress& mac);
    /// Whether it was listed before, or is expected.
    bool knows(const base::MacAddress& mac, unsigned adapterIndex) const;

    /// Brings the records up to date and lists them; gives the number of cameras for which there was no room.
    /// Should there be more than a list holds, cameras come before further sightings of the same camera; of
    /// those first the expected ones, then those that answered commands, those listed before, and those whose
    /// answer was at least consistent.
    unsigned publish(const std::vector<FoundCamera>& cameras, const std::vector<Adapter>& adapters,
                     Clock::time_point now, RZ_CC_DEVICE_INFO_LIST& list);

    /// The camera's record: a new one when it has none, else as it is, whatever is heard of the camera now.
    /// Null when the table has no room for it.
    RZ_CC_DEVICE_INFO* record(const FoundCamera& camera, const Adapter& adapter, Clock::time_point now);

    /// The record as the latest enumeration left it, while another may be running.
    RZ_CC_DEVICE_INFO copyOf(const RZ_CC_DEVICE_INFO& info) const;

    /// Whether the camera was accessible, if an enumeration has asked it at its present address just now.
    std::optional<bool> recentAccess(const RZ_CC_DEVICE_INFO& info, Clock::time_point now) const;

private:
    using Key = std::pair<base::MacAddress, unsigned>; ///< Camera and interface index.

    struct Entry
    {
        RZ_CC_DEVICE_INFO record{};
        std::optional<base::Ipv4> askedAt; ///< The address at which the camera was asked, if it was.
        bool isAccessible = false;
        Clock::time_point time{};
    };

    Entry* entryFor(const Key& key, const FoundCamera& camera);
    RZ_CC_DEVICE_INFO* update(const FoundCamera& camera, const Adapter& adapter, Clock::time_point now);

    mutable std::mutex m_mutex;     ///< Guards what follows.
    std::map<Key, Entry> m_entries; ///< A map's elements stay where they are.
    std::set<base::MacAddress> m_expected;
    std::set<Key> m_leftOut; ///< Of the latest list, because the table was nearly full.
};

} // namespace sdk
