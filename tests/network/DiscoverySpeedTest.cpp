// SPDX-License-Identifier: Apache-2.0
// What discovery costs, each time compared with another one of the same run.
#include "tests/network/DiscoveryConditions.h"
#include "tests/network/Sdk.h"
#include "tests/network/TimeOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using testing::SizeIs;

namespace {

std::size_t timesIn(const std::string& text, const std::string& word)
{
    std::size_t times = 0;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
        ++times;
    return times;
}

std::uint64_t residentKilobytes()
{
    std::ifstream status("/proc/self/statm");
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    status >> total >> resident;
    return resident * 4;
}

} // namespace

TEST(DiscoverySpeed, WithoutRawSocketsBehindAFirewallNothingIsFoundWithoutExtraWait)
{
    Site open;
    discoveryCondition("InsideAndOutsideTheSubnet").build(open);
    Site closed;
    discoveryCondition("FirewallThatPassesEstablishedConnections").build(closed);
    const auto openTime =
        shortestTimeOf([&] { EXPECT_THAT(enumerate(open), testing::Not(testing::IsEmpty())); });
    const auto closedTime = shortestTimeOf([&] { EXPECT_THAT(enumerateUnprivileged(closed), SizeIs(0)); });
    EXPECT_LE(closedTime, openTime * 1.3);
}

TEST(DiscoverySpeed, SilentRegisterReadsCostAtMostAQuarterMore)
{
    Site prompt;
    discoveryCondition("On256Cameras").build(prompt);
    Site silent;
    discoveryCondition("On256CamerasSilentToRegisterReads").build(silent);
    const auto promptTime = shortestTimeOf([&] { EXPECT_THAT(enumerate(prompt), SizeIs(256)); });
    const auto silentTime = shortestTimeOf([&] {
        for (const auto* record : enumerate(silent))
            EXPECT_FALSE(RZ_CC_IsDeviceAccessible(record, RZ_ACCESS_EXCLUSIVE)) << macText(*record);
    });
    std::cout << "prompt " << promptTime.count() << " s, silent " << silentTime.count() << " s\n";
    EXPECT_LE(silentTime, promptTime * 1.25);
}

TEST(DiscoverySpeed, AListOf256CamerasTakesAtMostAThirdMoreThanArvTools)
{
    Site site;
    discoveryCondition("On256Cameras").build(site);
    Seconds ours = Seconds::max();
    Seconds theirs = Seconds::max();
    for (int i = 0; i < 3; ++i) { // In turn, so that both meet the same host.
        lab::Output ourList;
        lab::Output theirList;
        ours = std::min(ours, timeOf([&] { ourList = site.host().execute({CLI, "list", "--json"}); }));
        theirs = std::min(theirs, timeOf([&] { theirList = site.host().execute({"arv-tool-0.8"}); }));
        ASSERT_EQ(timesIn(ourList.standardOutput, "GevMACAddress"), 256u) << ourList.standardError;
        ASSERT_EQ(timesIn(theirList.standardOutput, "\n"), 256u);
    }
    std::cout << "ours " << ours.count() << " s, arv-tool " << theirs.count() << " s\n";
    EXPECT_LE(ours, theirs * 1.3);
}

TEST(DiscoverySpeed, TenThousandForgedAnswersGiveAtMost256RecordsInBoundedTimeAndMemory)
{
    Site quiet;
    quiet.addCameras(quiet.addAdapter("eth0", "192.168.1.5/24"),
                     R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20"})");
    const auto quietTime = shortestTimeOf([&] { ASSERT_THAT(enumerate(quiet), SizeIs(1)); });

    Site flooded;
    flooded.addCameras(flooded.addAdapter("eth0", "192.168.1.5/24"),
                       R"({"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "forgedAnswers": 10000})");
    const auto before = residentKilobytes();
    std::vector<const RZ_CC_DEVICE_INFO*> records;
    const auto floodedTime = shortestTimeOf([&] { records = enumerate(flooded); });
    const auto after = residentKilobytes();
    std::cout << records.size() << " records, " << before << " kB before, " << after << " kB after\n";
    EXPECT_GT(records.size(), 1u) << "the forged answers did come in";
    EXPECT_LE(records.size(), 256u);
    EXPECT_LE(floodedTime, quietTime * 1.5);
    EXPECT_LE(after, before + 8 * 1024);
}
