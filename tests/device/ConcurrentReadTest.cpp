// SPDX-License-Identifier: Apache-2.0
#include "device/QDeviceManager.h"

#include "sdk/RzCameraSdk.h"
#include "tests/support/SdkDouble.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <thread>

namespace {

constexpr int Refreshes = 1000;

/// Brings a record up to date as the SDK does: the changed words, each in one store.
void update(RZ_CC_DEVICE_INFO* record, const RZ_CC_DEVICE_INFO& wanted)
{
    using Word [[gnu::may_alias]] = std::uint32_t;
    auto* words = reinterpret_cast<Word*>(record);
    const auto* wantedWords = reinterpret_cast<const Word*>(&wanted);
    for (std::size_t i = 0; i < sizeof *record / sizeof(Word); ++i) {
        if (words[i] != wantedWords[i])
            __atomic_store_n(words + i, wantedWords[i], __ATOMIC_RELAXED);
    }
}

} // namespace

TEST(ConcurrentReadTest, ClicksDuringAThousandRefreshesSeeTheOldListOrTheNewOne)
{
    SdkDouble sdk;
    std::vector<RZ_CC_DEVICE_INFO*> records;
    for (int i = 0; i < 6; ++i)
        records.push_back(sdk.record({.mac = "00:00:00:00:00:0" + std::to_string(i), .userName = "0"}));

    // Each refresh gives all cameras its number as a name, finds another number of them and hears them on
    // another adapter. Clicks are counted without ordering anything: that is for the manager to do.
    std::atomic<int> clicks{0};
    int refresh = 0;
    sdk.enumDevices = [&](RZ_CC_DEVICE_INFO_LIST& list) {
        ++refresh;
        list.nDeviceCount = static_cast<uint32_t>(1 + refresh % 6);
        for (uint32_t i = 0; i < list.nDeviceCount; ++i) {
            RZ_CC_DEVICE_INFO wanted = *records[i];
            std::memset(wanted.stGigEInfo.szUserDefinedName, 0, sizeof wanted.stGigEInfo.szUserDefinedName);
            std::snprintf(wanted.stGigEInfo.szUserDefinedName, sizeof wanted.stGigEInfo.szUserDefinedName,
                          "%d", refresh);
            wanted.stGigEInfo.nNetExportIp = 0xC0000200 + static_cast<uint32_t>(refresh % 100);
            update(records[i], wanted);
            list.apDeviceInfo[i] = records[i];
        }
        const int clicksBefore = clicks.load(std::memory_order_relaxed);
        while (clicks.load(std::memory_order_relaxed) == clicksBefore)
            std::this_thread::yield();
        return 0;
    };

    QDeviceManager manager;
    std::atomic<bool> refreshing{true};
    std::thread worker([&] {
        for (int i = 0; i < Refreshes; ++i)
            manager.EnumGigEDevices();
        refreshing.store(false, std::memory_order_relaxed);
    });

    int lastSeen = 0;
    const auto click = [&] {
        clicks.fetch_add(1, std::memory_order_relaxed);
        QVector<QDevice> devices;
        manager.GetAllDevices(devices);
        if (devices.isEmpty()) {
            ASSERT_EQ(lastSeen, 0);
            return;
        }
        const QString name = devices.first().m_strUserDefinedName;
        const int seen = name.toInt();
        ASSERT_GE(seen, lastSeen);
        lastSeen = seen;
        ASSERT_EQ(devices.size(), 1 + seen % 6);
        for (int i = 0; i < devices.size(); ++i) {
            ASSERT_EQ(devices[i].m_strMacAddress, QStringLiteral("00:00:00:00:00:0%1").arg(i));
            ASSERT_EQ(devices[i].m_strUserDefinedName, name);
        }

        QDevice device;
        ASSERT_TRUE(manager.GetOneDevice(0, device));
        const auto adapter = static_cast<uint32_t>(device.GetNetExport());
        ASSERT_GE(adapter, 0xC0000200u);
        ASSERT_LE(adapter, 0xC0000263u);
        ASSERT_EQ(manager.GetTheOperaDevice(), 0);
    };
    while (refreshing.load(std::memory_order_relaxed) && !testing::Test::HasFailure())
        click();
    while (refreshing.load(std::memory_order_relaxed))
        clicks.fetch_add(1, std::memory_order_relaxed);
    worker.join();
    click();
    EXPECT_EQ(lastSeen, Refreshes);
}
