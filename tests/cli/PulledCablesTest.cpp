// SPDX-License-Identifier: Apache-2.0
// A camera's cable is pulled in the midst of a change and put back later: the same command again must finish
// the job.
#include "tests/cli/AtOnce.h"
#include "tests/network/Site.h"
#include "tests/simulator/DhcpServer.h"
#include "tests/simulator/ObtainedAddresses.h"
#include "tests/simulator/Shown.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <thread>
#include <unistd.h>

using nlohmann::json;
using simulator_tests::Leased;
using simulator_tests::LeasedAddress;
using simulator_tests::LinkLocal;
using simulator_tests::LinkLocalAddress;
using simulator_tests::runningCamera;
using simulator_tests::shown;
using testing::MatchesRegex;

namespace {

/// One more thing that a camera may be at first.
constexpr char Static[] =
    R"("ipConfiguration": "persistent", "persistent": {"address": "192.168.1.@", "mask": "255.255.0.0"})";

/// A change, in whose texts @ stands for a number of the camera's own.
struct Change
{
    const char* name;
    const char* atFirst;
    std::vector<std::string> options;
    const char* ipConfiguration; ///< In the end, as the farm has it,
    const char* address;         ///< with the address as a pattern,
    const char* userName;        ///< and the name.
};

void PrintTo(const Change& change, std::ostream* out)
{
    *out << change.name;
}

const std::vector<std::string> ToStatic{"--static", "--ip", "192.168.2.@", "--mask", "255.255.0.0"};

/// What a camera holds changes with no other packets than these; so a cable is pulled at each of them, and at
/// one more than there are.
struct Pull
{
    const char* command;
    int passed;
};
constexpr Pull Pulls[] = {
    {"FORCEIP", 0},  {"WRITEREG", 0},  {"WRITEREG", 1}, {"WRITEREG", 2}, {"WRITEREG", 3},
    {"WRITEREG", 4}, {"WRITEREG", 5},  {"WRITEREG", 6}, {"WRITEREG", 7}, {"WRITEREG", 8},
    {"WRITEREG", 9}, {"WRITEREG", 12}, {"WRITEMEM", 0},
};
constexpr int Cameras = static_cast<int>(std::size(Pulls));

std::string filledIn(std::string text, int camera)
{
    if (const auto at = text.find('@'); at != std::string::npos)
        text.replace(at, 1, std::to_string(20 + camera));
    return text;
}

class PulledCables : public testing::TestWithParam<Change>
{
protected:
    PulledCables()
    {
        std::filesystem::create_directory(m_directory);
        std::string cameras;
        for (int i = 0; i < Cameras; ++i)
            cameras += (i == 0 ? "" : ", ") +
                       (R"({"rebootTime": 500, "userName": "Old", "mac": ")" + macOf(i) + "\", ") +
                       filledIn(GetParam().atFirst, i) + "}";
        farm = &site.addCameras(network, cameras);
        for (int i = 0; i < Cameras; ++i)
            runningCamera(*farm, macOf(i));
    }
    ~PulledCables() override { std::filesystem::remove_all(m_directory); }

    std::vector<std::string> command(int camera) const
    {
        std::vector<std::string> words{PROGRAM, "set", macOf(camera)};
        for (const std::string& option : GetParam().options)
            words.push_back(filledIn(option, camera));
        return words;
    }

    /// The same, with its words for the user in a file of the camera's.
    std::vector<std::string> observedCommand(int camera) const
    {
        std::vector<std::string> words{"sh", "-c", R"(exec "$@" 2>"$0")", saidFile(camera)};
        const auto rest = command(camera);
        words.insert(words.end(), rest.begin(), rest.end());
        return words;
    }

    std::string saidFile(int camera) const { return m_directory / std::to_string(camera); }

    /// Whether the command has been waiting for the camera to come back.
    bool isWaitedFor(int camera) const
    {
        std::ifstream file(saidFile(camera));
        const std::string said(std::istreambuf_iterator<char>(file), {});
        return said.find("does not answer while it restarts") != std::string::npos;
    }

    void putBack(int camera)
    {
        farm->control("heal " + macOf(camera));
        farm->control("plug " + macOf(camera));
    }

    void expectAsAsked(const json& camera, int number) const
    {
        EXPECT_EQ(camera["ipConfiguration"], GetParam().ipConfiguration);
        EXPECT_THAT(camera["address"].get<std::string>(), MatchesRegex(filledIn(GetParam().address, number)));
        EXPECT_EQ(camera["userName"], GetParam().userName);
    }

    Site site;
    lab::Switch& network = site.addAdapter("eth0", "192.168.0.5/16");
    const simulator_tests::DhcpServer server{site.host(), simulator_tests::LeasedRange};
    lab::Farm* farm = nullptr;

private:
    const std::filesystem::path m_directory =
        std::filesystem::temp_directory_path() / ("pulled-cables-" + std::to_string(::getpid()));
};

} // namespace

TEST_P(PulledCables, AtWhateverPacketLeaveTheSameCommandAbleToFinish)
{
    for (int i = 0; i < Cameras; ++i)
        farm->control("fault " + macOf(i) + " " + Pulls[i].command + " vanish" +
                      (Pulls[i].passed > 0 ? " after " + std::to_string(Pulls[i].passed) : ""));
    std::vector<std::future<lab::Output>> running;
    for (int i = 0; i < Cameras; ++i)
        running.push_back(
            std::async(std::launch::async, [this, i] { return site.host().execute(observedCommand(i)); }));
    std::vector<bool> isPutBack(Cameras);
    for (int left = Cameras; left > 0; std::this_thread::sleep_for(std::chrono::milliseconds(20))) {
        for (int i = 0; i < Cameras; ++i) {
            const auto number = static_cast<std::size_t>(i);
            const bool hasEnded =
                running[number].wait_for(std::chrono::seconds(0)) == std::future_status::ready;
            if (isPutBack[number] || !(hasEnded || isWaitedFor(i)))
                continue;
            putBack(i);
            isPutBack[number] = true;
            --left;
        }
    }
    for (auto& each : running)
        each.get();
    EXPECT_FALSE(shown(*farm, macOf(11))["received"]["WRITEREG"] > 12)
        << "there is a packet at which none was pulled";

    std::vector<std::vector<std::string>> again;
    for (int i = 0; i < Cameras; ++i)
        again.push_back(command(i));
    const auto outputs = runAtOnce(site.host(), again);
    for (int i = 0; i < Cameras; ++i) {
        SCOPED_TRACE(std::string("pulled at ") + Pulls[i].command + " after " +
                     std::to_string(Pulls[i].passed));
        EXPECT_EQ(outputs[static_cast<std::size_t>(i)].status, 0)
            << outputs[static_cast<std::size_t>(i)].standardError;
        expectAsAsked(shown(*farm, macOf(i)), i);
        farm->control("reset " + macOf(i));
    }
    for (int i = 0; i < Cameras; ++i) {
        SCOPED_TRACE(std::string("pulled at ") + Pulls[i].command + " after " +
                     std::to_string(Pulls[i].passed));
        expectAsAsked(runningCamera(*farm, macOf(i)), i);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Changes, PulledCables,
    testing::Values(
        Change{"DhcpToStatic", Leased, ToStatic, "persistent", "192.168.2.@", "Old"},
        Change{"LinkLocalToStatic", LinkLocal, ToStatic, "persistent", "192.168.2.@", "Old"},
        Change{"StaticToAnother", Static, ToStatic, "persistent", "192.168.2.@", "Old"},
        Change{"StaticToDhcp", Static, {"--dhcp"}, "dhcp", LeasedAddress, "Old"},
        Change{"StaticToLinkLocal", Static, {"--lla"}, "lla", LinkLocalAddress, "Old"},
        Change{"DhcpToLinkLocal", Leased, {"--lla", "--user-id", "New"}, "lla", LinkLocalAddress, "New"},
        Change{"LinkLocalToDhcp", LinkLocal, {"--dhcp"}, "dhcp", LeasedAddress, "Old"},
        Change{"StaticToDhcpAndName", Static, {"--dhcp", "--user-id", "New"}, "dhcp", LeasedAddress, "New"},
        Change{"Name", Leased, {"--user-id", "New"}, "dhcp", LeasedAddress, "New"}),
    [](const testing::TestParamInfo<Change>& change) { return change.param.name; });
