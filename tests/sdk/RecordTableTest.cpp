// SPDX-License-Identifier: Apache-2.0
#include "sdk/discovery/RecordTable.h"

#include "sdk/discovery/Record.h"
#include "tests/sdk/FakeNetwork.h"
#include "tests/support/Sanitizers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <iostream>
#include <thread>

using namespace sdk;
using namespace std::chrono_literals;

namespace {

constexpr base::Ipv4 Host = "192.168.1.5"_ip;

FoundCamera found(const gvcp::DiscoveryAck& identity, std::size_t adapter = 0, bool isReachable = true,
                  bool isAccessible = true)
{
    return {identity, adapter, Host, isReachable, isAccessible, isReachable, true};
}

/// So many that have answered no command, each with a MAC of its own.
std::vector<FoundCamera> invented(unsigned count, unsigned round = 0, bool isConsistent = true)
{
    std::vector<FoundCamera> cameras;
    for (unsigned i = 0; i < count; ++i) {
        auto identity = cameraAt(0, "10.0.0.0"_ip.plus(i));
        base::writeU32(identity.mac.bytes, 0, round << 16 | i);
        cameras.push_back({identity, 0, Host, false, false, false, isConsistent});
    }
    return cameras;
}

class RecordTableTest : public testing::Test
{
protected:
    unsigned publish(const std::vector<FoundCamera>& cameras)
    {
        return table.publish(cameras, adapters, now, list);
    }

    bool lists(const base::MacAddress& mac) const
    {
        return std::any_of(list.apDeviceInfo, list.apDeviceInfo + list.nDeviceCount,
                           [&mac](const RZ_CC_DEVICE_INFO* record) { return macOf(*record) == mac; });
    }

    RecordTable table;
    const std::vector<Adapter> adapters{adapterWith(7, Host), adapterWith(8, "192.168.1.6"_ip)};
    Clock::time_point now{};
    RZ_CC_DEVICE_INFO_LIST list{};
};

std::uint64_t residentKilobytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmRSS:") {
            std::uint64_t value = 0;
            status >> value;
            return value;
        }
    return 0;
}

} // namespace

TEST_F(RecordTableTest, ARecordHasAllThatTheCameraSaid)
{
    gvcp::DiscoveryAck camera = cameraAt(0x5E, "192.168.1.20"_ip);
    camera.mac = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
    camera.versionMajor = 2;
    camera.versionMinor = 1;
    camera.ipConfigOptions = 0x80000007;
    camera.ip.gateway = "192.168.1.254"_ip;
    camera.manufacturerName = "Maker";
    camera.deviceVersion = "1.2";
    camera.manufacturerInfo = "Info";
    camera.userDefinedName = "Left";
    publish({found(camera)});

    ASSERT_EQ(list.nDeviceCount, 1u);
    const RZ_CC_DEVICE_INFO& record = *list.apDeviceInfo[0];
    EXPECT_EQ(record.nMajorVersion, 2);
    EXPECT_EQ(record.nMinorVersion, 1);
    EXPECT_EQ(record.nMacHigh, 0x0000001Au);
    EXPECT_EQ(record.nMacLow, 0x2B3C4D5Eu);
    EXPECT_EQ(record.nTransportLayer, 1u);
    EXPECT_EQ(macOf(record), camera.mac);
    EXPECT_EQ(record.stGigEInfo.nIpConfigOptions, 0x80000007u);
    EXPECT_EQ(record.stGigEInfo.nIpConfigCurrent, 2u);
    EXPECT_EQ(base::Ipv4(record.stGigEInfo.nDeviceIp), "192.168.1.20"_ip);
    EXPECT_EQ(base::Ipv4(record.stGigEInfo.nDeviceSubnetMask), "255.255.255.0"_ip);
    EXPECT_EQ(base::Ipv4(record.stGigEInfo.nDeviceGateway), "192.168.1.254"_ip);
    EXPECT_STREQ(record.stGigEInfo.szManufacturerName, "Maker");
    EXPECT_STREQ(record.stGigEInfo.szModelName, "Model");
    EXPECT_STREQ(record.stGigEInfo.szDeviceVersion, "1.2");
    EXPECT_STREQ(record.stGigEInfo.szManufacturerInfo, "Info");
    EXPECT_STREQ(record.stGigEInfo.szSerialNumber, "94");
    EXPECT_STREQ(record.stGigEInfo.szUserDefinedName, "Left");
    EXPECT_EQ(base::Ipv4(record.stGigEInfo.nNetExportIp), Host);
    EXPECT_EQ(record.stGigEInfo.nNetExportIndex, 7u);
}

TEST_F(RecordTableTest, TextsThatFillTheirFieldStillEndInANul)
{
    gvcp::DiscoveryAck camera = cameraAt(1, "10.0.0.1"_ip);
    camera.serialNumber = "0123456789ABCDEF";
    camera.userDefinedName = "0123456789ABC\xE7\x9B\xB8"; // A three-byte character that would be cut in half.
    publish({found(camera)});
    EXPECT_STREQ(list.apDeviceInfo[0]->stGigEInfo.szSerialNumber, "0123456789ABCDE");
    EXPECT_STREQ(list.apDeviceInfo[0]->stGigEInfo.szUserDefinedName, "0123456789ABC");
}

TEST_F(RecordTableTest, TextsAreUtf8WhateverTheCameraSends)
{
    struct Row
    {
        std::string sent;
        std::string handedOn;
    };
    const Row rows[] = {
        {"Left", "Left"},
        {"\xE7\x93\xB6\xE7\x9B\x96", "\xE7\x93\xB6\xE7\x9B\x96"},
        {"\xF0\x9F\x93\xB7", "\xF0\x9F\x93\xB7"},
        {"t\xEAte", "t\xC3\xAAte"},                   // Latin-1
        {"t\xC3\xAAte \xEA", "t\xC3\xAAte \xC3\xAA"}, // some of each
        {"\xC3", "\xC3\x83"},                         // half a character
        {"\xC0\xAF", "\xC3\x80\xC2\xAF"},             // longer than need be
        {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"}, // half of a pair
        {std::string(16, '\x80'), "\xC2\x80\xC2\x80\xC2\x80\xC2\x80\xC2\x80\xC2\x80\xC2\x80"},
        {std::string(16, 'n'), std::string(15, 'n')},
        {std::string(13, 'n') + "\xE7\x93\xB6", std::string(13, 'n')}, // cut between characters
        {std::string(14, 'n') + "\xEA", std::string(14, 'n')},
    };
    for (const Row& row : rows) {
        auto camera = cameraAt(1, "10.0.0.1"_ip);
        camera.userDefinedName = row.sent;
        publish({found(camera)});
        EXPECT_EQ(list.apDeviceInfo[0]->stGigEInfo.szUserDefinedName, row.handedOn);
    }
}

TEST_F(RecordTableTest, RecordsStayWhereTheyAreAndAreBroughtUpToDate)
{
    publish({found(cameraAt(1, "1.1.1.1"_ip)), found(cameraAt(1, "1.1.1.1"_ip), 1),
             found(cameraAt(2, "2.2.2.2"_ip))});
    ASSERT_EQ(list.nDeviceCount, 3u);
    RZ_CC_DEVICE_INFO* const first = list.apDeviceInfo[0];
    RZ_CC_DEVICE_INFO* const second = list.apDeviceInfo[1];
    EXPECT_NE(first, second) << "one for each adapter";

    publish({});
    EXPECT_EQ(list.nDeviceCount, 0u);
    EXPECT_EQ(base::Ipv4(first->stGigEInfo.nDeviceIp), "1.1.1.1"_ip)
        << "a camera that is gone keeps its record";

    publish({found(cameraAt(1, "1.1.1.153"_ip))});
    ASSERT_EQ(list.nDeviceCount, 1u);
    EXPECT_EQ(list.apDeviceInfo[0], first);
    EXPECT_EQ(base::Ipv4(first->stGigEInfo.nDeviceIp), "1.1.1.153"_ip);
    EXPECT_EQ(base::Ipv4(second->stGigEInfo.nDeviceIp), "1.1.1.1"_ip);
}

TEST_F(RecordTableTest, ALookMakesARecordAndChangesNone)
{
    const FoundCamera camera = found(cameraAt(1, "1.1.1.1"_ip), 0, true, false);
    RZ_CC_DEVICE_INFO* const made = table.record(camera, adapters[0], now);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(addressOf(*made), "1.1.1.1"_ip);
    EXPECT_EQ(table.recentAccess(*made, now), false);

    // A list is newer than what a look heard before, and may be worked with.
    publish({found(cameraAt(1, "1.1.1.2"_ip))});
    EXPECT_EQ(list.apDeviceInfo[0], made);
    EXPECT_EQ(table.record(camera, adapters[0], now + 1s), made);
    EXPECT_EQ(addressOf(*made), "1.1.1.2"_ip);
    EXPECT_EQ(table.recentAccess(*made, now), true);
}

TEST_F(RecordTableTest, AChangedTextLeavesNothingOfTheOldOne)
{
    gvcp::DiscoveryAck camera = cameraAt(1, "10.0.0.1"_ip);
    camera.userDefinedName = "a long old name";
    publish({found(camera)});
    camera.userDefinedName = "new";
    publish({found(camera)});
    EXPECT_EQ(std::string_view(list.apDeviceInfo[0]->stGigEInfo.szUserDefinedName, 16),
              std::string_view("new\0\0\0\0\0\0\0\0\0\0\0\0\0", 16));
}

TEST_F(RecordTableTest, AListOf256PrefersCamerasToFurtherSightingsOfThem)
{
    std::vector<FoundCamera> cameras;
    for (std::uint8_t i = 0; i < 200; ++i) {
        cameras.push_back(found(cameraAt(i, "10.0.0.0"_ip.plus(i)), 0, false));
        cameras.push_back(found(cameraAt(i, "10.0.0.0"_ip.plus(i)), 1, true));
    }
    publish(cameras);
    ASSERT_EQ(list.nDeviceCount, 256u);
    std::set<std::uint32_t> reachable;
    for (std::uint32_t i = 0; i < list.nDeviceCount; ++i)
        if (list.apDeviceInfo[i]->stGigEInfo.nNetExportIndex == 8)
            reachable.insert(list.apDeviceInfo[i]->nMacLow);
    EXPECT_EQ(reachable.size(), 200u) << "each camera by the adapter that reaches it";
}

TEST_F(RecordTableTest, AListOf256KeepsTheCamerasThatWereListedBefore)
{
    const auto listed = found(cameraAt(0xFF, "192.168.1.20"_ip), 0, false);
    EXPECT_EQ(publish({listed}), 0u);
    auto cameras = invented(1000);
    cameras.push_back(listed);
    EXPECT_EQ(publish(cameras), 1001u - 256u);
    ASSERT_EQ(list.nDeviceCount, 256u);
    EXPECT_EQ(macOf(*list.apDeviceInfo[255]), listed.identity.mac);
}

TEST_F(RecordTableTest, AListOf256PrefersNewCamerasThatAnsweredACommandToOthersThatDidNot)
{
    publish(invented(256));
    auto cameras = invented(256);
    const auto fresh = cameraAt(0xFF, "192.168.1.20"_ip);
    cameras.push_back(found(fresh));
    EXPECT_EQ(publish(cameras), 1u);
    EXPECT_TRUE(lists(fresh.mac)) << "though all the others were listed before";
}

TEST_F(RecordTableTest, AListOf256PrefersAnswersFromTheAddressThatTheyName)
{
    publish(invented(256, 0, false));
    auto cameras = invented(256, 0, false);
    const auto fresh = cameraAt(0xFF, "10.0.0.9"_ip);
    cameras.push_back(found(fresh, 0, false));
    publish(cameras);
    EXPECT_TRUE(lists(fresh.mac)) << "though it is out of reach and new";
}

TEST_F(RecordTableTest, AListOf256BeginsWithTheCameraThatIsExpected)
{
    std::vector<FoundCamera> cameras;
    for (unsigned i = 0; i < 300; ++i) {
        auto identity = cameraAt(0, "10.0.0.0"_ip.plus(i));
        base::writeU32(identity.mac.bytes, 0, i);
        cameras.push_back(found(identity));
    }
    publish(cameras);
    const auto last = cameras.back().identity.mac;
    EXPECT_FALSE(lists(last));
    EXPECT_FALSE(table.knows(last, 7));
    table.expect(last);
    EXPECT_TRUE(table.knows(last, 7));
    EXPECT_EQ(publish(cameras), 300u - 256u);
    EXPECT_TRUE(lists(last));
}

TEST_F(RecordTableTest, KnowsACameraByItsMacAndAdapter)
{
    publish({found(cameraAt(1, "10.0.0.1"_ip))});
    EXPECT_TRUE(table.knows(cameraAt(1, "10.0.0.1"_ip).mac, 7));
    EXPECT_FALSE(table.knows(cameraAt(1, "10.0.0.1"_ip).mac, 8));
    EXPECT_FALSE(table.knows(cameraAt(2, "10.0.0.1"_ip).mac, 7));
}

TEST_F(RecordTableTest, InventedCamerasWithoutEndNeitherGrowItWithoutEndNorKeepTrueOnesOut)
{
    const auto old = cameraAt(1, "192.168.1.20"_ip);
    publish({found(old)});
    const auto with = [&old](unsigned round, const std::vector<FoundCamera>& others) {
        auto cameras = invented(250, round);
        cameras.push_back(found(old));
        cameras.insert(cameras.end(), others.begin(), others.end());
        return cameras;
    };
    for (unsigned round = 0; round < 100; ++round)
        publish(with(round, {}));
    ASSERT_EQ(list.nDeviceCount, 1u) << "there is no more room for strangers";
    EXPECT_TRUE(lists(old.mac));

    const auto answering = cameraAt(2, "192.168.1.21"_ip);
    publish(with(101, {found(answering)}));
    EXPECT_TRUE(lists(answering.mac)) << "at once";
    const auto outOfReach = cameraAt(3, "10.0.0.9"_ip);
    EXPECT_EQ(publish(with(102, {found(outOfReach, 0, false)})), 251u);
    publish(with(103, {found(outOfReach, 0, false)}));
    EXPECT_TRUE(lists(outOfReach.mac)) << "when it is heard a second time";
    const auto expected = cameraAt(4, "10.0.0.10"_ip);
    table.expect(expected.mac);
    publish(with(104, {found(expected, 0, false)}));
    EXPECT_TRUE(lists(expected.mac)) << "at once";
    for (unsigned round = 200; round < 500; ++round)
        publish(with(round, {}));
    EXPECT_EQ(list.nDeviceCount, 1u);
}

TEST_F(RecordTableTest, AccessIsKnownAsLongAsItIsFreshAndTheCameraIsWhereItWasAsked)
{
    publish({found(cameraAt(1, "10.0.0.11"_ip), 0, true, true),
             found(cameraAt(2, "10.0.0.22"_ip), 0, true, false),
             found(cameraAt(3, "10.0.0.33"_ip), 0, false, false)});
    RZ_CC_DEVICE_INFO free = *list.apDeviceInfo[0];
    EXPECT_EQ(table.recentAccess(free, now), true);
    EXPECT_EQ(table.recentAccess(*list.apDeviceInfo[1], now), false);
    EXPECT_EQ(table.recentAccess(*list.apDeviceInfo[2], now), std::nullopt) << "was not asked";
    EXPECT_EQ(table.recentAccess(free, now + 1min), std::nullopt);
    free.stGigEInfo.nDeviceIp = 12;
    EXPECT_EQ(table.recentAccess(free, now), std::nullopt);
    EXPECT_EQ(table.recentAccess(RZ_CC_DEVICE_INFO{}, now), std::nullopt);
}

TEST_F(RecordTableTest, ACopyMadeBesideEnumerationsIsOfOneOfThem)
{
    const auto camera = [](char letter) {
        gvcp::DiscoveryAck said = cameraAt(1, "10.0.0.0"_ip.plus(static_cast<unsigned char>(letter)));
        said.manufacturerInfo = std::string(47, letter);
        said.userDefinedName = std::string(15, letter);
        return found(said);
    };
    publish({camera('a')});
    const RZ_CC_DEVICE_INFO& record = *list.apDeviceInfo[0];
    std::atomic<int> enumerations = 0;
    std::atomic<bool> isEnding = false;
    std::thread enumerating([&] {
        for (; !isEnding; ++enumerations)
            publish({camera(enumerations % 2 == 0 ? 'b' : 'a')});
    });
    for (int copies = 0; (copies < 100'000 || enumerations < 100'000) && !HasFailure(); ++copies) {
        const RZ_GIGE_DEVICE_INFO copy = table.copyOf(record).stGigEInfo;
        const char letter = static_cast<char>(copy.nDeviceIp);
        EXPECT_EQ(copy.szManufacturerInfo, std::string(47, letter));
        EXPECT_EQ(copy.szUserDefinedName, std::string(15, letter));
    }
    isEnding = true;
    enumerating.join();
}

TEST_F(RecordTableTest, TenThousandEnumerationsOf256CamerasDoNotGrowTheProcess)
{
    if (IsSanitized)
        GTEST_SKIP() << "the sanitizer's own memory would be measured";
    FakeNetwork network({adapterWith(7, Host, "255.255.0.0"_ip)});
    network.keepsSent = false;
    std::vector<gvcp::DiscoveryAck> cameras;
    for (unsigned i = 0; i < 256; ++i)
        cameras.push_back(cameraAt(static_cast<std::uint8_t>(i), "192.168.2.0"_ip.plus(i)));
    bool answers = false;
    network.onSend = [&](const FakeNetwork::Sent& sent) {
        const auto command = sent.command();
        if (command.command == gvcp::Command::ReadRegister)
            network.deliver(1ms, 0, sent.destination, registerAnswer(command.id, 0));
        else if (std::exchange(answers, false))
            for (const auto& camera : cameras)
                network.deliver(1ms, 0, camera.ip.address, discoveryAnswer(command.id, camera));
    };
    const auto enumerateOften = [&](int times) {
        for (int i = 0; i < times; ++i) {
            answers = true;
            table.publish(
                enumerateCameras(network,
                                 [this](auto& mac, auto& adapter) { return table.knows(mac, adapter.index); })
                    .cameras,
                network.adapters(), network.now(), list);
            ASSERT_EQ(list.nDeviceCount, 256u);
        }
    };
    enumerateOften(100);
    const auto before = residentKilobytes();
    enumerateOften(10'000);
    const auto after = residentKilobytes();
    std::cout << "resident before: " << before << " kB, after 10,000 enumerations: " << after << " kB\n";
    ASSERT_GT(before, 0u);
    EXPECT_LE(after, before + 256);
}
