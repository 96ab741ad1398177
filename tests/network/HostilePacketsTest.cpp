// SPDX-License-Identifier: Apache-2.0
#include "tests/network/Sdk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

TEST(HostilePackets, AmongGenuineAnswersLeaveEachRecordWhole)
{
    Site site;
    site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
        {"mac": "02:00:00:00:01:01", "address": "192.168.1.20", "serial": "S1", "userName": "First",
         "noise": ["truncated", "oversized", "foreign", "duplicate", "random", "wrongId"]},
        {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "serial": "S2", "userName": "Second",
         "noise": ["wrongId", "random", "duplicate", "foreign", "oversized", "truncated"]},
        {"mac": "02:00:00:00:01:03", "address": "10.0.0.9", "serial": "S3", "userName": "Third",
         "noise": ["truncated", "wrongId"]})");
    const auto records = enumerate(site);
    ASSERT_THAT(records, testing::SizeIs(3));
    const struct
    {
        const char* mac;
        base::Ipv4 ip;
        const char* serial;
        const char* name;
    } expected[] = {{"02:00:00:00:01:01", "192.168.1.20"_ip, "S1", "First"},
                    {"02:00:00:00:01:02", "192.168.1.21"_ip, "S2", "Second"},
                    {"02:00:00:00:01:03", "10.0.0.9"_ip, "S3", "Third"}};
    for (const auto& camera : expected) {
        const auto* record = recordOf(records, camera.mac);
        ASSERT_NE(record, nullptr) << camera.mac;
        EXPECT_EQ(addressIn(*record), camera.ip);
        EXPECT_EQ(base::Ipv4(record->stGigEInfo.nDeviceSubnetMask), "255.255.255.0"_ip);
        EXPECT_EQ(record->stGigEInfo.nDeviceGateway, 0u);
        EXPECT_STREQ(record->stGigEInfo.szSerialNumber, camera.serial);
        EXPECT_STREQ(record->stGigEInfo.szUserDefinedName, camera.name);
    }
}
