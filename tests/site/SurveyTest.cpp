// SPDX-License-Identifier: Apache-2.0
#include "site/Survey.h"
#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>

using inventory::Inventory;
using inventory::Status;
using testing::ElementsAre;

namespace {

const std::string Mac = "02:00:00:00:00:01";

/// One place, "left", whose camera is there.
class Survey : public testing::Test
{
protected:
    Survey()
    {
        place.name = "left";
        place.match.mac = base::MacAddress::parse(Mac);
        place.ip = {*base::Ipv4::parse("192.0.2.20"), *base::Ipv4::parse("255.255.255.0"), {}};
        place.userName = "left";
        sdk.listed = {sdk.record({.mac = Mac, .userName = "left", .ipConfig = 5})};
        sdk.look = [this](unsigned, unsigned, const RZ_CC_LOOK_SINK& sink) {
            ++looks;
            atLook(sink);
            return RZ_OK;
        };
    }

    void find(const RZ_CC_LOOK_SINK& sink, const std::function<void(RZ_CC_SIGHTING&)>& adjust = {})
    {
        for (const int isLast : {0, 1})
            for (RZ_CC_DEVICE_INFO* const each : sdk.listed) {
                RZ_CC_SIGHTING seen = sdk.sighting(each);
                seen.nRegisters = RZ_REGISTERS_TOLD;
                seen.nTold = RZ_TOLD_STORED | RZ_TOLD_PRIVILEGE;
                seen.nStoredIp = each->stGigEInfo.nDeviceIp;
                seen.nStoredMask = each->stGigEInfo.nDeviceSubnetMask;
                if (adjust)
                    adjust(seen);
                sink.pOnCamera(sink.pContext, &seen, isLast);
            }
        const RZ_CC_LOOK_REPORT report{0, RZ_LISTENER_HEARS, "", ""};
        sink.pOnReport(sink.pContext, &report);
    }

    /// Whether the look would end by itself within a second.
    static bool endsEarly(const RZ_CC_LOOK_SINK& sink)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (std::chrono::steady_clock::now() < deadline)
            if (sink.pIsOver(sink.pContext) != 0)
                return true;
        return false;
    }

    Inventory survey()
    {
        looks = 0;
        return site::survey({{}, {place}, {}}, {}, [this] { return isOver; });
    }

    SdkDouble sdk;
    site::Place place;
    std::function<void(const RZ_CC_LOOK_SINK&)> atLook = [this](const RZ_CC_LOOK_SINK& sink) { find(sink); };
    int looks = 0;
    bool isOver = false;
};

} // namespace

TEST_F(Survey, FindsTheCamerasThatOnlyOneOfTwoLooksHears)
{
    RZ_CC_DEVICE_INFO* const first = sdk.listed[0];
    RZ_CC_DEVICE_INFO* const second = sdk.record({.mac = "02:00:00:00:00:02", .ip = "192.0.2.21"});
    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        sdk.listed = {looks == 1 ? second : first};
        find(sink);
    };
    const Inventory found = survey();
    EXPECT_EQ(looks, 2);
    ASSERT_EQ(found.cameras.size(), 2U);
    EXPECT_EQ(found.cameras[0].mac.toText(), Mac);
}

TEST_F(Survey, BelievesTheSecondLookAndFindsWhoCollidesAnew)
{
    RZ_CC_DEVICE_INFO* const left = sdk.listed[0];
    RZ_CC_DEVICE_INFO* const other = sdk.record({.mac = "02:00:00:00:00:02", .ip = "192.0.2.21"});
    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        sdk.listed = looks == 1 ? std::vector{left, other} : std::vector{left};
        find(sink);
        left->stGigEInfo.nDeviceIp = SdkDouble::address("192.0.2.21");
    };
    const Inventory found = survey();
    ASSERT_EQ(found.cameras.size(), 2U);
    EXPECT_EQ(found.cameras[0].ip.address.toText(), "192.0.2.21");
    EXPECT_EQ(found.cameras[0].conflicts.size(), 1U);
    EXPECT_EQ(found.cameras[1].conflicts.size(), 1U);
}

TEST_F(Survey, KeepsWhatTheFirstLookHeardOfRegistersThatTheSecondOneMissed)
{
    atLook = [this](const RZ_CC_LOOK_SINK& sink) {
        find(sink, [this](RZ_CC_SIGHTING& seen) {
            if (looks == 2) {
                seen.nRegisters = RZ_REGISTERS_SILENT;
                seen.nTold = 0;
                seen.nAccessible = 0;
            }
        });
    };
    const Inventory found = survey();
    EXPECT_EQ(found.cameras.at(0).status, Status::Free);
    EXPECT_TRUE(found.cameras[0].stored);
}

TEST_F(Survey, EndsTheSecondLookWhenAllAnsweredAgainAndNothingIsToBeDone)
{
    bool isEarly = false;
    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        find(sink);
        if (looks == 2)
            isEarly = endsEarly(sink);
    };
    survey();
    EXPECT_TRUE(isEarly);

    place.ip.address = place.ip.address.plus(1);
    survey();
    EXPECT_FALSE(isEarly) << "whoever has the address may still answer";

    place.ip.address = *base::Ipv4::parse("192.0.2.20");
    place.match.mac->bytes[5] = 9;
    survey();
    EXPECT_FALSE(isEarly) << "the camera that is missing may still answer";

    place.match.mac->bytes[5] = 1;
    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        if (looks == 1)
            return find(sink);
        isEarly = endsEarly(sink);
        find(sink);
    };
    survey();
    EXPECT_FALSE(isEarly) << "one that answered the first time may still answer";
}

TEST_F(Survey, GivesACameraInUseTheTimeToLetGo)
{
    place.ip.address = place.ip.address.plus(1);
    const auto held = [](RZ_CC_SIGHTING& seen) {
        seen.nAccessible = 0;
        seen.nTold |= RZ_TOLD_HEARTBEAT_TIMEOUT;
        seen.nHeartbeatTimeout = 30;
    };
    atLook = [&](const RZ_CC_LOOK_SINK& sink) { looks == 3 ? find(sink) : find(sink, held); };
    EXPECT_EQ(survey().cameras.at(0).status, Status::Free);
    EXPECT_EQ(looks, 3);

    atLook = [&](const RZ_CC_LOOK_SINK& sink) { find(sink, held); };
    EXPECT_EQ(survey().cameras.at(0).status, Status::InUse);
    EXPECT_EQ(looks, 3) << "once, and no more";
}

TEST_F(Survey, GivesNoTimeWhereItWouldBeInVain)
{
    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        find(sink, [](RZ_CC_SIGHTING& seen) { seen.nAccessible = 0; });
    };
    survey();
    EXPECT_EQ(looks, 2) << "it needs no change";

    place.ip.address = place.ip.address.plus(1);
    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        find(sink, [](RZ_CC_SIGHTING& seen) {
            seen.nAccessible = 0;
            seen.nTold |= RZ_TOLD_HEARTBEAT_OFF;
            seen.nHeartbeatOff = 1;
        });
    };
    survey();
    EXPECT_EQ(looks, 2) << "it never lets go";

    atLook = [&](const RZ_CC_LOOK_SINK& sink) {
        find(sink, [](RZ_CC_SIGHTING& seen) {
            seen.nAccessible = 0;
            seen.nTold |= RZ_TOLD_HOLDER;
            seen.nHolderIp = SdkDouble::address("198.51.100.7");
        });
    };
    survey();
    EXPECT_EQ(looks, 2) << "another computer's application has it";
}

TEST_F(Survey, EndsWithWhatItHasWhenItIsOver)
{
    atLook = [this](const RZ_CC_LOOK_SINK& sink) {
        EXPECT_EQ(sink.pIsOver(sink.pContext), 0);
        isOver = true;
        EXPECT_NE(sink.pIsOver(sink.pContext), 0);
        find(sink);
    };
    EXPECT_EQ(survey().cameras.size(), 1U);
    EXPECT_EQ(looks, 1);
}
