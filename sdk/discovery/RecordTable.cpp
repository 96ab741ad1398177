// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/RecordTable.h"

#include "sdk/discovery/Record.h"

#include <algorithm>
#include <set>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// An hour of forged answers must not eat the host's memory: 16384 records take 5 MB. Beyond that, cameras
/// that are not known yet are left out.
constexpr std::size_t MaxRecords = 16384;
/// The last quarter is kept for cameras that are expected, have answered a command, or are heard a second
/// time, so that whoever forges ever new cameras leaves room for real ones.
constexpr std::size_t RecordsForAnyone = MaxRecords / 4 * 3;

/// The list is gone through right after it was made. What is older is asked again.
constexpr auto AccessStaysFresh = 5s;

/// What comes first when a list has not enough room.
enum class Rank
{
    Expected,
    ProvenAndListed,
    Proven,
    Listed,
    Consistent,
    Other,
    Repeated ///< A further sighting of a camera.
};

/// At most as many as a list holds, in their order; of several sightings of a camera the reachable one counts
/// as the first.
template <typename RankOf>
std::vector<const FoundCamera*> chooseForList(const std::vector<FoundCamera>& cameras, RankOf rankOf)
{
    std::set<base::MacAddress> seen;
    std::vector<std::pair<Rank, std::size_t>> ranked;
    for (const bool isReachable : {true, false}) {
        for (std::size_t i = 0; i < cameras.size(); ++i) {
            if (cameras[i].isReachable != isReachable)
                continue;
            const bool isFirst = seen.insert(cameras[i].identity.mac).second;
            ranked.emplace_back(isFirst ? rankOf(cameras[i]) : Rank::Repeated, i);
        }
    }
    std::sort(ranked.begin(), ranked.end());
    ranked.resize(std::min<std::size_t>(ranked.size(), RZ_MAX_DEVICES));
    std::sort(ranked.begin(), ranked.end(), [](auto& a, auto& b) { return a.second < b.second; });

    std::vector<const FoundCamera*> chosen;
    for (const auto& [rank, index] : ranked)
        chosen.push_back(&cameras[index]);
    return chosen;
}

/// Callers read and change records word by word too, with atomic loads and stores where they do so beside an
/// enumeration.
using Word [[gnu::may_alias]] = std::uint32_t;
constexpr std::size_t RecordWords = sizeof(RZ_CC_DEVICE_INFO) / sizeof(Word);
static_assert(sizeof(RZ_CC_DEVICE_INFO) % sizeof(Word) == 0 && alignof(RZ_CC_DEVICE_INFO) == alignof(Word));

void updateRecord(RZ_CC_DEVICE_INFO& record, const RZ_CC_DEVICE_INFO& fresh)
{
    auto* to = reinterpret_cast<Word*>(&record);
    const auto* from = reinterpret_cast<const Word*>(&fresh);
    for (std::size_t i = 0; i < RecordWords; ++i)
        if (__atomic_load_n(to + i, __ATOMIC_RELAXED) != from[i])
            __atomic_store_n(to + i, from[i], __ATOMIC_RELAXED);
}

} // namespace

RecordTable& RecordTable::instance()
{
    static RecordTable* const table = new RecordTable;
    return *table;
}

void RecordTable::expect(const base::MacAddress& mac)
{
    const std::lock_guard lock(m_mutex);
    m_expected.insert(mac);
}

bool RecordTable::knows(const base::MacAddress& mac, unsigned adapterIndex) const
{
    const std::lock_guard lock(m_mutex);
    return m_entries.count({mac, adapterIndex}) > 0 || m_expected.count(mac) > 0;
}

/// The camera's entry, a new one if there is room for it; else null.
RecordTable::Entry* RecordTable::entryFor(const Key& key, const FoundCamera& camera)
{
    const auto found = m_entries.find(key);
    if (found != m_entries.end())
        return &found->second;
    const bool isPreferred = m_expected.count(key.first) > 0 || camera.isProven || m_leftOut.count(key) > 0;
    if (m_entries.size() >= (isPreferred ? MaxRecords : RecordsForAnyone))
        return nullptr;
    return &m_entries[key];
}

unsigned RecordTable::publish(const std::vector<FoundCamera>& cameras, const std::vector<Adapter>& adapters,
                              Clock::time_point now, RZ_CC_DEVICE_INFO_LIST& list)
{
    const std::lock_guard lock(m_mutex);

    const auto keyOf = [&adapters](const FoundCamera& camera) {
        return Key{camera.identity.mac, adapters[camera.adapter].index};
    };
    const auto rankOf = [&](const FoundCamera& camera) {
        if (m_expected.count(camera.identity.mac) > 0)
            return Rank::Expected;
        const bool isListed = camera.isConsistent && m_entries.count(keyOf(camera)) > 0;
        if (camera.isProven)
            return isListed ? Rank::ProvenAndListed : Rank::Proven;
        return isListed ? Rank::Listed : camera.isConsistent ? Rank::Consistent : Rank::Other;
    };
    std::set<base::MacAddress> unlisted;
    for (const FoundCamera& camera : cameras)
        unlisted.insert(camera.identity.mac);
    std::set<Key> leftOut;
    list.nDeviceCount = 0;
    for (const FoundCamera* camera : chooseForList(cameras, rankOf)) {
        const Key key = keyOf(*camera);
        RZ_CC_DEVICE_INFO* const record = update(*camera, adapters[camera->adapter], now);
        if (!record) {
            leftOut.insert(key);
            continue;
        }
        list.apDeviceInfo[list.nDeviceCount++] = record;
        unlisted.erase(camera->identity.mac);
    }
    m_leftOut = std::move(leftOut);
    return static_cast<unsigned>(unlisted.size());
}

RZ_CC_DEVICE_INFO* RecordTable::update(const FoundCamera& camera, const Adapter& adapter,
                                       Clock::time_point now)
{
    Entry* const entry = entryFor({camera.identity.mac, adapter.index}, camera);
    if (!entry)
        return nullptr;
    updateRecord(entry->record, recordOf(camera, adapter));
    entry->askedAt = camera.isReachable ? std::optional(camera.identity.ip.address) : std::nullopt;
    entry->isAccessible = camera.isAccessible;
    entry->time = now;
    return &entry->record;
}

RZ_CC_DEVICE_INFO* RecordTable::record(const FoundCamera& camera, const Adapter& adapter,
                                       Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    const auto known = m_entries.find({camera.identity.mac, adapter.index});
    return known != m_entries.end() ? &known->second.record : update(camera, adapter, now);
}

RZ_CC_DEVICE_INFO RecordTable::copyOf(const RZ_CC_DEVICE_INFO& info) const
{
    const std::lock_guard lock(m_mutex); // Nobody publishes meanwhile: the copy is of one enumeration.
    RZ_CC_DEVICE_INFO copy;
    auto* to = reinterpret_cast<Word*>(&copy);
    const auto* from = reinterpret_cast<const Word*>(&info);
    for (std::size_t i = 0; i < RecordWords; ++i)
        to[i] = __atomic_load_n(from + i, __ATOMIC_RELAXED);
    return copy;
}

std::optional<bool> RecordTable::recentAccess(const RZ_CC_DEVICE_INFO& info, Clock::time_point now) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find({macOf(info), info.stGigEInfo.nNetExportIndex});
    if (found == m_entries.end())
        return std::nullopt;
    const Entry& entry = found->second;
    if (entry.askedAt != addressOf(info) || now - entry.time > AccessStaysFresh)
        return std::nullopt;
    return entry.isAccessible;
}

} // namespace sdk
