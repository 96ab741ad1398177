// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"

#include "tests/cli/Refusal.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;

TEST(MacAddress, IsTakenInAnyCaseWithColonsDashesOrNothing)
{
    for (const char* text : {"00:1A:2B:3C:4D:5E", "00:1a:2b:3c:4d:5e", "00-1A-2b-3C-4d-5E", "001a2b3c4d5E"})
        EXPECT_EQ(cli::parseMacAddress(text).toText(), "00:1A:2B:3C:4D:5E") << text;
    for (const char* text : {"AA:BB:CC:DD:EE:FF", "aa:bb:cc:dd:ee:ff", "aAbBcCdDeEfF"})
        EXPECT_EQ(cli::parseMacAddress(text).toText(), "AA:BB:CC:DD:EE:FF") << text;
}

TEST(MacAddress, OfAnyOtherFormIsRefusedAndTheFormTold)
{
    for (const char* text :
         {"", "00:1A:2B:3C:4D", "00:1A:2B:3C:4D:5E:6F", "00:1A:2B:3C:4D:5", "0:1A:2B:3C:4D:5E",
          "00:1A:2B:3C:4D:5G", "00:1A-2B:3C:4D:5E", "00:1A2B:3C:4D:5E", "001A:2B3C:4D5E", ":001A2B3C4D5E",
          "00:1A:2B:3C:4D:5E:", " 00:1A:2B:3C:4D:5E", "00:1A:2B:3C:4D:5E\n", "0x1A2B3C4D5E", "+01A2B3C4D5E",
          "００:1A:2B:3C:4D:5E", "00::1A:2B:3C:4D:5E"})
        EXPECT_THAT(refusal([text] { cli::parseMacAddress(text); }),
                    AllOf(HasSubstr("MAC \""), HasSubstr("such as 00:1A:2B:3C:4D:5E")))
            << text;
}

TEST(MacAddress, ThatNoCameraCanHaveIsRefused)
{
    EXPECT_THAT(refusal([] { cli::parseMacAddress("00:00:00:00:00:00"); }), HasSubstr("is all zeros"));
    for (const char* group : {"FF:FF:FF:FF:FF:FF", "01:00:5E:00:00:01", "33:33:00:00:00:01"})
        EXPECT_THAT(refusal([group] { cli::parseMacAddress(group); }),
                    HasSubstr("is the address of a group"));
}
