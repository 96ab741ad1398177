// SPDX-License-Identifier: Apache-2.0
#include "site/Replacement.h"

#include "site/ReadSite.h"
#include "tests/site/World.h"

#include <gmock/gmock.h>

using site::findReplacement;
using site::Replacement;
using site::SiteError;
using site::withNewcomer;
using Verdict = site::Replacement::Verdict;

namespace {

using namespace base::literals;
using world::World;

/// Three places; the camera of the first one is gone, and camera 3 came in its stead.
World worldWithNewcomer()
{
    World world(4);
    world.site.places.pop_back();
    world.inventory.cameras.erase(world.inventory.cameras.begin());
    world.inventory.cameras.back().ip = {"192.168.10.99"_ip, "255.255.255.0"_ip, {}};
    return world;
}

inventory::Camera& newcomerOf(World& world)
{
    return world.inventory.cameras.back();
}

Replacement replacement(const World& world)
{
    return findReplacement(world.site, "p0", world.inventory);
}

std::string reason(const Replacement& found)
{
    return base::english(found.reason);
}

inventory::Camera newcomer(const std::string& serial = "N7")
{
    inventory::Camera camera = world::camera(8);
    camera.serial = serial;
    return camera;
}

std::string refusal(const std::string& text, const std::string& serial = "N7")
{
    try {
        withNewcomer(text, "left", newcomer(serial));
    } catch (const SiteError& error) {
        return std::to_string(error.line()) + ":" + std::to_string(error.column()) + " " + error.what();
    }
    return {};
}

} // namespace

TEST(Replacement, IsTheOneCameraThatBelongsToNoPlace)
{
    World world = worldWithNewcomer();
    const Replacement found = replacement(world);
    EXPECT_EQ(found.verdict, Verdict::Found) << reason(found);
    EXPECT_EQ(found.newcomer->mac, world::mac(3));
    EXPECT_EQ(reason(found), "");

    world.place(0).match = {};
    world.place(0).match.mac = world::mac(3);
    EXPECT_EQ(found.site, world.site);
}

TEST(Replacement, IsRefusedWhileTheOldOneAnswers)
{
    World world = worldWithNewcomer();
    world.inventory.cameras.push_back(world::camera(0));
    const Replacement found = replacement(world);
    EXPECT_EQ(found.verdict, Verdict::StillThere);
    EXPECT_EQ(reason(found),
              "The camera 02:00:00:00:00:01 (FC-1 S1) is at this place and answers; only one that is "
              "silent is replaced.");

    world.place(0).match.userName = "another";
    EXPECT_EQ(replacement(world).verdict, Verdict::StillThere) << "its MAC is its own whatever its name";
}

TEST(Replacement, IsRefusedWhileTheOldOneAnswersElsewhere)
{
    World world = worldWithNewcomer();
    world.place(0).match = world::bySerial("S1");
    world.place(0).match.adapter = "line0";
    EXPECT_EQ(replacement(world).verdict, Verdict::Found);
    world.inventory.cameras.push_back(world::camera(0));
    world.inventory.cameras.back().adapterName = "line1";
    EXPECT_EQ(replacement(world).verdict, Verdict::StillThere) << "it was only moved";
}

TEST(Replacement, GetsTheNameByWhichTheFileKnowsThePlacesCamera)
{
    World world = worldWithNewcomer();
    world.place(0).match = {};
    world.place(0).match.userName = "c0";
    world.place(0).userName.reset();
    EXPECT_EQ(replacement(world).site.places[0].userName, "c0");
    world.place(0).userName = "other";
    EXPECT_EQ(replacement(world).site.places[0].userName, "other");
}

TEST(Replacement, IsRefusedWhenSeveralCouldBeIt)
{
    World world = worldWithNewcomer();
    world.inventory.cameras.push_back(world::camera(7));
    const Replacement found = replacement(world);
    EXPECT_EQ(found.verdict, Verdict::SeveralThere);
    EXPECT_EQ(reason(found),
              "2 cameras could be the new one: 02:00:00:00:00:04 (FC-1 S4), 02:00:00:00:00:08 (FC-1 "
              "S8). Unplug all but that one, or say in the file where the others belong.");
}

TEST(Replacement, IsRefusedWhenNobodyCouldBeIt)
{
    World world = worldWithNewcomer();
    world.inventory.cameras.pop_back();
    Replacement found = replacement(world);
    EXPECT_EQ(found.verdict, Verdict::NobodyThere);
    EXPECT_EQ(reason(found),
              "No camera answers that belongs to no place. Plug the new one in, and give it the time "
              "to start.");
    world.place(0).match.adapter = "line0";
    EXPECT_EQ(reason(replacement(world)),
              "On the adapter line0 no camera answers that belongs to no place. Plug the "
              "new one in, and give it the time to start.");
}

TEST(Replacement, IsOnTheAdapterThatTheFileNames)
{
    World world = worldWithNewcomer();
    world.place(0).match.adapter = "line1";
    EXPECT_EQ(replacement(world).verdict, Verdict::NobodyThere);
    newcomerOf(world).adapterName = "line1";
    EXPECT_EQ(replacement(world).verdict, Verdict::Found);
}

TEST(Replacement, IsOfTheModelThatTheFileNames)
{
    World world = worldWithNewcomer();
    world.place(0).model = "FC-2";
    const Replacement found = replacement(world);
    EXPECT_EQ(found.verdict, Verdict::NobodyThere);
    EXPECT_EQ(reason(found),
              "The camera 02:00:00:00:00:04 (FC-1 S4) belongs to no place, but is not of the model "
              "FC-2, which belongs here. Put such a one in its place, or correct the file.");
    newcomerOf(world).model = "FC-2";
    EXPECT_EQ(replacement(world).verdict, Verdict::Found);

    world.inventory.cameras.push_back(world::camera(7));
    EXPECT_EQ(replacement(world).verdict, Verdict::Found) << "one of another model is in nobody's way";
}

TEST(Replacement, OfAPlaceThatIsKnownByItsAdapterIsWhoHasNotItsSettings)
{
    World world(1);
    world.place(0).match = world::byAdapter("line0");
    EXPECT_EQ(replacement(world).verdict, Verdict::StillThere);

    world.camera(0).ip.address = "192.168.10.99"_ip;
    EXPECT_EQ(replacement(world).verdict, Verdict::Found);

    world.inventory.cameras.push_back(world::camera(3));
    world.camera(1).ip = world.place(0).ip;
    EXPECT_EQ(replacement(world).verdict, Verdict::StillThere);
    EXPECT_THAT(reason(replacement(world)), testing::HasSubstr("02:00:00:00:00:04"));

    world.place(0).userName = "p0";
    EXPECT_EQ(replacement(world).verdict, Verdict::SeveralThere) << "neither has the name";

    world::setMethod(world.place(0), inventory::IpMethod::Dhcp);
    world.camera(1).method = inventory::IpMethod::Dhcp;
    world.camera(1).userName = "p0";
    EXPECT_EQ(replacement(world).verdict, Verdict::StillThere) << "with whatever address DHCP gave it";
}

TEST(Replacement, GetsTheAddressAtWhichTheKernelStillHasTheOldOneInMind)
{
    World world = worldWithNewcomer();
    const base::Ipv4 address = world.site.places.front().ip.address;
    world.inventory.neighbours.push_back({1, address, {{2, 0, 0, 9, 9, 9}}, true});
    const Replacement found = replacement(world);
    ASSERT_EQ(found.verdict, Verdict::Found) << reason(found);
    EXPECT_TRUE(makePlan(found.site, world.inventory, {"p0"}).isRefused());
    const site::Plan plan = planFor(found, "p0", world.inventory);
    EXPECT_FALSE(plan.isRefused());
    EXPECT_TRUE(plan.hasActions());
}

TEST(Replacement, DoesNotGetAnAddressThatAnotherMachineIsHeardToHave)
{
    World world = worldWithNewcomer();
    const base::Ipv4 address = world.site.places.front().ip.address;
    world.inventory.arrivals.push_back(
        {inventory::Arrival::Kind::Announcement, 1, {{2, 0, 0, 9, 9, 9}}, address});
    EXPECT_TRUE(planFor(replacement(world), "p0", world.inventory).isRefused());
}

TEST(RewrittenSite, HasTheNewcomersSerialInTheOldOnesPlaceAndNothingElseOfItChanges)
{
    const std::string before =
        "# our line\r\nversion: 1\r\ncameras:\n\n  right: {mode: dhcp, match: {serial: A}}\n"
        "  left:   # A\n    mode: dhcp\n    match:   {\"serial\":   ";
    const std::string after = " , adapter: 'line0'}   # A, too\n    name: A\n\n# the end";
    const auto expectRewritten = [&](const std::string& old, const std::string& serial,
                                     const std::string& now) {
        EXPECT_EQ(withNewcomer(before + old + after, "left", newcomer(serial)), before + now + after);
    };
    expectRewritten("B", "N7", "N7");
    expectRewritten("24010018", "007", "007");
    expectRewritten("'24010018'", "24010019", "'24010019'");
    expectRewritten("\"24010018\"", "24010019", "\"24010019\"");
    expectRewritten("\"\\x41\\\"'B\"", "24010019", "\"24010019\"");
    expectRewritten("'it''s'", "N7", "'N7'");
    expectRewritten("B", "null", "\"null\"");
    expectRewritten("B", "a: b # c", "\"a: b # c\"");
    expectRewritten("'B'", "it's", "\"it's\"");
    expectRewritten("B", "\n\x1B\xE2\x80\xAE\"\\", "\"\\x0A\\x1B\\u202E\\\"\\\\\"");
}

TEST(RewrittenSite, HasTheNewcomersMacInTheOldOnesPlace)
{
    const std::string before =
        "\xEF\xBB\xBFversion: 1\ncameras:\n  left:\n    mode: lla\n    match:\n      mac: ";
    EXPECT_EQ(withNewcomer(before + "02-00-00-00-00-aa\n", "left", newcomer()),
              before + "02:00:00:00:00:09\n");
    EXPECT_EQ(withNewcomer(before + "'0200000000aa'\n", "left", newcomer()),
              before + "'02:00:00:00:00:09'\n");
}

TEST(RewrittenSite, HasBothWhereTheFileNamesBoth)
{
    EXPECT_EQ(
        withNewcomer("{version: 1, cameras: {left: {mode: lla, match: {mac: 0200000000aa, serial: 5}}}}",
                     "left", newcomer()),
        "{version: 1, cameras: {left: {mode: lla, match: {mac: 02:00:00:00:00:09, serial: N7}}}}");
}

TEST(RewrittenSite, IsTheSameWhereNothingOfTheOldOneIsNamed)
{
    const std::string text = "version: 1\ncameras:\n  left: {match: {adapter: line0}, mode: dhcp} # left\n";
    EXPECT_EQ(withNewcomer(text, "left", newcomer()), text);
    const std::string named = "version: 1\ncameras:\n  left: {match: {mac: 020000000009}, mode: dhcp}\n";
    EXPECT_EQ(withNewcomer(named, "left", newcomer()), named) << "its own MAC in another spelling";
}

TEST(RewrittenSite, IsRefusedWhereItCouldNotBeReadAsMeant)
{
    const std::string other = "  right: {match: {serial: N7}, mode: dhcp}\n";
    EXPECT_EQ(
        refusal("version: 1\ncameras:\n  left: {match: {serial: B}, mode: dhcp}\n" + other),
        "4:18 places \"left\" (line 3) and \"right\" (line 4) have one camera, of serial number \"N7\"; one "
        "place is allowed for each");
    EXPECT_EQ(refusal("version: 1\ncameras:\n  left: {match: {serial: B}, mode: dhcp}\n", ""),
              "3:26 serial is an empty text; another one is needed");
    EXPECT_EQ(
        refusal("version: 1\ncameras:\n  left:\n    mode: dhcp\n    match:\n      serial: |\n        B\n"),
        "6:15 this value cannot be replaced by \"N7\"; write it in one line, or replace it by hand");
}
