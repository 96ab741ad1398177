// SPDX-License-Identifier: Apache-2.0
// What may go wrong on the way to a camera while it is saved.
#include "tests/save/FarmSaves.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <limits>

using simulator_tests::shown;
using testing::Contains;
using testing::ElementsAre;

namespace {

class FaultySaves : public FarmSaves
{
protected:
    /// The camera loses its cable when so many such commands of the save have reached it.
    void startAndVanishAfter(int number, const std::string& command, int passed)
    {
        saves[number].wantStatic(newAddress(number));
        farm->control("fault " + macOf(number) + ' ' + command + " vanish" +
                      (passed > 0 ? " after " + std::to_string(passed) : ""));
        saves[number].start();
    }

    bool hasVanished(int number) const { return !shown(*farm, macOf(number)).at("plugged"); }

    /// How often a save writes registers: the least of those that came through, as repetitions of what was
    /// answered late are counted, too.
    int registerWritesOfASave() const
    {
        int least = std::numeric_limits<int>::max();
        for (int i = 0; i < static_cast<int>(saves.size()); ++i) {
            const auto camera = shown(*farm, macOf(i));
            if (camera.at("plugged"))
                least = std::min(least, camera.at("received").at("WRITEREG").get<int>());
        }
        return least;
    }

    /// Whether a camera that is plugged in again holds the new configuration; else it holds the old one.
    bool isChangedWhenItReturns(int number)
    {
        farm->control("heal " + macOf(number));
        farm->control("plug " + macOf(number));
        EXPECT_TRUE(becomesFree(number));
        const auto after = afterPowerCycle(number);
        const bool isStatic = after.at("ipConfiguration") == "persistent";
        EXPECT_EQ(after.at("address"), isStatic ? newAddress(number) : oldAddress(number));
        return isStatic;
    }
};

} // namespace

TEST_F(FaultySaves, ACameraThatVanishesAfterAnyCommandEndsTheSaveAndHoldsTheOldOrTheNewConfiguration)
{
    // Of each sort of command, each camera is let go one further than the one before. A save takes fewer; how
    // many is not known: there are heartbeats among them, and repetitions. That it is heard by the others'
    // discoveries, too, does not count.
    const struct
    {
        const char* command;
        int cameras;
    } sorts[] = {{"FORCEIP", 1}, {"READMEM", 25}, {"READREG", 18}, {"WRITEREG", 12}};
    constexpr int Cameras = 56;
    build(ByDhcp, Cameras);
    const Resources before = resources();
    int begun = 0;
    for (const auto& sort : sorts)
        for (int passed = 0; passed < sort.cameras; ++passed)
            startAndVanishAfter(begun++, sort.command, passed);
    ASSERT_EQ(begun, Cameras);
    for (int i = 0; i < Cameras; ++i)
        ASSERT_TRUE(saves[i].awaitEnd());
    EXPECT_LT(registerWritesOfASave(), sorts[3].cameras) << "a save writes at more registers than were tried";
    EXPECT_EQ(whenDownTo(before), before);

    int untouched = 0;
    int changed = 0;
    for (int i = 0; i < Cameras; ++i) {
        SCOPED_TRACE("camera " + std::to_string(i));
        const auto said = saves[i].said();
        EXPECT_THAT(said, Contains("End").Times(1));
        EXPECT_EQ(said.back(), "End");
        if (!hasVanished(i)) {
            EXPECT_THAT(said, ElementsAre(Rebooting, "Refresh", "End"));
        }
        ++(isChangedWhenItReturns(i) ? changed : untouched);
    }
    EXPECT_GT(untouched, 5);
    EXPECT_GT(changed, 2);
}

TEST_F(FaultySaves, LostRequestsAndAcknowledgesCostARetryAndNotTheSave)
{
    // Cameras 0 to 8 lose each 2nd to 10th request, 9 to 17 each 2nd to 10th acknowledge.
    build(ByDhcp, 18);
    for (int i = 0; i < 18; ++i) {
        saves[i].wantStatic(newAddress(i));
        saves[i].wantName("New");
        farm->control("fault " + macOf(i) + " ANY " + (i < 9 ? "drop" : "mute") + " every " +
                      std::to_string(2 + i % 9));
    }
    saveAll();
    for (int i = 0; i < 18; ++i) {
        SCOPED_TRACE((i < 9 ? "request " : "acknowledge ") + std::to_string(2 + i % 9));
        EXPECT_THAT(saves[i].said(), ElementsAre(Rebooting, "Refresh", "End"));
        EXPECT_TRUE(becomesFree(i));
        const auto after = camera(i);
        EXPECT_EQ(after.at("address"), newAddress(i));
        EXPECT_EQ(after.at("userName"), "New");
    }
}

TEST_F(FaultySaves, CamerasThatAskForTimeOrAnswerTwiceOrAreBusyAreSavedAsAnyOther)
{
    build(std::string(ByDhcp) + R"(, "pendingAckOn": true)", 4);
    farm->control("fault " + macOf(0) + " WRITEREG pending time 300");
    farm->control("fault " + macOf(1) + " ANY twice");
    farm->control("fault " + macOf(2) + " WRITEREG busy 2");
    farm->control("fault " + macOf(3) + " READMEM badAlignment 1");
    for (int i = 0; i < 4; ++i)
        saves[i].wantStatic(newAddress(i));
    saveAll();
    for (int i = 0; i < 4; ++i) {
        EXPECT_THAT(saves[i].said(), ElementsAre(Rebooting, "Refresh", "End")) << i;
        EXPECT_EQ(camera(i).at("address"), newAddress(i)) << i;
        EXPECT_EQ(camera(i).at("ipConfiguration"), "persistent") << i;
    }
}

TEST_F(FaultySaves, ACameraThatResetsWithoutAcknowledgingIsSaved)
{
    build(std::string(ByDhcp) + R"(, "rebootsWithoutAck": true)");
    saves[0].wantStatic(newAddress(0));
    saveAll();
    EXPECT_THAT(saves[0].said(), ElementsAre(Rebooting, "Refresh", "End"));
    EXPECT_EQ(camera(0).at("resets"), 1);
    EXPECT_EQ(camera(0).at("address"), newAddress(0));
}
