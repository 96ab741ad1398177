// SPDX-License-Identifier: Apache-2.0
// Changes of many cameras side by side, by real packets.
#include "tests/network/Sdk.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace {

using simulator_tests::runningCamera;
using testing::Each;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

constexpr int Cameras = 8;

base::Ipv4 wantedAddress(int camera)
{
    return "192.168.1.50"_ip.plus(static_cast<std::uint32_t>(camera));
}

/// Half of them asked a DHCP server, half have chosen a link-local address.
std::string camerasJson()
{
    std::string all;
    for (int i = 0; i < Cameras; ++i) {
        const std::string number = std::to_string(i);
        all += std::string(i == 0 ? "" : ", ") + R"({"mac": ")" + macOf(i) + R"(", "serial": "S)" + number +
               R"(", "address": ")" + (i % 2 == 0 ? "192.168.1.2" : "169.254.3.2") + number +
               R"(", "ipConfiguration": ")" + (i % 2 == 0 ? "dhcp" : "lla") + R"("})";
    }
    return all;
}

RZ_CC_CHANGE changeOf(const RZ_CC_DEVICE_INFO& info, base::Ipv4 address, const std::string& name)
{
    RZ_CC_CHANGE change{};
    change.stInfo = info;
    RZ_CC_SETTINGS& wanted = change.stWanted;
    wanted.nParts = RZ_SETTING_METHOD | RZ_SETTING_ADDRESS | RZ_SETTING_STORED | RZ_SETTING_NAME;
    wanted.nIpConfig = 1;
    wanted.nIp = wanted.nStoredIp = address.number();
    wanted.nSubnetMask = wanted.nStoredMask = ("255.255.255.0"_ip).number();
    name.copy(wanted.szUserDefinedName, sizeof wanted.szUserDefinedName - 1);
    change.nPatience = 20000;
    return change;
}

/// What the line has told, by the number of the change.
struct Told
{
    std::map<unsigned, unsigned> steps; ///< As bits.
    std::map<unsigned, int> errors;
    std::map<unsigned, std::string> texts;

    RZ_CC_LINE_SINK sink()
    {
        return {this,
                [](void* context, unsigned number, unsigned step) {
                    static_cast<Told*>(context)->steps[number] |= step;
                },
                [](void* context, unsigned number, const RZ_CC_CHANGE_RESULT* result) {
                    auto& told = *static_cast<Told*>(context);
                    told.errors[number] = result->nError;
                    told.texts[number] = result->szError;
                }};
    }
};

} // namespace

TEST(Line, GivesManyCamerasStaticAddressesSideBySide)
{
    Site site;
    lab::Farm& farm = site.addCameras(site.addAdapter("eth0", "192.168.1.5/24"), camerasJson());
    const auto records = enumerate(site);
    ASSERT_THAT(records, SizeIs(Cameras));

    Told told;
    {
        const lab::Visit visit(site.host());
        void* line = nullptr;
        ASSERT_EQ(RZ_CC_OpenLine(&line), RZ_OK);
        for (int i = 0; i < Cameras; ++i) {
            const auto change =
                changeOf(*recordOf(records, macOf(i)), wantedAddress(i), "Gate " + std::to_string(i));
            unsigned number = 0;
            ASSERT_EQ(RZ_CC_BeginChange(line, &change, &number), RZ_OK);
            EXPECT_EQ(RZ_CC_BeginChange(line, &change, &number), RZ_ERROR_PARAMETER) << "it is under way";
        }
        const RZ_CC_LINE_SINK sink = told.sink();
        for (std::size_t before = 0; told.errors.size() < Cameras; before = told.errors.size()) {
            ASSERT_EQ(RZ_CC_ServeLine(line, 60000, &sink), RZ_OK);
            ASSERT_GT(told.errors.size(), before) << "it returns when a change has ended";
        }
        EXPECT_EQ(RZ_CC_CloseLine(line), RZ_OK);
        EXPECT_EQ(RZ_CC_ServeLine(line, 0, &sink), RZ_ERROR_HANDLE);
    }
    EXPECT_THAT(told.texts, Each(Pair(testing::_, IsEmpty())));
    EXPECT_THAT(told.errors, Each(Pair(testing::_, int{RZ_OK})));
    EXPECT_THAT(told.steps,
                Each(Pair(testing::_, unsigned{RZ_STEP_FORCED | RZ_STEP_STORED | RZ_STEP_CONFIGURED |
                                               RZ_STEP_NAMED | RZ_STEP_RESTARTED})));
    for (int i = 0; i < Cameras; ++i) {
        const auto camera = runningCamera(farm, macOf(i));
        EXPECT_EQ(camera.at("address"), wantedAddress(i).toText());
        EXPECT_EQ(camera.at("ipConfiguration"), "persistent");
        EXPECT_EQ(camera.at("persistent").at("address"), wantedAddress(i).toText());
        EXPECT_EQ(camera.at("userName"), "Gate " + std::to_string(i));
    }
}

TEST(Line, TellsWhatItIsGivenWrongly)
{
    unsigned number = 0;
    RZ_CC_CHANGE change{};
    EXPECT_EQ(RZ_CC_OpenLine(nullptr), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_BeginChange(&number, nullptr, &number), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_BeginChange(&number, &change, &number), RZ_ERROR_HANDLE);
    EXPECT_EQ(RZ_CC_ServeLine(&number, 0, nullptr), RZ_ERROR_PARAMETER);
    EXPECT_EQ(RZ_CC_CloseLine(&number), RZ_ERROR_HANDLE);
}
