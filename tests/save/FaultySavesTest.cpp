// SPDX-License-Identifier: Apache-2.0
// Saves on simulated cameras, with whatever may go wrong on the way, judged by what the cameras hold
// afterwards.
#include "tests/network/Sdk.h"
#include "tests/save/NetworkSave.h"
#include "tests/simulator/Shown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <deque>
#include <filesystem>
#include <thread>

using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const char* const Rebooting = "Information: Modified. The device will reboot automatically.";
const char* const Failed = "Error: Failed to modify the IP address.The camera may be in use at present.";

std::size_t entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

/// How many there are once there are no more than so many. A thread that has said its last is still there for
/// a moment.
std::size_t whenDownTo(std::size_t count, const char* folder)
{
    for (int tries = 0; tries < 200 && entriesOf(folder) > count; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return entriesOf(folder);
}

class FaultySaves : public testing::Test
{
protected:
    /// DHCP cameras 02:...:00 at 192.168.1.0 + 20 and so on; each with these members too.
    void build(int cameras, const std::string& members = {})
    {
        farm =
            &site.addCameras(site.addAdapter("eth0", "192.168.0.5/16"),
                             R"({"mac": "02:00:00:00:01:00", "address": "192.168.1.20", "mask": "255.255.0.0",
                                    "rebootTime": 50, "heartbeatTimeout": 1000, "repeat": )" +
                                 std::to_string(cameras) + members + "}");
        const lab::Visit visit(site.host());
        for (int i = 0; i < cameras; ++i)
            saves.emplace_back(record(i));
    }

    const RZ_CC_DEVICE_INFO& record(int camera)
    {
        if (records.empty())
            records = enumerate(site);
        const auto* found = recordOf(records, mac(camera));
        if (!found)
            throw std::runtime_error("no camera " + mac(camera));
        return *found;
    }

    static std::string mac(int camera)
    {
        char text[18];
        std::snprintf(text, sizeof text, "02:00:00:00:01:%02X", static_cast<unsigned>(camera) & 0xFF);
        return text;
    }
    static std::string newAddress(int camera) { return "192.168.2." + std::to_string(20 + camera); }
    static std::string oldAddress(int camera) { return "192.168.1." + std::to_string(20 + camera); }

    nlohmann::json camera(int number) { return runningCamera(*farm, mac(number)); }

    /// How many have reached the camera.
    int requests(int number) const
    {
        int all = 0;
        const auto camera = shown(*farm, mac(number));
        for (const auto& count : camera.at("received"))
            all += count.get<int>();
        return all;
    }

    /// Waits until nobody controls the camera; its heartbeat time bounds that.
    bool becomesFree(int number)
    {
        for (int tries = 0; tries < 200; ++tries) {
            if (!shown(*farm, mac(number)).at("held"))
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return false;
    }

    void saveAll()
    {
        for (auto& save : saves)
            save.start(site);
        for (auto& save : saves)
            ASSERT_TRUE(save.awaitEnd());
    }

    int argumentCount = 1;
    char programName[6] = "tests";
    char* arguments[2] = {programName, nullptr};
    QCoreApplication application{argumentCount, arguments};
    Site site;
    lab::Farm* farm = nullptr;
    std::vector<const RZ_CC_DEVICE_INFO*> records;
    std::deque<NetworkSave> saves;
};

} // namespace

TEST_F(FaultySaves, ACameraThatVanishesAfterAnyRequestEndsTheSaveAndHoldsTheOldOrTheNewConfiguration)
{
    // Camera 0 is saved undisturbed, which says how many requests a save takes.
    constexpr int Cameras = 101;
    build(Cameras);
    const auto threads = entriesOf("/proc/self/task");
    int all = -requests(0) + 4; // The reset, and giving control back, follow the message.
    saves[0].wantStatic(newAddress(0));
    saves[0].atMessage = [&] { all += requests(0); };
    saves[0].start(site);
    ASSERT_TRUE(saves[0].awaitEnd());
    ASSERT_GT(all, 30);
    EXPECT_EQ(whenDownTo(threads, "/proc/self/task"), threads);
    const auto files = entriesOf("/proc/self/fd");

    // The first and the last requests, one by one; those between read the description.
    std::vector<int> lasts;
    for (int i = 1; i < Cameras; ++i)
        lasts.push_back(i <= 50 ? i : std::max(i, all - (Cameras - 1 - i)));
    for (int i = 1; i < Cameras; ++i) {
        saves[i].wantStatic(newAddress(i));
        farm->control("fault " + mac(i) + " ANY vanish after " + std::to_string(lasts[i - 1]));
        saves[i].start(site);
    }
    for (int i = 1; i < Cameras; ++i)
        ASSERT_TRUE(saves[i].awaitEnd());
    EXPECT_EQ(whenDownTo(threads, "/proc/self/task"), threads);
    EXPECT_EQ(whenDownTo(files, "/proc/self/fd"), files);

    int untouched = 0;
    int changed = 0;
    for (int i = 1; i < Cameras; ++i) {
        SCOPED_TRACE("vanished after " + std::to_string(lasts[i - 1]) + " of " + std::to_string(all) +
                     " requests");
        EXPECT_EQ(saves[i].said().back(), "End");
        farm->control("heal " + mac(i));
        farm->control("plug " + mac(i));
        EXPECT_TRUE(becomesFree(i));
        farm->control("reset " + mac(i));
        const auto after = camera(i);
        const bool isStatic = after.at("ipConfiguration") == "persistent";
        EXPECT_EQ(after.at("address"), isStatic ? newAddress(i) : oldAddress(i));
        ++(isStatic ? changed : untouched);
    }
    EXPECT_GT(untouched, 5);
    EXPECT_GT(changed, 2);
}

TEST_F(FaultySaves, LostRequestsAndAcknowledgesCostARetryAndNotTheSave)
{
    // Cameras 0 to 8 lose each 2nd to 10th request, 9 to 17 each 2nd to 10th acknowledge.
    build(18);
    for (int i = 0; i < 18; ++i) {
        saves[i].wantStatic(newAddress(i));
        saves[i].wanted.m_strUserDefinedName = QStringLiteral("New");
        farm->control("fault " + mac(i) + " ANY " + (i < 9 ? "drop" : "mute") + " every " +
                      std::to_string(2 + i % 9));
    }
    saveAll();
    for (int i = 0; i < 18; ++i) {
        SCOPED_TRACE((i < 9 ? "request " : "acknowledge ") + std::to_string(2 + i % 9));
        EXPECT_THAT(saves[i].said(), ElementsAre(Rebooting, "Refresh", "End"));
        const auto after = camera(i);
        EXPECT_EQ(after.at("address"), newAddress(i));
        EXPECT_EQ(after.at("userName"), "New");
        EXPECT_FALSE(after.at("held"));
    }
}

TEST_F(FaultySaves, CamerasThatAskForTimeOrAnswerTwiceOrAreBusyAreSavedAsAnyOther)
{
    build(4);
    farm->control("fault " + mac(0) + " WRITEREG pending time 300");
    farm->control("fault " + mac(1) + " ANY twice");
    farm->control("fault " + mac(2) + " WRITEREG busy 2");
    farm->control("fault " + mac(3) + " READMEM badAlignment 1");
    for (int i = 0; i < 4; ++i)
        saves[i].wantStatic(newAddress(i));
    saveAll();
    for (int i = 0; i < 4; ++i) {
        EXPECT_THAT(saves[i].said(), ElementsAre(Rebooting, "Refresh", "End")) << i;
        EXPECT_EQ(camera(i).at("address"), newAddress(i)) << i;
    }
}

TEST_F(FaultySaves, ACameraThatResetsWithoutAcknowledgingIsSaved)
{
    build(1, R"(, "rebootsWithoutAck": true)");
    saves[0].wantStatic(newAddress(0));
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    EXPECT_EQ(camera(0).at("address"), newAddress(0));
}

TEST_F(FaultySaves, AnotherApplicationsCameraStaysAsItIs)
{
    build(2);
    farm->control("hold " + mac(0));
    farm->control("fault " + mac(1) + " FORCEIP seize 1");
    for (int i = 0; i < 2; ++i)
        saves[i].wantStatic(newAddress(i));
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Failed, "End"));
    EXPECT_EQ(camera(0).at("address"), oldAddress(0));
    // Seized after the address was taken: nothing is written any more.
    EXPECT_THAT(saves[1].said().back(), "End");
    EXPECT_EQ(camera(1).at("ipConfiguration"), "dhcp");
    EXPECT_EQ(camera(1).at("resets"), 0);
}

TEST_F(FaultySaves, AMessageThatStaysOpenLongerThanTheHeartbeatLosesNeitherCameraNorReset)
{
    build(1);
    saves[0].wantStatic(newAddress(0));
    bool held = false;
    saves[0].atMessage = [&] {
        // Time is the matter here: the camera drops whoever is silent for one second.
        std::this_thread::sleep_for(std::chrono::seconds(4));
        held = shown(*farm, mac(0)).at("held");
    };
    saveAll();
    EXPECT_TRUE(held);
    EXPECT_EQ(camera(0).at("resets"), 1);
    EXPECT_EQ(camera(0).at("address"), newAddress(0));
}

TEST_F(FaultySaves, RenamingALeasedCameraTouchesNeitherItsStoredAddressNorItsRun)
{
    build(1, R"(, "persistent": {"address": "10.0.0.9", "mask": "255.0.0.0", "gateway": "10.0.0.1"})");
    saves[0].wanted.m_strUserDefinedName = QStringLiteral("New");
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre("Refresh", "End"));
    const auto after = camera(0);
    EXPECT_EQ(after.at("userName"), "New");
    EXPECT_EQ(after.at("resets"), 0);
    EXPECT_EQ(after.at("persistent").at("address"), "10.0.0.9");
}

TEST_F(FaultySaves, WhatADescriptionLeavesOutIsChangedAllTheSame)
{
    build(1, R"(, "descriptionLeavesOut": ["DeviceUserID", "DeviceReset",
        "GevCurrentIPConfigurationPersistentIP", "GevCurrentIPConfigurationDHCP"])");
    saves[0].wantStatic(newAddress(0));
    saves[0].wanted.m_strUserDefinedName = QStringLiteral("New");
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    farm->control("reset " + mac(0));
    const auto after = camera(0);
    EXPECT_EQ(after.at("address"), newAddress(0));
    EXPECT_EQ(after.at("userName"), "New");
}
