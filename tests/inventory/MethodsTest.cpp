// SPDX-License-Identifier: Apache-2.0
#include "inventory/Look.h"
#include "tests/support/SdkDouble.h"

#include <gtest/gtest.h>

namespace {

struct Case
{
    std::uint32_t options;
    bool canBeStatic;
    bool canUseDhcp;
};

} // namespace

TEST(Methods, AreThoseThatTheCameraSaysOrAllWhenItSaysNone)
{
    const Case cases[] = {
        {0x00000004, false, false}, {0x00000005, true, false}, {0x00000006, false, true},
        {0x00000007, true, true},   {0x80000007, true, true},  {0x80000000, true, true},
        {0x00000000, true, true},
    };
    SdkDouble sdk;
    RZ_CC_DEVICE_INFO* const record = sdk.record({});
    sdk.listed = {record};
    inventory::Look look;
    for (const Case& each : cases) {
        SCOPED_TRACE(each.options);
        record->stGigEInfo.nIpConfigOptions = each.options;
        const inventory::Inventory found = look.once({});
        ASSERT_EQ(found.cameras.size(), 1U);
        EXPECT_EQ(found.cameras[0].canBeStatic, each.canBeStatic);
        EXPECT_EQ(found.cameras[0].canUseDhcp, each.canUseDhcp);
    }
}
