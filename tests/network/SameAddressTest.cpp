// SPDX-License-Identifier: Apache-2.0
// Two cameras with one address, the factory's for instance. Whom the host's neighbour table names gets the
// commands.
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using simulator_tests::shown;
using testing::HasSubstr;

const std::string Meant = "02:00:00:00:01:01";
const std::string Other = "02:00:00:00:01:02";
constexpr unsigned UserName = 0xE8;
constexpr unsigned IpConfiguration = 0x14;
constexpr unsigned PersistentIp = 0x64C;
constexpr unsigned Reset = 0x10000;

class SameAddress : public testing::Test
{
protected:
    SameAddress()
    {
        const auto camera = [](const std::string& mac, const char* persistent) {
            return R"({"mac": ")" + mac +
                   R"(", "address": "192.168.1.20", "userName": "As before", "ipConfiguration": "persistent", "rebootTime": 50, "heartbeatTimeout": 200,
                      "persistent": {"address": ")" +
                   persistent + "\"}}";
        };
        farm = &site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"),
                                camera(Meant, "192.168.1.20") + "," + camera(Other, "192.168.1.20"));
        record = recordOf(enumerate(site), Meant);
    }

    /// From now on, what is sent to the address reaches this camera.
    void direct(const std::string& mac) const
    {
        site.host().run("ip neigh replace 192.168.1.20 lladdr " + mac + " dev eth0 nud permanent");
    }

    std::string errorText() const
    {
        char text[200] = "";
        EXPECT_EQ(RZ_CC_GetErrorText(record, text, sizeof text), RZ_OK);
        return text;
    }

    void expectOtherUntouched() const
    {
        const auto other = shown(*farm, Other);
        EXPECT_EQ(other.at("userName"), "As before");
        EXPECT_EQ(other.at("address"), "192.168.1.20");
        EXPECT_EQ(other.at("ipConfiguration"), "persistent");
        EXPECT_EQ(other.at("persistent").at("address"), "192.168.1.20");
        EXPECT_EQ(other.at("resets"), 0);
    }

    Site site;
    lab::Farm* farm = nullptr;
    const RZ_CC_DEVICE_INFO* record = nullptr;
};

} // namespace

TEST_F(SameAddress, OpensTheCameraThatWasMeantOrNone)
{
    direct(Other);
    {
        const OpenCamera camera(site, *record);
        EXPECT_EQ(camera.result(), RZ_ERROR_OTHER_CAMERA);
        EXPECT_FALSE(shown(*farm, Other).at("held")) << "it is given back at once";
    }
    EXPECT_EQ(errorText(), "at its address 192.168.1.20 the camera " + Other + " answers and not " + Meant);
    direct(Meant);
    EXPECT_EQ(OpenCamera(site, *record).result(), RZ_OK);
    EXPECT_EQ(errorText(), "");
    expectOtherUntouched();
}

TEST_F(SameAddress, EndsWhenTheOtherOneAnswersInMidSession)
{
    direct(Meant);
    const OpenCamera camera(site, *record);
    ASSERT_EQ(camera.result(), RZ_OK);
    direct(Other);
    try {
        camera.write(Reset, 1);
        ADD_FAILURE() << "the other camera was restarted";
    } catch (const GenICam::GenericException& error) {
        EXPECT_THAT(error.what(), HasSubstr("the camera " + Other + " answers and not " + Meant));
    }
    direct(Meant);
    EXPECT_EQ(camera.port(), nullptr) << "that session is over";
    EXPECT_EQ(camera.descriptionResult(), RZ_ERROR_OTHER_CAMERA);
    expectOtherUntouched();
    EXPECT_EQ(shown(*farm, Meant).at("resets"), 0);
}

TEST_F(SameAddress, TheForcedOneIsTheOneThatWasMeantAndItsAddressIsStoredThere)
{
    direct(Other);
    EXPECT_EQ(force(site, *record, "192.168.1.50"_ip), RZ_OK);
    EXPECT_EQ(shown(*farm, Meant).at("address"), "192.168.1.50");
    EXPECT_EQ(shown(*farm, Meant).at("persistent").at("address"), "192.168.1.50");
    expectOtherUntouched();
}

TEST_F(SameAddress, IsNeverStoredInTheOtherOne)
{
    direct(Other);
    EXPECT_EQ(force(site, *record, "192.168.1.20"_ip, "255.255.0.0"_ip), RZ_OK) << "another mask alone";
    EXPECT_TRUE(RZ_GIGE_IsForcedIpWaiting(record));
    EXPECT_EQ(OpenCamera(site, *record).result(), RZ_ERROR_OTHER_CAMERA);
    EXPECT_EQ(shown(*farm, Other).at("persistent").at("mask"), "255.255.255.0");
    direct(Meant);
    EXPECT_EQ(OpenCamera(site, *record).result(), RZ_OK);
    EXPECT_EQ(shown(*farm, Meant).at("persistent").at("mask"), "255.255.0.0");
    expectOtherUntouched();
}

TEST_F(SameAddress, NeverReachesTheOtherOneThoughItChangesFromPacketToPacket)
{
    const std::string replace = "ip neigh replace 192.168.1.20 dev eth0 nud permanent lladdr ";
    const std::string script =
        "while " + replace + Meant + " && sleep 0.02 && " + replace + Other + " && sleep 0.003; do :; done";
    const auto flipping = site.host().start({"sh", "-c", script});
    int done = 0;
    int ended = 0;
    for (int i = 0; i < 5000 && (done < 5 || ended < 5); ++i) {
        const OpenCamera camera(site, *record);
        auto* const port = camera.port();
        if (camera.result() != RZ_OK || !port)
            continue;
        try {
            port->Write("Changed\0\0\0\0\0\0\0\0", UserName, 16);
            port->Write("\xC0\xA8\x01\x63", PersistentIp, 4);
            port->Write("\0\0\0\6", IpConfiguration, 4);
            ++done;
        } catch (const GenICam::GenericException&) {
            ++ended;
        }
    }
    EXPECT_GE(done, 5);
    EXPECT_GE(ended, 5);
    expectOtherUntouched();
}
