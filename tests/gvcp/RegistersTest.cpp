// SPDX-License-Identifier: Apache-2.0
#include "gvcp/Registers.h"

#include <gtest/gtest.h>

// The addresses as tshark's dissector names them.
TEST(Registers, OfTheOtherInterfacesStandInBlocksOfTheirOwn)
{
    struct Row
    {
        std::uint32_t first;
        std::uint32_t second;
        std::uint32_t fourth;
    };
    constexpr Row rows[] = {
        {gvcp::reg::MacHigh, 0x0680, 0x0780},           {gvcp::reg::MacLow, 0x0684, 0x0784},
        {gvcp::reg::SupportedIpConfig, 0x0688, 0x0788}, {gvcp::reg::CurrentIpConfig, 0x068C, 0x078C},
        {gvcp::reg::PersistentIp, 0x06CC, 0x07CC},      {gvcp::reg::PersistentSubnetMask, 0x06DC, 0x07DC},
        {gvcp::reg::PersistentGateway, 0x06EC, 0x07EC},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(gvcp::reg::ofInterface(0, row.first), row.first);
        EXPECT_EQ(gvcp::reg::ofInterface(1, row.first), row.second);
        EXPECT_EQ(gvcp::reg::ofInterface(3, row.first), row.fourth);
    }
}
