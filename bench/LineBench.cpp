// SPDX-License-Identifier: Apache-2.0
// A whole line: 32 cameras beside one, `apply` beside `set`, and a plan with nothing to do beside the list,
// each as a whole command, in turn. Exits with 1 when a ratio is larger than it may be.
#include "tests/network/Site.h"
#include "tests/simulator/DhcpServer.h"
#include "tests/simulator/ObtainedAddresses.h"
#include "tests/simulator/Shown.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace {

using Command = std::vector<std::string>;
using simulator_tests::DhcpServer;
using simulator_tests::runningCamera;

constexpr int LineCameras = 32;
constexpr int ManyCameras = 256;
constexpr int Runs = 5;
constexpr double MostForALine = 2.5;
constexpr double MostForNothingToDo = 1.3;

/// A file for the time that this lives.
class PlanFile
{
public:
    explicit PlanFile(const std::string& text) { std::ofstream(m_path) << text; }
    PlanFile(const PlanFile&) = delete;
    PlanFile& operator=(const PlanFile&) = delete;
    ~PlanFile() { std::filesystem::remove(m_path); }

    const std::string& path() const { return m_path; }

private:
    const std::string m_path =
        std::filesystem::temp_directory_path() / ("line-bench-" + std::to_string(::getpid()) + ".yaml");
};

double secondsOf(const lab::Namespace& host, const Command& command)
{
    const auto start = std::chrono::steady_clock::now();
    const lab::Output output = host.execute(command);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    if (output.status != 0)
        throw std::runtime_error(command[1] + " ended with " + std::to_string(output.status) + ": " +
                                 output.standardOutput + output.standardError);
    return time.count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

std::string addressOf(int camera)
{
    return "192.168.2." + std::to_string(camera + 1);
}

std::string planOf(int cameras)
{
    std::string text = "version: 1\ndefaults: {mode: static, mask: 255.255.0.0}\ncameras:\n";
    for (int i = 0; i < cameras; ++i)
        text += "  place" + std::to_string(i) + ": {match: {mac: \"" + macOf(i) +
                "\"}, address: " + addressOf(i) + ", name: keep}\n";
    return text;
}

/// What the command takes to give so many cameras, which have addresses by DHCP, static ones.
double secondsToStatic(int cameras, const Command& command)
{
    Site site;
    lab::Switch& network = site.addAdapter("eth0", "192.168.0.5/16");
    const DhcpServer server(site.host(), simulator_tests::LeasedRange);
    const lab::Farm& farm =
        site.addCameras(network, "{\"mac\": \"" + macOf(0) + "\", " + simulator_tests::Leased +
                                     ", \"repeat\": " + std::to_string(cameras) + "}");
    for (int i = 0; i < cameras; ++i)
        runningCamera(farm, macOf(i));
    const double seconds = secondsOf(site.host(), command);
    for (int i = 0; i < cameras; ++i)
        if (const auto camera = runningCamera(farm, macOf(i));
            camera.at("address") != addressOf(i) || camera.at("persistent").at("address") != addressOf(i) ||
            camera.at("ipConfiguration") != "persistent")
            throw std::runtime_error(command[1] + " left a camera as " + camera.dump());
    return seconds;
}

double secondsToApply(int cameras)
{
    const PlanFile plan(planOf(cameras));
    return secondsToStatic(cameras, {CLI, "apply", plan.path()});
}

void printRow(const std::string& what, double seconds, double ofTheOther)
{
    std::printf("| %-58s | %6.3f | %6.3f | %5.2f |\n", what.c_str(), seconds, ofTheOther,
                seconds / ofTheOther);
    std::fflush(stdout);
}

/// Whether a line takes no longer than it may.
bool measureChanges()
{
    const Command set{CLI, "set", macOf(0), "--static", "--ip", addressOf(0), "--mask", "255.255.0.0"};
    std::vector<double> ofALine;
    std::vector<double> ofOne;
    std::vector<double> ofSet;
    for (int run = 0; run < Runs; ++run) {
        ofALine.push_back(secondsToApply(LineCameras));
        ofOne.push_back(secondsToApply(1));
        ofSet.push_back(secondsToStatic(1, set));
    }
    printRow("`apply`, 32 cameras from DHCP to static, beside one camera", median(ofALine), median(ofOne));
    printRow("`apply`, one camera from DHCP to static, beside `set`", median(ofOne), median(ofSet));
    return median(ofALine) <= MostForALine * median(ofOne);
}

/// Likewise a plan with nothing to do.
bool measureNothingToDo()
{
    Site site;
    site.addCameras(
        site.addAdapter("eth0", "192.168.0.5/16"),
        R"({"mac": "02:00:00:00:10:00", "address": "192.168.4.1", "mask": "255.255.0.0", "repeat": )" +
            std::to_string(ManyCameras) + "}");
    const PlanFile plan(site.host().execute({CLI, "export"}).standardOutput);
    std::vector<double> ofApply;
    std::vector<double> ofList;
    for (int run = 0; run < Runs; ++run) {
        ofApply.push_back(secondsOf(site.host(), {CLI, "apply", plan.path()}));
        ofList.push_back(secondsOf(site.host(), {CLI, "list"}));
    }
    printRow("`apply`, 256 cameras that are as planned, beside `list`", median(ofApply), median(ofList));
    return median(ofApply) <= MostForNothingToDo * median(ofList);
}

} // namespace

int main()
try {
    std::printf("A whole line: median seconds of the whole command\n\n"
                "| %-58s |      s | beside | ratio |\n|%s|-------:|-------:|------:|\n",
                "", std::string(60, '-').c_str());
    const bool isALineFast = measureChanges();
    const bool isNothingToDoFast = measureNothingToDo();
    return isALineFast && isNothingToDoFast ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "line_bench: %s\n", error.what());
    return 1;
}
