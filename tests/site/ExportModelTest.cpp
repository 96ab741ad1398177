// SPDX-License-Identifier: Apache-2.0
// Lines of any kind, exported and planned.
#include "site/Export.h"
#include "site/ReadSite.h"
#include "tests/site/World.h"

#include <array>
#include <gtest/gtest.h>
#include <random>

using inventory::IpMethod;
using site::MatchBy;

namespace {

constexpr const char* Pieces[] = {
    "",  "a",  "left", " ",  "'",    "\"",   ":",    ": ",           "#",    " #",
    "-", "- ", "keep", "no", "null", "~",    "12",   "\\",           "\n",   "\t",
    "{", "}",  ",",    "&",  "\x01", "\xFF", "\x9B", "\xE5\xB7\xA6", "%\x7F"};

class Chance
{
public:
    explicit Chance(unsigned seed) : m_random(seed) {}

    std::size_t below(std::size_t count) { return m_random() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    std::string text()
    {
        std::string text;
        for (std::size_t i = below(4); i > 0; --i)
            text += Pieces[below(std::size(Pieces))];
        return text.substr(0, 16);
    }

private:
    std::mt19937 m_random;
};

inventory::Camera randomCamera(std::size_t number, const inventory::Inventory& inventory, Chance& chance)
{
    inventory::Camera camera = world::camera(number);
    const inventory::Adapter& adapter = inventory.adapters[chance.below(inventory.adapters.size())];
    camera.adapterIndex = adapter.index;
    camera.adapterName = adapter.name;
    if (chance.oneIn(2))
        camera.userName = chance.text();
    if (chance.oneIn(2))
        camera.serial = chance.oneIn(3) ? "7" : chance.text();
    if (chance.oneIn(2))
        camera.model = chance.text();
    camera.method = std::array{IpMethod::Static, IpMethod::Dhcp, IpMethod::LinkLocal}[chance.below(3)];
    if (chance.oneIn(4)) // Near an end of a subnet; a gateway that may be no good.
        camera.ip = {base::Ipv4(0xC0A80A00 + static_cast<std::uint32_t>(chance.below(300))),
                     base::Ipv4(~0U << chance.below(33) % 32),
                     base::Ipv4(0xC0A80A00 + static_cast<std::uint32_t>(chance.below(300)))};
    camera.stored = chance.oneIn(3) ? std::nullopt : std::optional(camera.ip);
    if (chance.oneIn(4)) {
        camera.status = inventory::Status::Unreachable;
        camera.stored.reset();
    } else if (chance.oneIn(4)) {
        camera.status = inventory::Status::InUse;
    }
    return camera;
}

inventory::Inventory randomLine(Chance& chance)
{
    inventory::Inventory inventory;
    inventory.adapters = {world::adapter(2, "line0", base::Ipv4(0xC0A80A01)),
                          world::adapter(3, "#1", base::Ipv4(0xC0A80B01)), world::adapter(4, "x", {})};
    inventory.adapters[2].addresses.clear();
    for (std::size_t count = chance.below(8), i = 0; i < count; ++i) {
        inventory.cameras.push_back(randomCamera(i, inventory, chance));
        if (chance.oneIn(5)) {
            inventory::Camera twin = inventory.cameras.back();
            twin.adapterIndex = inventory.adapters[1].index;
            twin.adapterName = inventory.adapters[1].name;
            twin.status = inventory::Status::Unreachable;
            if (twin.adapterIndex != inventory.cameras.back().adapterIndex)
                inventory.cameras.push_back(twin);
        }
    }
    findConflicts(inventory);
    return inventory;
}

} // namespace

TEST(ExportModel, OfAnyLineIsAFileWithNothingToDo)
{
    std::size_t places = 0;
    std::size_t comments = 0;
    for (unsigned seed = 0; seed < 1500; ++seed) {
        Chance chance(seed);
        const inventory::Inventory line = randomLine(chance);
        for (const MatchBy by : {MatchBy::Mac, MatchBy::Serial, MatchBy::Adapter}) {
            const std::string text = site::exportSite(line, by);
            SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + text);
            site::Site site;
            ASSERT_NO_THROW(site = site::readSite(text));
            const site::Plan plan = site::makePlan(site, line);
            ASSERT_TRUE(plan.obstacles.empty()) << english(plan.obstacles);
            for (const site::Task& task : plan.tasks)
                ASSERT_TRUE(task.obstacles.empty()) << english(task.obstacles);
            ASSERT_FALSE(plan.hasActions());
            ASSERT_FALSE(plan.hasMissing());
            places += site.places.size();
            comments += text.find("left out, as") != std::string::npos ? 1 : 0;
        }
    }
    // They were not all told as comments, or all in order.
    EXPECT_GT(places, 5000U);
    EXPECT_GT(comments, 250U);
}
