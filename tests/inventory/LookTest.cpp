// SPDX-License-Identifier: Apache-2.0
// A look at simulated cameras behind real adapters.
#include "inventory/Look.h"
#include "tests/network/Site.h"
#include "tests/support/Sanitizers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace base::literals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace inventory {
namespace {

Inventory lookOn(const Site& site, const Look::Plan& plan = {})
{
    const lab::Visit visit(site.host());
    Look look;
    return look.once(plan);
}

const Camera& cameraOf(const Inventory& inventory, int number)
{
    const Camera* const camera = inventory.cameraWith(*base::MacAddress::parse(macOf(number)));
    if (!camera)
        throw std::runtime_error("camera " + std::to_string(number) + " was not heard");
    return *camera;
}

std::string camera(int number, const std::string& members)
{
    return R"({"mac": ")" + macOf(number) + "\", " + members + "}";
}

} // namespace

TEST(Look, FindsWhatTheCamerasSayOfThemselves)
{
    Site site;
    site.addCameras(site.addAdapter("line0", "192.168.10.1/24"),
                    camera(1, R"("manufacturer": "Maker", "model": "FC-1", "version": "2.1", "serial": "S1",
                                 "userName": "Left", "ipConfiguration": "persistent",
                                 "address": "192.168.10.21", "gateway": "192.168.10.254",
                                 "persistent": {"address": "192.168.10.99"}, "linkSpeed": 100,
                                 "heldBy": "192.168.10.77", "heldPrivilege": "control", "heldPort": 50123,
                                 "heartbeatOff": true, "stream": "192.168.10.78:50020")"));
    const Inventory found = lookOn(site);
    ASSERT_THAT(found.cameras, SizeIs(1));
    const Camera& left = found.cameras[0];
    EXPECT_EQ(left.mac.toText(), macOf(1));
    EXPECT_EQ(left.vendor, "Maker");
    EXPECT_EQ(left.model, "FC-1");
    EXPECT_EQ(left.version, "2.1");
    EXPECT_EQ(left.serial, "S1");
    EXPECT_EQ(left.userName, "Left");
    EXPECT_EQ(left.method, IpMethod::Static);
    EXPECT_EQ(left.ip.address, "192.168.10.21"_ip);
    EXPECT_EQ(left.ip.gateway, "192.168.10.254"_ip);
    EXPECT_EQ(left.adapterName, "line0");
    EXPECT_EQ(left.adapterAddress, "192.168.10.1"_ip);
    EXPECT_EQ(left.status, Status::InUse);
    EXPECT_EQ(left.registers, Registers::Told);
    EXPECT_EQ(left.privilege, Privilege::Control);
    EXPECT_EQ(left.holder, (Endpoint{"192.168.10.77"_ip, 50123}));
    EXPECT_EQ(left.isHeartbeatOff, true);
    EXPECT_EQ(left.linkSpeed, 100u);
    EXPECT_EQ(left.stored->address, "192.168.10.99"_ip);
    EXPECT_EQ(left.stream, (Endpoint{"192.168.10.78"_ip, 50020}));
    EXPECT_TRUE(left.hearing.bySocket);
    EXPECT_TRUE(left.hearing.byUnicast);
    EXPECT_EQ(left.hearing.searches, 6u);
    EXPECT_EQ(left.hearing.answers, 6u);
    EXPECT_THAT(left.conflicts, IsEmpty());
    EXPECT_EQ(found.notSearched, "");
}

TEST(Look, ACameraThatIsHeldExclusivelyTellsNothing)
{
    Site site;
    site.addCameras(site.addAdapter("line0", "192.168.10.1/24"),
                    camera(1, R"("address": "192.168.10.21", "heldBy": "192.168.10.77")") + "," +
                        camera(2, R"("address": "192.168.10.22")"));
    const Inventory found = lookOn(site);
    EXPECT_EQ(cameraOf(found, 1).status, Status::InUse);
    EXPECT_EQ(cameraOf(found, 1).registers, Registers::Refused);
    EXPECT_EQ(cameraOf(found, 1).privilege, Privilege::Exclusive);
    EXPECT_EQ(cameraOf(found, 1).holder, std::nullopt);
    EXPECT_EQ(cameraOf(found, 2).status, Status::Free);
    EXPECT_EQ(cameraOf(found, 2).privilege, Privilege::None);
}

TEST(Look, TellsWhoseAnswersOnlyTheListenerHears)
{
    Site site;
    site.addCameras(site.addAdapter("line0", "192.168.10.1/24"),
                    camera(1, R"("address": "10.0.0.21", "answer": "broadcast")") + "," +
                        camera(2, R"("address": "192.168.10.22")"));
    site.setReversePathFilter(1);
    const Inventory found = lookOn(site);
    const Camera& outside = cameraOf(found, 1);
    EXPECT_EQ(outside.status, Status::Unreachable);
    EXPECT_FALSE(outside.hearing.bySocket);
    EXPECT_TRUE(outside.hearing.byListener);
    EXPECT_TRUE(outside.hearing.byBroadcast);
    EXPECT_FALSE(outside.hearing.byUnicast);
    EXPECT_TRUE(cameraOf(found, 2).hearing.bySocket);
    EXPECT_GT(found.reversePathDrops, 0u);
}

TEST(Look, WhatAFirewallDropsIsNoMatterOfTheReversePathFilter)
{
    Site site;
    site.addCameras(site.addAdapter("line0", "192.168.10.1/24"), camera(1, R"("address": "192.168.10.21")"));
    site.raiseFirewall();
    const Inventory found = lookOn(site);
    EXPECT_FALSE(cameraOf(found, 1).hearing.bySocket);
    EXPECT_TRUE(cameraOf(found, 1).hearing.byListener);
    EXPECT_EQ(found.reversePathDrops, 0u);
}

TEST(Look, AnAdapterWithoutAnAddressIsAskedToo)
{
    Site site;
    lab::Switch& line = site.addAdapter("line0", "192.168.10.1/24");
    site.addCameras(line, camera(1, R"("address": "192.168.10.21", "answer": "broadcast")"));
    site.host().run("ip addr flush dev line0");
    const Inventory found = lookOn(site);
    ASSERT_THAT(found.cameras, SizeIs(1));
    EXPECT_EQ(found.cameras[0].status, Status::Unreachable);
    EXPECT_EQ(found.cameras[0].adapterName, "line0");
    EXPECT_TRUE(found.cameras[0].adapterAddress.isUnspecified());
}

TEST(Look, TheOneOfTwoCamerasAtAnAddressThatDoesNotAnswerHasNoOthersRegisters)
{
    Site site;
    site.addCameras(site.addAdapter("line0", "192.168.10.1/24"),
                    camera(1, R"("address": "192.168.10.21", "linkSpeed": 100)") + "," +
                        camera(2, R"("address": "192.168.10.21", "linkSpeed": 2500)"));
    site.host().run("ip neigh replace 192.168.10.21 lladdr " + macOf(2) + " dev line0 nud permanent");
    const Inventory found = lookOn(site);
    EXPECT_EQ(cameraOf(found, 1).registers, Registers::OthersTold);
    EXPECT_EQ(cameraOf(found, 1).linkSpeed, std::nullopt);
    EXPECT_EQ(cameraOf(found, 2).linkSpeed, 2500u);
    EXPECT_THAT(cameraOf(found, 1).conflicts,
                ElementsAre(Conflict{Conflict::With::Camera, cameraOf(found, 2).mac}));
}

namespace {

/// A camera, and a machine with its address.
class MachineAtACamerasAddress : public testing::Test
{
protected:
    MachineAtACamerasAddress()
    {
        lab::Switch& line = site.addAdapter("line0", "192.168.10.1/24");
        site.addCameras(line, camera(1, R"("address": "192.168.10.21")"));
        line.attach(site.router(), "eth0", "192.168.10.21/24");
        site.router().run("ip link set eth0 address 02:00:00:00:00:99");
    }

    Site site;
    const Conflict withMachine{Conflict::With::Machine, *base::MacAddress::parse("020000000099")};
};

} // namespace

TEST_F(MachineAtACamerasAddress, IsFoundWhenItSpeaks)
{
    const lab::Visit visit(site.host());
    Look look;
    site.router().execute({"ping", "-c", "1", "-W", "1", "192.168.10.1"});
    EXPECT_THAT(cameraOf(look.once({}), 1).conflicts, ElementsAre(withMachine));
}

TEST_F(MachineAtACamerasAddress, IsFoundWhenItGetsTheCamerasCommands)
{
    site.host().run("ip neigh replace 192.168.10.21 lladdr 02:00:00:00:00:99 dev line0 nud permanent");
    const Inventory found = lookOn(site);
    EXPECT_EQ(cameraOf(found, 1).registers, Registers::Silent);
    EXPECT_EQ(cameraOf(found, 1).status, Status::InUse);
    EXPECT_THAT(cameraOf(found, 1).conflicts, ElementsAre(withMachine));
}

TEST(Look, HearsWhoAnnouncesAnAddress)
{
    Site site;
    lab::Switch& line = site.addAdapter("line0", "192.168.10.1/24");
    line.attach(site.router(), "eth0", "192.168.10.66/24");
    std::vector<Arrival> toldAtOnce;
    const lab::Visit visit(site.host());
    Look look;
    // It waits in the listener's socket until the look begins. The kernel announces a machine's new MAC.
    site.router().run("echo 1 >/proc/sys/net/ipv4/conf/eth0/arp_notify;"
                      "ip link set eth0 address 02:00:00:00:00:99");
    const Inventory found =
        look.once({.onArrival = [&](const Arrival& arrival) { toldAtOnce.push_back(arrival); }});
    const base::MacAddress mac = *base::MacAddress::parse("020000000099");
    EXPECT_THAT(found.arrivals,
                testing::Contains(Arrival{Arrival::Kind::Announcement, found.adapters.at(0).index, mac,
                                          "192.168.10.66"_ip}));
    EXPECT_EQ(toldAtOnce, found.arrivals);
}

TEST(Look, CountsQuestionsThatGetLost)
{
    Site site;
    lab::Switch& line = site.addAdapter("line0", "192.168.10.1/24");
    site.addCameras(line, camera(1, R"("address": "192.168.10.21")"));
    Inventory found = lookOn(site, {.time = 4500ms, .countsLosses = true});
    EXPECT_EQ(cameraOf(found, 1).hearing.questions, 20u);
    EXPECT_EQ(cameraOf(found, 1).hearing.replies, 20u);

    line.loseFrames(30);
    // One look may have luck.
    unsigned questions = 0;
    unsigned replies = 0;
    for (int i = 0; i < 3; ++i) {
        found = lookOn(site, {.time = 4500ms, .countsLosses = true});
        for (const Camera& each : found.cameras) {
            questions += each.hearing.questions;
            replies += each.hearing.replies;
        }
    }
    EXPECT_LT(replies, questions * 8 / 10);
}

TEST(Look, OfManyCamerasTellsAllThatItTellsOfOne)
{
    const int camerasOfAFarm = IsSanitized ? 50 : 250; // A look's time stays.
    const std::string repeat = R"(, "repeat": )" + std::to_string(camerasOfAFarm);
    Site site;
    lab::Switch& line = site.addAdapter("line0", "10.1.0.1/16");
    site.addCameras(line, camera(0, R"("address": "10.1.1.1", "mask": "255.255.0.0")" + repeat));
    // The kernel has room for a thousand neighbours, in all networks together: the others are out of reach.
    for (int farm = 1; farm < 4; ++farm) {
        const std::string number = std::to_string(farm);
        site.addCameras(line, R"({"mac": "02:00:00:0)" + number + R"(:00:00", "address": "10.2.)" + number +
                                  R"(.1", "answer": "broadcast")" + repeat + "}");
    }
    const Inventory found = lookOn(site);
    EXPECT_THAT(found.cameras, SizeIs(4 * camerasOfAFarm));
    EXPECT_EQ(found.unlisted, 0u);
    EXPECT_EQ(std::ranges::count(found.cameras, Status::Free, &Camera::status), camerasOfAFarm);
    EXPECT_EQ(std::ranges::count(found.cameras, 1000u, &Camera::linkSpeed), camerasOfAFarm);
}

TEST(Look, OfAComputerWithoutAdaptersFindsNothing)
{
    const Site site;
    const Inventory found = lookOn(site);
    EXPECT_THAT(found.adapters, IsEmpty());
    EXPECT_THAT(found.cameras, IsEmpty());
}

TEST(Look, IsCurrentUntilTheAdaptersChange)
{
    Site site;
    site.addAdapter("line0", "192.168.10.1/24");
    const lab::Visit visit(site.host());
    const Look look;
    EXPECT_TRUE(look.isCurrent());
    site.host().run("ip addr add 192.168.11.1/24 dev line0");
    EXPECT_FALSE(look.isCurrent());
}

} // namespace inventory
