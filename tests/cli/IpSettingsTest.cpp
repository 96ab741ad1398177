// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments/AddressArguments.h"
#include "cli/arguments/Arguments.h"
#include "cli/cameras/Camera.h"
#include "tests/cli/Refusal.h"

#include <gmock/gmock.h>

using namespace base::literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Texts
{
    std::string address = "192.168.1.20";
    std::string mask = "255.255.255.0";
    std::string gateway = "0.0.0.0";
};

base::IpSettings parse(const Texts& texts)
{
    return cli::parseIpSettings(
        {{}, {{"--ip", texts.address}, {"--mask", texts.mask}, {"--gateway", texts.gateway}}});
}

struct Refused
{
    Texts texts;
    const char* option;
    const char* reason;
};

void expectRefused(const std::vector<Refused>& table)
{
    for (const auto& [texts, option, reason] : table) {
        const std::string shown = texts.address + " " + texts.mask + " " + texts.gateway;
        EXPECT_THAT(refusal([&texts = texts] { parse(texts); }),
                    AllOf(StartsWith(std::string(option) + " \""), HasSubstr(reason), HasSubstr("allowed")))
            << shown;
    }
}

} // namespace

TEST(IpSettings, AreTheValuesOfTheOptionsWithoutAGatewayUnlessOneIsGiven)
{
    const base::IpSettings settings =
        parse({.address = "192.168.1.20", .mask = "255.255.254.0", .gateway = "192.168.0.1"});
    EXPECT_EQ(settings.address, "192.168.1.20"_ip);
    EXPECT_EQ(settings.mask, "255.255.254.0"_ip);
    EXPECT_EQ(settings.gateway, "192.168.0.1"_ip);
    EXPECT_EQ(cli::parseIpSettings({{}, {{"--ip", "192.168.1.20"}, {"--mask", "255.255.255.0"}}}),
              (base::IpSettings{"192.168.1.20"_ip, "255.255.255.0"_ip, {}}));
}

TEST(IpSettings, AreTakenUpToTheirLimits)
{
    for (const Texts& texts : {
             Texts{.address = "1.0.0.1", .mask = "255.0.0.0"},
             Texts{.address = "126.255.255.254", .mask = "128.0.0.0"},
             Texts{.address = "128.0.0.1"},
             Texts{.address = "223.255.255.254"},
             Texts{.address = "192.168.1.1", .mask = "255.255.255.252", .gateway = "192.168.1.2"},
             Texts{.address = "192.168.1.0", .mask = "255.255.0.0"},
             Texts{.address = "192.168.1.255", .mask = "255.255.0.0", .gateway = "192.168.255.254"},
             Texts{.address = "169.254.7.7", .mask = "255.255.0.0"},
         })
        EXPECT_NO_THROW(parse(texts)) << texts.address << " " << texts.mask;
}

TEST(IpSettings, AreRefusedWhenATextIsNoAddress)
{
    for (const char* text :
         {"",         " ",        "1.2.3",    "1.2.3.4.5",  "1.2.3.256", "1.2.3.1000", "1.2.3.4294967297",
          "1.2.3.-4", "+1.2.3.4", " 1.2.3.4", "1.2.3.4 ",   "1.2. 3.4",  "1.2.3.4\n",  "1..3.4",
          ".1.2.3",   "1.2.3.",   "01.2.3.4", "1.2.3.00",   "0x1.2.3.4", "1.2.3.x",    "camera",
          "::1",      "1,2,3,4",  "１.2.3.4", "\xFF.2.3.4", "24"}) {
        expectRefused({{{.address = text}, "--ip", "is no IPv4 address"},
                       {{.mask = text}, "--mask", "is no IPv4 address"},
                       {{.gateway = text}, "--gateway", "is no IPv4 address"}});
    }
}

TEST(IpSettings, AreRefusedWhenTheMaskIsNoneForTwoHosts)
{
    expectRefused({
        {{.mask = "255.0.255.0"}, "--mask", "only ones before zeros"},
        {{.mask = "255.255.255.253"}, "--mask", "only ones before zeros"},
        {{.mask = "0.0.0.255"}, "--mask", "only ones before zeros"},
        {{.mask = "127.255.255.255"}, "--mask", "only ones before zeros"},
        {{.mask = "0.0.0.0"}, "--mask", "makes all addresses one subnet"},
        {{.mask = "255.255.255.254"}, "--mask", "no room for a camera and a host"},
        {{.mask = "255.255.255.255"}, "--mask", "no room for a camera and a host"},
    });
}

TEST(IpSettings, AreRefusedWhenNoHostCanHaveTheAddress)
{
    expectRefused({
        {{.address = "0.0.0.0"}, "--ip", "begins with 0"},
        {{.address = "0.1.2.3"}, "--ip", "begins with 0"},
        {{.address = "127.0.0.1"}, "--ip", "loopback"},
        {{.address = "224.0.0.1"}, "--ip", "multicast"},
        {{.address = "239.255.255.254"}, "--ip", "multicast"},
        {{.address = "240.0.0.1"}, "--ip", "reserved"},
        {{.address = "255.255.255.255"}, "--ip", "reserved"},
        {{.address = "192.168.1.0"}, "--ip", "the subnet itself"},
        {{.address = "192.168.1.255"}, "--ip", "the broadcast address"},
        {{.address = "192.168.1.4", .mask = "255.255.255.252"},
         "--ip",
         "192.168.1.5 to 192.168.1.6 are allowed"},
        {{.address = "192.168.1.7", .mask = "255.255.255.252"},
         "--ip",
         "192.168.1.5 to 192.168.1.6 are allowed"},
        {{.address = "10.255.255.255", .mask = "255.0.0.0"},
         "--ip",
         "10.0.0.1 to 10.255.255.254 are allowed"},
    });
}

TEST(IpSettings, AreRefusedWhenTheGatewayIsNoOtherHostOfTheSubnet)
{
    expectRefused({
        {{.gateway = "192.168.2.1"}, "--gateway", "not in the subnet of --ip 192.168.1.20"},
        {{.gateway = "0.0.0.1"}, "--gateway", "not in the subnet"},
        {{.gateway = "192.168.1.0"}, "--gateway", "the subnet itself"},
        {{.gateway = "192.168.1.255"}, "--gateway", "the broadcast address"},
        {{.gateway = "192.168.1.20"}, "--gateway", "the camera's own new address"},
        {{.address = "126.0.0.1", .mask = "128.0.0.0", .gateway = "127.0.0.1"}, "--gateway", "loopback"},
    });
}

TEST(IpSettings, AreDescribedInWords)
{
    EXPECT_EQ(cli::describe(parse({})), "192.168.1.20, mask 255.255.255.0, no gateway");
    EXPECT_EQ(cli::describe(parse({.gateway = "192.168.1.1"})),
              "192.168.1.20, mask 255.255.255.0, gateway 192.168.1.1");
}
