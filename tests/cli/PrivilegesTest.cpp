// SPDX-License-Identifier: Apache-2.0
#include "cli/session/Privileges.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST(Privileges, AreReadFromTheEffectiveCapabilities)
{
    const std::string before = "Name:\tCapEff: list\nCapInh:\t0000000000002000\nCapPrm:\t0000000000002000\n";
    EXPECT_TRUE(cli::hasRawSocketCapability(before + "CapEff:\t0000000000002000\nCapBnd:\t0\n"));
    EXPECT_TRUE(cli::hasRawSocketCapability(before + "CapEff:\t000001ffffffffff\n"));
    EXPECT_FALSE(cli::hasRawSocketCapability(before + "CapEff:\t000001ffffffdfff\n"));
    EXPECT_FALSE(cli::hasRawSocketCapability(before + "CapEff:\t0000000000000000\n"));
    EXPECT_FALSE(cli::hasRawSocketCapability(before));
    EXPECT_FALSE(cli::hasRawSocketCapability(""));
}

TEST(Privileges, AreHadByACommandThatAShellTakesAsItStands)
{
    EXPECT_THAT(cli::rawSocketHint("/usr/bin/ip-configurator-cli"),
                HasSubstr("sudo setcap cap_net_raw+ep /usr/bin/ip-configurator-cli\n"));
    EXPECT_THAT(cli::rawSocketHint("/home/o'neill/my tools/cli"),
                HasSubstr("sudo setcap cap_net_raw+ep '/home/o'\\''neill/my tools/cli'\n"));
}
