// SPDX-License-Identifier: Apache-2.0
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// The farm's cameras as a client of others uses them: by their description and features.
namespace {

using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string Mac = "00:1A:2B:00:00:01";

class FarmClients : public testing::Test
{
protected:
    void build(const std::string& members = {})
    {
        network.attach(host, "eth0", "192.168.1.5/16");
        farm.emplace(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20",
            "userName": "Left", "rebootTime": 50)" +
                                  members + "}]}");
    }

    std::string tool(const std::vector<std::string>& words) const
    {
        std::vector<std::string> arguments{"arv-tool-0.8", "-n", "Farm Cameras-FC-1200M-FC000001"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const lab::Output output = host.execute(arguments);
        EXPECT_EQ(output.status, 0) << output.standardError;
        return output.standardOutput;
    }

    lab::Switch network;
    lab::Namespace host;
    std::optional<lab::Farm> farm;
};

TEST_F(FarmClients, FindTheFeaturesOfTheDescription)
{
    build();
    EXPECT_THAT(tool({"features"}),
                AllOf(HasSubstr("[RW] 'DeviceUserID'"), HasSubstr("[WO] 'DeviceReset'"),
                      HasSubstr("[RW] 'GevCurrentIPConfigurationDHCP'"),
                      HasSubstr("[RW] 'GevCurrentIPConfigurationPersistentIP'"),
                      HasSubstr("[RW] 'GevPersistentIPAddress'"), HasSubstr("[RO] 'GevCurrentIPAddress'")));
}

TEST_F(FarmClients, MissWhatTheDescriptionLeavesOut)
{
    build(R"(, "descriptionLeavesOut": ["DeviceUserID", "DeviceReset"])");
    EXPECT_THAT(tool({"features"}), AllOf(Not(HasSubstr("DeviceUserID")), Not(HasSubstr("DeviceReset")),
                                          HasSubstr("GevCurrentIPConfigurationDHCP")));
}

TEST_F(FarmClients, RenameACamera)
{
    build();
    EXPECT_EQ(tool({"control", "DeviceUserID"}), "DeviceUserID = Left\n");
    EXPECT_EQ(tool({"control", "DeviceUserID=Right"}), "DeviceUserID = Right\n");
    EXPECT_EQ(shown(*farm, Mac).at("userName"), "Right");
    EXPECT_EQ(shown(*farm, Mac).at("controller"), "none") << "control was given back";
}

TEST_F(FarmClients, ChangeTheNetworkSettingsAndResetTheCameraIntoThem)
{
    build();
    EXPECT_THAT(tool({"network"}), AllOf(HasSubstr("Mode: DHCP"), HasSubstr("Current IP: 192.168.1.20"),
                                         HasSubstr("Persistent IP: 0.0.0.0")));
    tool({"network", "ip=192.168.1.66", "mask=255.255.0.0", "gateway=192.168.1.5"});
    tool({"network", "mode=PersistentIP"});
    EXPECT_THAT(tool({"network"}),
                AllOf(HasSubstr("Mode: PersistentIP"), HasSubstr("Current IP: 192.168.1.20"),
                      HasSubstr("Persistent IP: 192.168.1.66"), HasSubstr("Persistent Mask: 255.255.0.0"),
                      HasSubstr("Persistent Gateway: 192.168.1.5")));
    tool({"control", "DeviceReset"});
    const auto camera = runningCamera(*farm, Mac);
    EXPECT_EQ(camera.at("resets"), 1);
    EXPECT_EQ(camera.at("address"), "192.168.1.66");
    EXPECT_THAT(host.run("arv-tool-0.8"), HasSubstr("FC000001 (192.168.1.66)"));
}

TEST_F(FarmClients, ReadTheSameDescriptionZippedOrNotFromAnyKindOfUrl)
{
    build();
    const std::string plain = tool({"genicam"});
    EXPECT_THAT(plain, AllOf(testing::StartsWith("<?xml"), HasSubstr("</RegisterDescription>")));
    const char* const others[] = {
        R"(, "descriptionZip": true)",
        R"(, "url": "LOCAL:A.XML;{ADDRESS};{LENGTH}?SchemaVersion=1.1.0")",
        R"(, "descriptionZip": true, "url": "local:{name};0x{ADDRESS};0x{LENGTH}")",
        R"(, "url": "", "secondUrl": "Local:{name};{address};{length}")",
    };
    for (const char* const members : others) {
        farm.emplace(network, R"({"cameras": [{"mac": "00:1A:2B:00:00:01", "address": "192.168.1.20")" +
                                  std::string(members) + "}]}");
        EXPECT_EQ(tool({"genicam"}), plain) << members;
    }
}

} // namespace
