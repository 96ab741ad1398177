// SPDX-License-Identifier: Apache-2.0
#include "tests/network/DiscoveryConditions.h"
#include "tests/network/Sdk.h"
#include "tests/support/Sanitizers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using testing::SizeIs;

namespace {

class Discovery : public testing::TestWithParam<DiscoveryCondition>
{};

} // namespace

TEST_P(Discovery, FindsEveryCamera)
{
    Site site;
    GetParam().build(site);
    std::size_t found = 0;
    for (unsigned i = 0; i < GetParam().enumerations; ++i)
        found += macTexts(enumerate(site)).size();
    const unsigned all = GetParam().cameras * GetParam().enumerations;
    std::cout << found << " of " << all << '\n';
    EXPECT_GE(static_cast<double>(found), all * GetParam().share);
    EXPECT_LE(found, all);
}

INSTANTIATE_TEST_SUITE_P(Condition, Discovery, testing::ValuesIn(discoveryConditions()),
                         [](const auto& condition) { return condition.param.name; });

TEST(DiscoveryOn256Cameras, LearnsOfEachThatItIsFree)
{
    const int cameras = IsSanitized ? 64 : 256; // An enumeration's time stays.
    Site site;
    site.addCameras(site.addAdapter("eth0", "192.168.0.5/16"),
                    R"({"mac": "02:00:00:00:10:00", "address": "192.168.4.1", "mask": "255.255.0.0",
                        "repeat": )" +
                        std::to_string(cameras) + "}");
    // They are one process: on a busy host it may be late, but not each time.
    std::ptrdiff_t free = 0;
    for (int tries = 0; tries < 3 && free < cameras; ++tries) {
        const auto records = enumerate(site);
        const lab::Visit visit(site.host());
        free = std::count_if(records.begin(), records.end(), [](const auto* record) {
            return RZ_CC_IsDeviceAccessible(record, RZ_ACCESS_EXCLUSIVE);
        });
    }
    EXPECT_EQ(free, cameras);
}

namespace {

/// How much of a condition's seven cameras, two in the subnet and five outside it, the kernel lets through.
struct LetThrough
{
    const char* condition;
    std::size_t cameras;
};

std::ostream& operator<<(std::ostream& out, const LetThrough& row)
{
    return out << row.condition;
}

class DiscoveryWithoutRawSockets : public testing::TestWithParam<LetThrough>
{};

} // namespace

TEST_P(DiscoveryWithoutRawSockets, FindsWhatTheKernelLetsThrough)
{
    Site site;
    discoveryCondition(GetParam().condition).build(site);
    const auto macs = macTexts(enumerateUnprivileged(site));
    EXPECT_THAT(macs, SizeIs(GetParam().cameras));
    for (const char* inSubnet : {"02:00:00:00:01:01", "02:00:00:00:01:02"})
        EXPECT_EQ(macs.count(inSubnet), macs.empty() ? 0u : 1u) << inSubnet;
}

INSTANTIATE_TEST_SUITE_P(Condition, DiscoveryWithoutRawSockets,
                         testing::Values(LetThrough{"InsideAndOutsideTheSubnet", 7},
                                         LetThrough{"ReversePathFilter0WithADefaultRoute", 7},
                                         LetThrough{"ReversePathFilter1WithoutDefaultRoute", 2},
                                         LetThrough{"ReversePathFilter1WithADefaultRoute", 7},
                                         LetThrough{"ReversePathFilter2WithoutDefaultRoute", 2},
                                         LetThrough{"ReversePathFilter2WithADefaultRoute", 7},
                                         LetThrough{"FirewallThatPassesEstablishedConnections", 0}),
                         [](const auto& row) { return row.param.condition; });

TEST(DiscoveryOnTwoAdapters, OfOneSubnetNamesTheAdapterThatHeardTheCamera)
{
    Site site;
    discoveryCondition("TwoAdaptersInOneSubnet").build(site);
    const auto records = enumerate(site);
    ASSERT_THAT(records, SizeIs(6)) << "no camera is heard on the adapter that does not reach it";
    EXPECT_NE(recordOf(records, "02:00:00:00:01:01", "192.168.1.5"_ip), nullptr);
    EXPECT_NE(recordOf(records, "02:00:00:00:02:01", "192.168.2.5"_ip), nullptr);
    for (const auto* record : records) {
        const lab::Visit visit(site.host());
        EXPECT_TRUE(RZ_CC_IsDeviceAccessible(record, RZ_ACCESS_EXCLUSIVE)) << macText(*record);
    }
}

TEST(DiscoveryOnTwoAdapters, GivesOneRecordForEachThatSeesTheCamera)
{
    Site site;
    discoveryCondition("OneCameraSeenByTwoAdapters").build(site);
    const auto records = enumerate(site);
    ASSERT_THAT(records, SizeIs(2));
    EXPECT_NE(recordOf(records, "02:00:00:00:01:01", "10.0.0.5"_ip), nullptr);
    EXPECT_NE(recordOf(records, "02:00:00:00:01:01", "192.168.1.5"_ip), nullptr);
}

TEST(DiscoveryRecords, StayTheSameFromEnumerationToEnumeration)
{
    Site site;
    discoveryCondition("InsideAndOutsideTheSubnet").build(site);
    const auto first = enumerate(site);
    EXPECT_THAT(enumerate(site), testing::ElementsAreArray(first));
}

TEST(DiscoverySockets, AreAllClosedAfterwards)
{
    Site site;
    discoveryCondition("InsideAndOutsideTheSubnet").build(site);
    const auto openDescriptors = [] {
        const auto entries = std::filesystem::directory_iterator("/proc/self/fd");
        return std::distance(begin(entries), end(entries));
    };
    enumerate(site);
    const auto before = openDescriptors();
    enumerate(site);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(DiscoveryOfOthers, FindsTheFieldsOwnFakeCamera)
{
    Site site;
    auto& network = site.addAdapter("eth0", "192.168.1.5/24");
    network.attach(site.router(), "lan", "192.168.1.20/24");
    const auto camera = site.router().start({"arv-fake-gv-camera-0.8", "-i", "lan", "-s", "FAKE1"});
    std::vector<const RZ_CC_DEVICE_INFO*> records;
    for (int tries = 0; tries < 10 && records.empty(); ++tries) // It says nothing when it is ready.
        records = enumerate(site);
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_STREQ(records[0]->stGigEInfo.szSerialNumber, "FAKE1");
    EXPECT_EQ(addressIn(*records[0]), "192.168.1.20"_ip);
    {
        const lab::Visit visit(site.host());
        EXPECT_TRUE(RZ_CC_IsDeviceAccessible(records[0], RZ_ACCESS_EXCLUSIVE));
    }

    const auto seen = look(site);
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].nRegisters, unsigned{RZ_REGISTERS_TOLD});
    EXPECT_EQ(seen[0].nAccessible, 1u);
    EXPECT_TRUE(seen[0].nTold & RZ_TOLD_HEARTBEAT_TIMEOUT);
    EXPECT_EQ(seen[0].nHeartbeatTimeout, 3000u);
}
