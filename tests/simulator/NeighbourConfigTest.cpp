// SPDX-License-Identifier: Apache-2.0
#include "simulator/config/ReadFarm.h"
#include "tests/simulator/ConfigErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace simulator;
using namespace base::literals;
using Asks = NeighbourConfig::Asks;
using testing::HasSubstr;

std::string withNeighbours(const std::string& neighbours)
{
    return R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20"}], "neighbours": [)" +
           neighbours + "]}";
}

TEST(NeighbourConfig, ReadsEveryMember)
{
    const FarmConfig farm = readFarm(withNeighbours(R"(
        {"mac": "02:A0:00:00:00:01", "address": "192.168.1.20"},
        {"mac": "02:A0:00:00:00:02", "asks": "dhcp", "every": 10},
        {"mac": "02:A0:00:00:00:03", "asks": "arp", "address": "192.168.1.30", "every": 60000},
        {"mac": "02:A0:00:00:00:04", "asks": "announce", "address": "192.168.1.31"})"));
    EXPECT_EQ(farm.cameras.size(), 1u);
    ASSERT_EQ(farm.neighbours.size(), 4u);
    const auto& all = farm.neighbours;
    EXPECT_EQ(all[0].mac.toText(), "02:A0:00:00:00:01");
    EXPECT_EQ(all[0].address, "192.168.1.20"_ip) << "a camera's as well";
    EXPECT_EQ(all[0].asks, Asks::Nothing);
    EXPECT_EQ(all[1].asks, Asks::Dhcp);
    EXPECT_EQ(all[1].address, base::Ipv4());
    EXPECT_EQ(all[1].every.count(), 10);
    EXPECT_EQ(all[2].asks, Asks::ArpProbe);
    EXPECT_EQ(all[2].address, "192.168.1.30"_ip);
    EXPECT_EQ(all[2].every.count(), 60000);
    EXPECT_EQ(all[3].asks, Asks::Announcement);
    EXPECT_EQ(all[3].every.count(), 2000);
}

TEST(NeighbourConfig, NeedsNoCamerasBesideIt)
{
    const FarmConfig farm = readFarm(R"({"neighbours": [{"mac": "02:A0:00:00:00:01", "asks": "dhcp"}]})");
    EXPECT_TRUE(farm.cameras.empty());
    EXPECT_EQ(farm.neighbours.size(), 1u);
    EXPECT_THAT(errorOf(R"({"neighbours": []})"), HasSubstr("at least one camera"));
}

TEST(NeighbourConfig, SaysWhichNeighbourAndMemberIsWrongAndWhatIsAllowed)
{
    const struct
    {
        const char* members;
        const char* error;
    } table[] = {
        {R"("adress": "10.0.0.1")", R"("adress" is unknown; known here are mac, address, asks, every)"},
        {R"("model": "M")", R"("model" is unknown)"},
        {R"("every": 500, "address": "10.0.0.1")", R"("every" needs "asks")"},
        {R"("asks": "tftp")", R"("asks" must be one of "dhcp", "arp", "announce")"},
        {R"("asks": 5)", R"("asks" must be one of)"},
        {R"("asks": "dhcp", "address": "10.0.0.1")", R"("address" cannot go with "asks": "dhcp")"},
        {R"("asks": "dhcp", "every": 9)", R"("every" must be a whole number from 10 to 60000)"},
        {R"("asks": "dhcp", "every": 60001)", R"("every" must be a whole number from 10 to 60000)"},
        {R"("asks": "arp")", R"("address" is missing)"},
        {R"("asks": "announce")", R"("address" is missing)"},
        {R"("asks": "arp", "address": "0.0.0.0")", R"("address" must be one that a machine can have)"},
        {R"("address": "224.0.0.1")", R"("address" must be one that a machine can have)"},
        {R"("address": "10.0.0")", R"("address" must be an IPv4 address)"},
    };
    for (const auto& each : table) {
        const std::string error =
            errorOf(withNeighbours(R"({"mac": "02:A0:00:00:00:01", )" + std::string(each.members) + "}"));
        EXPECT_THAT(error, HasSubstr("neighbours[0] (02:A0:00:00:00:01): ")) << each.members;
        EXPECT_THAT(error, HasSubstr(each.error));
    }
    EXPECT_THAT(errorOf(withNeighbours(R"({"mac": "02:A0:00:00:00:01"})")),
                HasSubstr(R"("address" is missing)"));
    EXPECT_THAT(errorOf(withNeighbours("{}")), HasSubstr(R"(neighbours[0]: "mac" is missing)"));
    EXPECT_THAT(errorOf(withNeighbours("7")), HasSubstr("neighbours[0]: must be an object"));
    EXPECT_THAT(errorOf(withNeighbours(R"({"mac": "01:00:5E:00:00:01"})")), HasSubstr(R"("mac" must be)"));
    EXPECT_THAT(errorOf(R"({"neighbours": {}})"), HasSubstr(R"("neighbours" must be a list)"));
}

TEST(NeighbourConfig, RefusesACamerasMacAndOneTwice)
{
    EXPECT_THAT(errorOf(withNeighbours(R"({"mac": "00:1A:2B:00:00:01", "asks": "dhcp"})")),
                HasSubstr(R"(neighbours[0] (00:1A:2B:00:00:01): "mac" is another one's already)"));
    EXPECT_THAT(errorOf(withNeighbours(R"({"mac": "02:A0:00:00:00:01", "asks": "dhcp"},
                                          {"mac": "02:A0:00:00:00:01", "address": "10.0.0.1"})")),
                HasSubstr(R"(neighbours[1] (02:A0:00:00:00:01): "mac" is another one's already)"));
}

TEST(NeighbourConfig, RefusesMoreThanAFarmHas)
{
    const auto many = [](int count) {
        std::string list;
        for (int i = 0; i < count; ++i)
            list += std::string(i == 0 ? "" : ",") + R"({"mac": "02:A0:00:00:)" + (i < 256 ? "00" : "01") +
                    ":" + "0123456789ABCDEF"[i / 16 % 16] + "0123456789ABCDEF"[i % 16] +
                    R"(", "asks": "dhcp"})";
        return withNeighbours(list);
    };
    EXPECT_EQ(readFarm(many(256)).neighbours.size(), 256u);
    EXPECT_THAT(errorOf(many(257)), HasSubstr("lists 257 neighbours; one farm has at most 256"));
}

} // namespace
