// SPDX-License-Identifier: Apache-2.0
#include "sdk/RecordTable.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace sdk {

namespace {

using namespace std::chrono_literals;

/// An hour of forged answers must not eat the host's memory: 16384 records take 5 MB. Beyond that, cameras
/// that are not known yet are left out.
constexpr std::size_t MaxRecords = 16384;

/// The list is gone through right after it was made. What is older is asked again.
constexpr auto AccessStaysFresh = 5s;

template <std::size_t Size>
void copyText(char (&field)[Size], const std::string& text)
{
    std::size_t length = std::min(text.size(), Size - 1);
    // A character that would be cut in half is left out: go back to its first byte.
    if (length < text.size())
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
    std::copy_n(text.begin(), length, field);
}

RZ_CC_DEVICE_INFO recordOf(const FoundCamera& camera, const Adapter& adapter)
{
    const gvcp::DiscoveryAck& identity = camera.identity;
    const auto& mac = identity.mac.bytes;
    RZ_CC_DEVICE_INFO record{};
    record.nMajorVersion = identity.versionMajor;
    record.nMinorVersion = identity.versionMinor;
    record.nMacHigh = gvcp::readU16(mac, 0);
    record.nMacLow = gvcp::readU32(mac, 2);
    record.nTransportLayer = RZ_TL_GIGE;

    RZ_GIGE_DEVICE_INFO& gige = record.stGigEInfo;
    gige.nIpConfigOptions = identity.ipConfigOptions;
    gige.nIpConfigCurrent = identity.ipConfigCurrent;
    gige.nDeviceIp = identity.ip;
    gige.nDeviceSubnetMask = identity.subnetMask;
    gige.nDeviceGateway = identity.gateway;
    copyText(gige.szManufacturerName, identity.manufacturerName);
    copyText(gige.szModelName, identity.modelName);
    copyText(gige.szDeviceVersion, identity.deviceVersion);
    copyText(gige.szManufacturerInfo, identity.manufacturerInfo);
    copyText(gige.szSerialNumber, identity.serialNumber);
    copyText(gige.szUserDefinedName, identity.userDefinedName);
    gige.nNetExportIp = camera.adapterAddress;
    gige.nNetExportIndex = adapter.index;
    return record;
}

/// At most as many as a list holds, in their order: cameras before further sightings of the same camera (the
/// reachable one counts as the first), and those that are known before others.
template <typename IsKnownPredicate>
std::vector<const FoundCamera*> chooseForList(const std::vector<FoundCamera>& cameras,
                                              IsKnownPredicate isKnown)
{
    enum Rank
    {
        Known,
        Unknown,
        Repeated
    };
    std::set<gvcp::MacAddress> seen;
    std::vector<std::pair<Rank, std::size_t>> ranked;
    for (const bool isReachable : {true, false}) {
        for (std::size_t i = 0; i < cameras.size(); ++i) {
            if (cameras[i].isReachable != isReachable)
                continue;
            const bool isFirst = seen.insert(cameras[i].identity.mac).second;
            ranked.emplace_back(!isFirst ? Repeated : isKnown(cameras[i]) ? Known : Unknown, i);
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

gvcp::MacAddress macOf(const RZ_CC_DEVICE_INFO& info)
{
    gvcp::MacAddress mac;
    gvcp::writeU16(mac.bytes, 0, static_cast<std::uint16_t>(info.nMacHigh));
    gvcp::writeU32(mac.bytes, 2, info.nMacLow);
    return mac;
}

RecordTable& RecordTable::instance()
{
    static RecordTable* const table = new RecordTable;
    return *table;
}

bool RecordTable::knows(const gvcp::MacAddress& mac, unsigned adapterIndex) const
{
    const std::lock_guard lock(m_mutex);
    return m_entries.count({mac, adapterIndex}) > 0;
}

void RecordTable::publish(const std::vector<FoundCamera>& cameras, const std::vector<Adapter>& adapters,
                          Clock::time_point now, RZ_CC_DEVICE_INFO_LIST& list)
{
    const std::lock_guard lock(m_mutex);

    const auto isKnown = [&](const FoundCamera& camera) {
        return m_entries.count({camera.identity.mac, adapters[camera.adapter].index}) > 0;
    };
    list.nDeviceCount = 0;
    for (const FoundCamera* camera : chooseForList(cameras, isKnown)) {
        const Adapter& adapter = adapters[camera->adapter];
        const Key key{camera->identity.mac, adapter.index};
        auto entry = m_entries.find(key);
        if (entry == m_entries.end()) {
            if (m_entries.size() >= MaxRecords)
                continue;
            entry = m_entries.try_emplace(key).first;
        }
        updateRecord(entry->second.record, recordOf(*camera, adapter));
        entry->second.askedAt = camera->isReachable ? camera->identity.ip : 0;
        entry->second.isAccessible = camera->isAccessible;
        entry->second.time = now;
        list.apDeviceInfo[list.nDeviceCount++] = &entry->second.record;
    }
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
    if (entry.askedAt == 0 || entry.askedAt != info.stGigEInfo.nDeviceIp ||
        now - entry.time > AccessStaysFresh)
        return std::nullopt;
    return entry.isAccessible;
}

} // namespace sdk
