// SPDX-License-Identifier: Apache-2.0
// Two of the host's adapters on one switch, with addresses of one subnet: cable and Wi-Fi, for instance.
// Linux answers ARP for both addresses on both, so what a camera sends to the one may come in on the other.
#include "tests/network/OpenCamera.h"
#include "tests/network/Sdk.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using simulator_tests::shown;

constexpr int Cameras = 12;
constexpr base::Ipv4 FirstAdapter = "192.168.1.5"_ip;
constexpr base::Ipv4 SecondAdapter = "192.168.1.6"_ip;

/// By reverse-path filter.
class SharedSwitch : public testing::TestWithParam<int>
{
protected:
    SharedSwitch()
    {
        auto& network = site.addAdapter("eth0", "192.168.1.5/24");
        network.attach(site.host(), "wlan0", "192.168.1.6/24");
        farm = &site.addCameras(network,
                                R"({"mac": "02:00:00:00:01:00", "address": "192.168.1.20", "repeat": 12,
                "ipConfiguration": "persistent"})");
        site.setReversePathFilter(GetParam());
    }

    Site site;
    lab::Farm* farm = nullptr;
};

} // namespace

TEST_P(SharedSwitch, CamerasAreHeardFreeAndOpenedByEitherAdapter)
{
    const auto records = enumerate(site);
    for (int i = 0; i < Cameras; ++i) {
        int heard = 0;
        for (const base::Ipv4 adapter : {FirstAdapter, SecondAdapter}) {
            const auto* const record = recordOf(records, macOf(i), adapter);
            if (!record)
                continue;
            ++heard;
            SCOPED_TRACE(macOf(i) + (adapter == FirstAdapter ? " by eth0" : " by wlan0"));
            {
                const lab::Visit visit(site.host());
                EXPECT_TRUE(RZ_CC_IsDeviceAccessible(record, RZ_ACCESS_EXCLUSIVE));
            }
            const std::string name = adapter == FirstAdapter ? "by eth0" : "by wlan";
            const OpenCamera camera(site, *record);
            ASSERT_EQ(camera.result(), RZ_OK);
            camera.port()->Write((name + '\0').c_str(), 0xE8, 8);
            EXPECT_EQ(shown(*farm, macOf(i)).at("userName"), name);
        }
        EXPECT_GT(heard, 0);
    }
}

TEST_P(SharedSwitch, CamerasAreForcedByEitherAdapter)
{
    const auto records = enumerate(site);
    constexpr base::Ipv4 First = "192.168.1.101"_ip;
    base::Ipv4 next = First;
    for (int i = 0; i < Cameras; ++i) {
        for (const base::Ipv4 adapter : {FirstAdapter, SecondAdapter}) {
            const auto* const record = recordOf(records, macOf(i), adapter);
            if (!record)
                continue;
            EXPECT_EQ(force(site, *record, next), RZ_OK);
            const std::string address = next.toText();
            next = next.plus(1);
            EXPECT_EQ(shown(*farm, macOf(i)).at("address"), address);
            EXPECT_EQ(shown(*farm, macOf(i)).at("persistent").at("address"), address) << "stored, too";
        }
    }
    EXPECT_GE(next, First.plus(Cameras));
}

INSTANTIATE_TEST_SUITE_P(ReversePathFilter, SharedSwitch, testing::Values(0, 1, 2));
