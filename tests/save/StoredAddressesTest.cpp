// SPDX-License-Identifier: Apache-2.0
// From each way of obtaining an address to another, for as long as the camera lives.
#include "tests/save/FarmSaves.h"
#include "tests/simulator/DhcpServer.h"
#include "tests/simulator/ObtainedAddresses.h"

#include <gmock/gmock.h>

using nlohmann::json;
using simulator_tests::DhcpServer;
using simulator_tests::Leased;
using simulator_tests::LeasedAddress;
using simulator_tests::LinkLocal;
using simulator_tests::LinkLocalAddress;
using testing::ElementsAre;
using testing::MatchesRegex;

namespace {

constexpr char Static[] = R"("ipConfiguration": "persistent",
    "persistent": {"address": "192.168.1.20", "mask": "255.255.0.0", "gateway": "192.168.0.1"})";

constexpr char StaticAddress[] = "192\\.168\\.1\\.20";
constexpr char NewAddress[] = "192\\.168\\.2\\.20";

struct Story
{
    const char* name;
    std::string members;    ///< The camera at first.
    std::string type;       ///< What is wanted; "Static IP" with the new address.
    std::string atFirst;    ///< The address then, as a pattern,
    std::string afterwards; ///< and in the end.
    std::string ipConfiguration;
    std::string stored; ///< The address in its registers in the end.
    bool isReset;
};

class StoredAddresses : public FarmSaves, public testing::WithParamInterface<Story>
{
protected:
    void expectAsWanted(const json& after)
    {
        EXPECT_THAT(after.at("address").get<std::string>(), MatchesRegex(GetParam().afterwards));
        EXPECT_EQ(after.at("ipConfiguration"), GetParam().ipConfiguration);
        EXPECT_EQ(after.at("persistent").at("address"), GetParam().stored);
        const bool isStored = after.at("persistent").at("address") != "0.0.0.0";
        EXPECT_EQ(after.at("persistent").at("mask"), isStored ? "255.255.0.0" : "0.0.0.0");
        EXPECT_EQ(after.at("persistent").at("gateway"), isStored ? "192.168.0.1" : "0.0.0.0");
        if (GetParam().afterwards == LeasedAddress) {
            EXPECT_EQ(server.leases().at(macOf(0)), after.at("address"));
        }
    }

    DhcpServer server{site.host(), simulator_tests::LeasedRange};
};

} // namespace

TEST_P(StoredAddresses, AreWhatTheCameraHasAfterItsResetAndAfterAPowerCycle)
{
    build(GetParam().members);
    ASSERT_THAT(camera(0).at("address").get<std::string>(), MatchesRegex(GetParam().atFirst));
    const int resets = camera(0).at("resets");
    saves[0].wantType(GetParam().type.c_str());
    if (GetParam().afterwards == NewAddress) {
        saves[0].wantAddress(newAddress(0));
        saves[0].wanted.m_strSubnetMask = "255.255.0.0";
        saves[0].wanted.m_strDefaultGateway = "192.168.0.1";
    }
    saveAll();
    const std::vector<std::string> said{Rebooting, "Refresh", "End"};
    EXPECT_EQ(saves[0].said(), std::vector(said.begin() + (GetParam().isReset ? 0 : 1), said.end()));

    const json after = camera(0);
    EXPECT_EQ(after.at("resets"), resets + (GetParam().isReset ? 1 : 0));
    EXPECT_TRUE(becomesFree(0));
    expectAsWanted(after);
    expectAsWanted(afterPowerCycle(0));
}

INSTANTIATE_TEST_SUITE_P(Stories, StoredAddresses,
                         testing::Values(Story{"DhcpToStatic", Leased, "Static IP", LeasedAddress, NewAddress,
                                               "persistent", "192.168.2.20", true},
                                         Story{"LinkLocalToStatic", LinkLocal, "Static IP", LinkLocalAddress,
                                               NewAddress, "persistent", "192.168.2.20", true},
                                         Story{"StaticToAnother", Static, "Static IP", StaticAddress,
                                               NewAddress, "persistent", "192.168.2.20", false},
                                         Story{"StaticToDhcp", Static, "DHCP", StaticAddress, LeasedAddress,
                                               "dhcp", "192.168.1.20", true},
                                         Story{"StaticToLinkLocal", Static, "LLA", StaticAddress,
                                               LinkLocalAddress, "lla", "192.168.1.20", true},
                                         Story{"DhcpToLinkLocal", Leased, "LLA", LeasedAddress,
                                               LinkLocalAddress, "lla", "0.0.0.0", true},
                                         Story{"LinkLocalToDhcp", LinkLocal, "DHCP", LinkLocalAddress,
                                               LeasedAddress, "dhcp", "0.0.0.0", true}),
                         [](const testing::TestParamInfo<Story>& story) { return story.param.name; });

TEST_F(FarmSaves, RenamingALeasedCameraTouchesNeitherItsStoredAddressNorItsRun)
{
    build(std::string(ByDhcp) +
          R"(, "persistent": {"address": "10.0.0.9", "mask": "255.0.0.0", "gateway": "10.0.0.1"})");
    const json before = camera(0);
    saves[0].wantName("New");
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre("Refresh", "End"));
    json after = camera(0);
    EXPECT_EQ(after.at("userName"), "New");
    for (const char* const changed : {"userName", "userNameBytes", "received"})
        after[changed] = before.at(changed);
    EXPECT_EQ(after, before);
}

TEST_F(FarmSaves, ACameraThatIsHeardOnItsSecondInterfaceIsChangedThereAlone)
{
    build(std::string(ByDhcp) +
          R"(, "interface": 1, "interfaceMacs": ["02:00:00:00:01:AA", "02:00:00:00:01:00"])");
    const json first = camera(0).at("interfaces").at(0);
    saves[0].wantStatic(newAddress(0));
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    const json after = camera(0);
    EXPECT_EQ(after.at("interfaces").at(0), first);
    EXPECT_EQ(after.at("interfaces").at(1).at("address"), newAddress(0));
    EXPECT_EQ(after.at("interfaces").at(1).at("ipConfigurationBits"), 0x7);
    EXPECT_EQ(after.at("address"), newAddress(0)) << "after its reset";

    findAgain();
    saves[0].wantType("DHCP");
    saveAll();
    EXPECT_EQ(camera(0).at("interfaces").at(0), first);
    EXPECT_EQ(camera(0).at("interfaces").at(1).at("ipConfigurationBits"), 0x6);
}
