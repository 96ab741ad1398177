// SPDX-License-Identifier: Apache-2.0
#include "site/Export.h"

#include "site/Plan.h"
#include "site/ReadSite.h"
#include "tests/site/World.h"

#include <gmock/gmock.h>

using inventory::Camera;
using inventory::Inventory;
using inventory::IpMethod;
using site::exportSite;
using site::MatchBy;
using testing::HasSubstr;
using testing::Not;

namespace {

using namespace base::literals;
using world::World;

constexpr MatchBy All[] = {MatchBy::Mac, MatchBy::Serial, MatchBy::Adapter};

/// One static camera of that name, others like it.
Inventory inventoryOf(const std::vector<std::string>& userNames)
{
    World world(userNames.size());
    for (std::size_t i = 0; i < userNames.size(); ++i)
        world.camera(i).userName = userNames[i];
    return world.inventory;
}

/// In all three ways, what is exported is read, and there is nothing to do.
void expectNothingToDo(const Inventory& inventory)
{
    for (const MatchBy by : All) {
        const std::string text = exportSite(inventory, by);
        try {
            const site::Plan plan = makePlan(site::readSite(text), inventory);
            EXPECT_FALSE(plan.isRefused() || plan.hasMissing() || plan.hasActions()) << text;
            EXPECT_EQ(plan.tasks.size(), inventory.cameras.size()) << text;
            EXPECT_TRUE(plan.warnings.empty()) << english(plan.warnings) << '\n' << text;
        } catch (const site::SiteError& error) {
            ADD_FAILURE() << error.line() << ":" << error.column() << " " << error.what() << '\n' << text;
        }
    }
}

} // namespace

TEST(ExportedSite, LooksAsAPersonWouldWriteIt)
{
    World world(3);
    world.camera(0).userName = "left";
    world.camera(0).model = "FC-2400M";
    world.camera(1).ip.gateway = "192.168.10.1"_ip;
    world.camera(1).stored = world.camera(1).ip;
    world.camera(2).method = IpMethod::Dhcp;
    world.camera(2).userName = "";
    world.inventory.adapters.push_back(world::adapter(3, "line1", "192.168.11.1"_ip));
    EXPECT_EQ(exportSite(world.inventory, MatchBy::Mac), R"(# Made by ip-configurator-cli export.
version: 1
defaults: {mode: static, mask: 255.255.255.0, gateway: none}
adapters:
  line0: {address: 192.168.10.1/24, mtu: 1500}
cameras:
  left:
    match: {mac: 02:00:00:00:00:01}
    model: FC-2400M
    address: 192.168.10.21
  c1:
    match: {mac: 02:00:00:00:00:02}
    model: FC-1
    address: 192.168.10.22
    gateway: 192.168.10.1
  "02:00:00:00:00:03":
    match: {mac: 02:00:00:00:00:03}
    model: FC-1
    mode: dhcp
    name: ""
unlisted: warn
)");
    expectNothingToDo(world.inventory);
}

TEST(ExportedSite, ByAdapterServesOtherComputersToo)
{
    World world(3);
    world.camera(0).adapterName = "line1";
    EXPECT_EQ(exportSite(world.inventory, MatchBy::Adapter), R"(# Made by ip-configurator-cli export.
version: 1
defaults: {mode: static, mask: 255.255.255.0, gateway: none}
cameras:
  c0:
    match: {adapter: line1}
    model: FC-1
    address: 192.168.10.21
  c1:
    # line0 hears 2 cameras, so the adapter alone does not say which one is meant
    match: {adapter: line0, mac: 02:00:00:00:00:02}
    model: FC-1
    address: 192.168.10.22
  c2:
    match: {adapter: line0, mac: 02:00:00:00:00:03}
    model: FC-1
    address: 192.168.10.23
unlisted: warn
)");
    expectNothingToDo(world.inventory);
}

TEST(ExportedSite, BySerialTellsWhoHasNoneOfItsOwn)
{
    World world(4);
    world.camera(0).serial = "24010018";
    world.camera(1).serial = "";
    world.camera(2).serial = world.camera(3).serial = "0\n\x1B";
    const std::string text = exportSite(world.inventory, MatchBy::Serial);
    EXPECT_THAT(text, HasSubstr("    match: {serial: \"24010018\"}\n"));
    EXPECT_THAT(text, HasSubstr("    # by mac, as it tells no serial number\n"
                                "    match: {mac: 02:00:00:00:00:02}\n"));
    EXPECT_THAT(text, HasSubstr("    # by mac, as its serial number is not its own: 0\\x0A\\x1B\n"
                                "    match: {mac: 02:00:00:00:00:03}\n"));
    expectNothingToDo(world.inventory);
}

TEST(ExportedSite, OfNobodyIsASiteWithoutCameras)
{
    const std::string text = exportSite({}, MatchBy::Mac);
    EXPECT_EQ(text, "# Made by ip-configurator-cli export.\nversion: 1\ncameras: {}\nunlisted: warn\n");
    EXPECT_EQ(site::readSite(text), site::Site{});
}

TEST(ExportedSite, TakesNamesOfAllKinds)
{
    expectNothingToDo(inventoryOf({"",     "",     "left", "left", "left 2",     "keep", "keep", "none",
                                   "null", "Null", "~",    "true", "No",         "y",    "on",   "1",
                                   "007",  "1e5",  "0x1F", ".inf", "2026-11-22", "<<",   "=",    "-"}));
    expectNothingToDo(inventoryOf({"a: b", "a #b", "#a",  "'",  "\"", "\\",   "\\x41", "it's", "{a}",
                                   "[a]",  "a, b", "&a",  "*a", "!a", "|",    ">",     "%a",   "@a",
                                   "`a",   "? a",  "- a", " a", "a ", "a  b", "---",   "..."}));
    expectNothingToDo(inventoryOf({"\n", "a\r\nb", "\t", "\x1B[31m", "\x7F", "\xC2\x85", "\xC2\xA0",
                                   "\xE2\x80\xAE"
                                   "a",
                                   "\xE2\x80\xA8",
                                   "\xEF\xBB\xBF"
                                   "a",
                                   "\xEF\xBF\xBF", "\xF0\x9F\x93\xB7", "\xE5\xB7\xA6",
                                   "M\xC3\xBC"
                                   "ller",
                                   "\x04", "exactly-15-byte", "sixteen-bytes-xx", "sixteen-bytes-xx"}));
}

TEST(ExportedSite, TakesNamesThatAreNoText)
{
    const Inventory inventory = inventoryOf({"\xFF", "a\xC3", "\xED\xA0\x80", std::string("a\0b", 3)});
    expectNothingToDo(inventory);
    EXPECT_THAT(exportSite(inventory, MatchBy::Mac), HasSubstr("  \"02:00:00:00:00:01\":\n"
                                                               "    match: {mac: 02:00:00:00:00:01}\n"
                                                               "    model: FC-1\n"
                                                               "    address: 192.168.10.21\n"
                                                               "    name: keep\n"));
}

TEST(ExportedSite, GivesEveryCameraAPlaceOfItsOwnAndItsName)
{
    const site::Site site =
        site::readSite(exportSite(inventoryOf({"left", "left", "left 2", "keep", "keep"}), MatchBy::Mac));
    std::vector<std::pair<std::string, std::optional<std::string>>> names;
    for (const site::Place& place : site.places)
        names.emplace_back(place.name, place.userName);
    EXPECT_THAT(names, testing::ElementsAre(std::pair("left", "left"), std::pair("left 3", "left"),
                                            std::pair("left 2", "left 2"), std::pair("keep", "keep"),
                                            std::pair("keep 2", std::nullopt)));
}

TEST(ExportedSite, TakesModelsSerialNumbersAndAdaptersOfAllKinds)
{
    for (const std::string odd : {"", "null", "1", "a: b", "\"", "\n# x", "\xFF", "\xE2\x80\xAE", "{"}) {
        World world(2);
        world.camera(0).model = world.camera(0).serial = odd;
        world.camera(1).adapterIndex = 3;
        world.camera(1).adapterName = odd;
        world.camera(1).ip.address = "192.168.11.22"_ip;
        world.camera(1).stored = world.camera(1).ip;
        world.inventory.adapters.push_back(world::adapter(3, odd, "192.168.11.1"_ip));
        expectNothingToDo(world.inventory);
    }
}

TEST(ExportedSite, NeverObeysOrLetsATerminalObeyWhatACameraSays)
{
    const std::string odd = "\x1B[2J\n  evil: {}\xE2\x80\xAE\xC2\x9B";
    World world(3);
    for (Camera& camera : world.inventory.cameras) {
        camera.userName = camera.model = camera.serial = camera.adapterName = odd;
        camera.ip.mask = {};
    }
    for (const MatchBy by : All) {
        const std::string text = exportSite(world.inventory, by);
        EXPECT_EQ(text.find_first_of("\x1B\x9B"), std::string::npos);
        EXPECT_THAT(text, Not(HasSubstr("\n  evil")));
        EXPECT_THAT(text, Not(HasSubstr("\xE2\x80\xAE")));
    }
}

TEST(ExportedSite, LeavesOutWhatNoSiteFileCanHaveAndSaysWhy)
{
    World world(5);
    world.camera(0).ip.mask = "255.0.255.0"_ip;
    world.camera(1).ip.address = world.camera(2).ip.address;
    world.camera(3).ip.address = "192.168.10.1"_ip;
    const std::string text = exportSite(world.inventory, MatchBy::Mac);
    EXPECT_THAT(text, HasSubstr(R"(
  # left out, as a site file cannot say it: mask "255.0.255.0" is no subnet mask: only ones before zeros, in binary, are allowed, such as 255.255.255.0
  # c0:
  #   match: {mac: 02:00:00:00:00:01}
  #   model: FC-1
  #   address: 192.168.10.21
  #   mask: 255.0.255.0
)"));
    EXPECT_THAT(text,
                HasSubstr("another camera has the address 192.168.10.23, too: 02:00:00:00:00:02 (FC-1 S2)\n"
                          "  # c2:\n"));
    EXPECT_THAT(text, HasSubstr("this computer has the address 192.168.10.1, too, on line0\n  # c3:\n"));
    EXPECT_EQ(site::readSite(text).places.size(), 2u);

    World none(1);
    none.camera(0).ip = {};
    EXPECT_THAT(site::readSite(exportSite(none.inventory, MatchBy::Mac)).places, testing::IsEmpty());
}

TEST(ExportedSite, TellsWhereApplyStoresAnotherAddressThanIsStored)
{
    World world(1);
    world.camera(0).stored->address = "192.168.10.99"_ip;
    const std::string text = exportSite(world.inventory, MatchBy::Mac);
    EXPECT_THAT(text,
                HasSubstr("    # it has another address stored (192.168.10.99, mask 255.255.255.0, gateway "
                          "none), which it takes at its next start; apply stores this one\n"
                          "    address: 192.168.10.21\n"));
    EXPECT_THAT(makePlan(site::readSite(text), world.inventory).tasks.at(0).actions,
                testing::ElementsAre(site::Action::Store));
}

TEST(ExportedSite, HasACameraThatTwoAdaptersHearOnce)
{
    World world(2);
    world.inventory.adapters.push_back(world::adapter(3, "line1", "192.168.11.1"_ip));
    world.inventory.cameras.push_back(world.camera(0));
    world.camera(2).adapterIndex = 3;
    world.camera(2).adapterName = "line1";
    world.camera(2).status = inventory::Status::Unreachable;
    for (const MatchBy by : All) {
        const std::string text = exportSite(world.inventory, by);
        const site::Plan plan = makePlan(site::readSite(text), world.inventory);
        EXPECT_EQ(plan.tasks.size(), 2u);
        EXPECT_FALSE(plan.isRefused() || plan.hasMissing() || plan.hasActions()) << text;
    }
}
