// SPDX-License-Identifier: Apache-2.0
#include "tests/save/FarmSaves.h"

#include "tests/network/Sdk.h"
#include "tests/support/WaitUntil.h"

#include <algorithm>
#include <filesystem>

namespace {

std::size_t entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

void FarmSaves::build(const std::string& members, int cameras)
{
    farm = &site.addCameras(
        network, R"({"mac": "02:00:00:00:01:00", "rebootTime": 50, "heartbeatTimeout": 3000, "repeat": )" +
                     std::to_string(cameras) + ", " + members + "}");
    makeSaves(cameras);
}

void FarmSaves::buildEach(const std::vector<std::string>& members)
{
    const int cameras = static_cast<int>(members.size());
    std::string json;
    for (int i = 0; i < cameras; ++i)
        json += (i == 0 ? "" : ", ") +
                (R"({"rebootTime": 50, "mask": "255.255.0.0", "mac": ")" + macOf(i) + R"(", "address": ")" +
                 oldAddress(i) + "\", ") +
                members[static_cast<std::size_t>(i)] + "}";
    farm = &site.addCameras(network, json);
    makeSaves(cameras);
}

void FarmSaves::makeSaves(int cameras)
{
    for (int i = 0; i < cameras; ++i)
        camera(i);
    for (const auto* record : find(cameras))
        saves.emplace_back(site, *record);
}

void FarmSaves::findAgain()
{
    find(static_cast<int>(saves.size()));
    for (NetworkSave& save : saves)
        save.takeFound();
}

std::vector<const RZ_CC_DEVICE_INFO*> FarmSaves::find(int cameras) const
{
    // So many at once may be too many for a busy machine.
    for (int tries = 0; tries < 10; ++tries) {
        const auto listed = enumerate(site);
        std::vector<const RZ_CC_DEVICE_INFO*> found;
        for (int i = 0; i < cameras; ++i)
            found.push_back(recordOf(listed, macOf(i)));
        if (std::find(found.begin(), found.end(), nullptr) == found.end())
            return found;
    }
    throw std::runtime_error("not all cameras are found");
}

nlohmann::json FarmSaves::afterPowerCycle(int number)
{
    farm->control("reset " + macOf(number));
    return camera(number);
}

int FarmSaves::commands(int number) const
{
    int all = 0;
    const auto camera = simulator_tests::shown(*farm, macOf(number));
    for (const char* kind : {"DISCOVERY", "FORCEIP", "READREG", "WRITEREG", "READMEM", "WRITEMEM"})
        all += camera.at("received").at(kind).get<int>();
    return all;
}

bool FarmSaves::becomesFree(int number) const
{
    return waitUntil([&] { return !simulator_tests::shown(*farm, macOf(number)).at("held").get<bool>(); });
}

void FarmSaves::saveAll(std::size_t atOnce)
{
    for (std::size_t first = 0; first < saves.size(); first += atOnce) {
        const std::size_t end = std::min(first + atOnce, saves.size());
        for (std::size_t i = first; i < end; ++i)
            saves[i].start();
        for (std::size_t i = first; i < end; ++i)
            ASSERT_TRUE(saves[i].awaitEnd());
    }
}

FarmSaves::Resources FarmSaves::resources()
{
    return {entriesOf("/proc/self/task"), entriesOf("/proc/self/fd")};
}

FarmSaves::Resources FarmSaves::whenDownTo(const Resources& wanted)
{
    waitUntil([&] { return resources() == wanted; });
    return resources();
}
