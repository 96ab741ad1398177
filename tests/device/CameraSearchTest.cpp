// SPDX-License-Identifier: Apache-2.0
#include "device/CameraSearch.h"

#include "tests/support/SdkDouble.h"

#include <gmock/gmock.h>

TEST(CameraSearch, ReportsWhatTheEnumerationLeftOut)
{
    SdkDouble sdk;
    sdk.unlisted = 44;
    sdk.notSearched = "eth1: Too many open files";
    const SearchReport report = GetSearchReport();
    EXPECT_EQ(report.nUnlisted, 44u);
    EXPECT_EQ(report.strNotSearched, "eth1: Too many open files");
}

TEST(CameraSearch, NamesACameraThatIsLookedFor)
{
    SdkDouble sdk;
    ExpectCamera("FE:DC:BA:98:76:54");
    EXPECT_THAT(sdk.calls(), testing::ElementsAre("ExpectDevice(FE:DC:BA:98:76:54)"));
}
