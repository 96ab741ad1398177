// SPDX-License-Identifier: Apache-2.0
#include "tests/network/Sdk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

bool isAccessible(const Site& site, const RZ_CC_DEVICE_INFO& camera)
{
    const lab::Visit visit(site.host());
    return RZ_CC_IsDeviceAccessible(&camera, RZ_ACCESS_EXCLUSIVE);
}

/// The record as a program would have it that never enumerated: what the SDK knows of it does not apply.
RZ_CC_DEVICE_INFO strangerLike(const RZ_CC_DEVICE_INFO& camera)
{
    RZ_CC_DEVICE_INFO copy = camera;
    copy.nMacLow ^= 0xFF0000;
    return copy;
}

constexpr const char* Mac = "02:00:00:00:01:01";

class Accessibility : public testing::Test
{
protected:
    Accessibility()
        : farm(site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), R"(
            {"mac": "02:00:00:00:01:01", "address": "192.168.1.20"},
            {"mac": "02:00:00:00:01:02", "address": "192.168.1.21", "heldBy": "192.168.1.77"},
            {"mac": "02:00:00:00:01:03", "address": "192.168.1.22", "heldBy": "192.168.1.77", "heldPrivilege": "control"},
            {"mac": "02:00:00:00:01:04", "address": "192.168.1.23", "faults": [{"command": "READREG", "action": "drop"}]},
            {"mac": "02:00:00:00:01:05", "address": "192.168.1.24", "faults": [{"command": "READREG", "action": "drop", "times": 2}]})"))
    {}

    Site site;
    lab::Farm& farm;
};

} // namespace

TEST_F(Accessibility, IsKnownFromTheEnumeration)
{
    const auto records = enumerate(site);
    const std::map<std::string, bool> expected{
        {"02:00:00:00:01:01", true},  {"02:00:00:00:01:02", false}, {"02:00:00:00:01:03", false},
        {"02:00:00:00:01:04", false}, {"02:00:00:00:01:05", true},
    };
    ASSERT_EQ(records.size(), expected.size());
    for (const auto* record : records)
        EXPECT_EQ(isAccessible(site, *record), expected.at(macText(*record))) << macText(*record);
}

TEST_F(Accessibility, IsAnsweredWithoutAskingAgainWhileItIsFresh)
{
    const auto* camera = recordOf(enumerate(site), Mac);
    ASSERT_NE(camera, nullptr);
    farm.control(std::string("unplug ") + Mac);
    EXPECT_TRUE(isAccessible(site, *camera)) << "a camera that is gone could not have answered a question";
}

TEST_F(Accessibility, IsAskedForWhenNoEnumerationKnowsIt)
{
    const auto records = enumerate(site);
    EXPECT_TRUE(isAccessible(site, strangerLike(*recordOf(records, Mac))));
    EXPECT_FALSE(isAccessible(site, strangerLike(*recordOf(records, "02:00:00:00:01:02"))));
    farm.control(std::string("unplug ") + Mac);
    EXPECT_FALSE(isAccessible(site, strangerLike(*recordOf(records, Mac)))) << "no answer";
}

TEST_F(Accessibility, FollowsTheOtherApplicationFromEnumerationToEnumeration)
{
    EXPECT_TRUE(isAccessible(site, *recordOf(enumerate(site), Mac)));
    farm.control(std::string("hold ") + Mac);
    EXPECT_FALSE(isAccessible(site, *recordOf(enumerate(site), Mac)));
    farm.control(std::string("release ") + Mac);
    EXPECT_TRUE(isAccessible(site, *recordOf(enumerate(site), Mac)));
}
